#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

namespace Efi::Matrix {

/// The reduced row echelon form, by Gauss-Jordan elimination with partial pivoting. What is at most max(m, n) * 1e-12,
/// times the smaller of the 1-norm and the infinity norm where A is square, is no pivot and stays as it is.
/// @param A   m by n, real, without unit; not changed
/// @return    m by n, real, without unit
/// @throws    "must be scalar matrix" (1), "invalid dimension" (-1) without elements, "must be real matrix" (1) for an
///            argument with an imaginary array, "floating point exception" (0), "must be dimless" (1)
/// @see       Golub and Van Loan, Matrix Computations, section 3.4
BAILUXSKO_API Qud::Handle rref(const Qud::Handle& A);

} // namespace Efi::Matrix
