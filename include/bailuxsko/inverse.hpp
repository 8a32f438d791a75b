#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

namespace Efi::Matrix {

/// The inverse of M. With strict singularity checking on the library's own LU factorisation refuses what is singular to
/// working precision; with it off LAPACK inverts whatever is not exactly singular.
/// @param M   n by n, of one unit or with a unit per row and column
/// @return    n by n, unit(M)^-1: element (i, j) has the unit of 1 / M(j, i); strict: with an imaginary array only when
///            some imaginary part is not zero
/// @throws    "must be scalar matrix" (1), "must be square" (1), "must be a linear algebra matrix" (1),
///            "invalid dimension" (-1); strict: "singular matrix" (-1), "floating point exception" (0); else:
///            "singularity" (-1), "matrix too big" (1)
/// @see       Golub and Van Loan, Matrix Computations, sections 3.4 and 3.5.4
BAILUXSKO_API Qud::Handle inv(const Qud::Handle& M);

} // namespace Efi::Matrix
