#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

namespace Efi::Matrix {

/// Q and R side by side, with A = Q * R, by Givens rotations: Q orthogonal, R in row-echelon form, where a column of
/// negligible elements gets no pivot, so that zero rows at the bottom of R show a rank that is not full.
/// @param A   m by n, real, one unit; not changed
/// @return    m by m + n, real: Q, then R, both with unit(A)^0.5; [] of []
/// @throws    "must be scalar matrix" (1), "must be real matrix" (1) for an argument with an imaginary array, "floating
///            point exception" (0): the squares of large elements overflow, "unit power not representable" (-1)
/// @see       Golub and Van Loan, Matrix Computations, section 5.2.5
BAILUXSKO_API Qud::Handle qr(const Qud::Handle& A);

} // namespace Efi::Matrix
