#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

namespace Efi::Matrix {

/// The lower triangular L with M = L * L', where M is the upper triangle of the argument mirrored: its lower triangle
/// is not read.
/// @param M   n by n, real, one unit; not changed
/// @return    n by n, real, zeros above the diagonal, unit(M)^0.5; [] of []
/// @throws    "must be real matrix" (1), "must be square" (1), "non-positive definite matrix" (-1) where a pivot is not
///            above zero, "floating point exception" (0), "unit power not representable" (-1)
/// @see       Golub and Van Loan, Matrix Computations, section 4.2
BAILUXSKO_API Qud::Handle cholesky(const Qud::Handle& M);

} // namespace Efi::Matrix
