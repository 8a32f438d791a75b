#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

namespace Efi::Matrix {

/// P, L and U side by side, with P * A = L * U: rows scaled by their largest magnitude, the last of equally scaled rows
/// becomes the pivot row (the first one in a complex matrix).
/// @param A   n by n, one unit
/// @return    n by 3 n: the permutation, unit lower triangle, upper triangle; without unit; complex when A carries an
///            imaginary array
/// @throws    "must be scalar matrix" (1), "must be square" (1 for a wide A, -1 for a tall one),
///            "invalid dimension" (-1), "singular matrix" (-1), "floating point exception" (0)
/// @see       Golub and Van Loan, Matrix Computations, section 3.4
BAILUXSKO_API Qud::Handle lu(const Qud::Handle& A);

} // namespace Efi::Matrix
