#pragma once

#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// The library's own singular value decomposition and what is made from it.
/// @see Golub and Reinsch, Singular value decomposition and least squares solutions, Numerische Mathematik 14, 1970
namespace Efi::Matrix {

/// U above V, with A = U * diag(w) * V' and the singular values w in descending order (which `svds` returns).
/// @param A   m by n with m >= n, real, without unit
/// @return    m + n by n: U in the first m rows, V in the n below
/// @throws    "must be scalar matrix" (1), "must be real matrix" (1), "invalid dimension" (-1),
///            "number of rows less than number of columns" (-1), "overflow" (-1), "too many iterations" (-1),
///            "floating point exception" (0), then "must be dimless" (1)
BAILUXSKO_API Qud::Handle svd(const Qud::Handle& A);

/// The generalised (Moore-Penrose) inverse; a singular value of A, in SI units, at or below tol counts as zero.
/// @param A   m by n with m >= n, real, one unit
/// @return    n by m, unit(A) ^ -1; [] of []
/// @throws    "must be scalar matrix" (1), "must be real matrix" (1),
///            "number of rows less than number of columns" (-1), "overflow" (-1), "too many iterations" (-1),
///            "floating point exception" (0), also for a tol that is NaN
BAILUXSKO_API Qud::Handle geninv(Qud::Tol tol, const Qud::Handle& A);

/// The number of singular values above max(m, n) * 2.220446049250313e-16 times the largest one.
/// @param A   m by n, real, one unit
/// @return    a number without unit; 0 of []
/// @throws    "must be real matrix" (1), "overflow" (-1), "too many iterations" (-1), "floating point exception" (0)
BAILUXSKO_API Qud::Handle rank(const Qud::Handle& A);

} // namespace Efi::Matrix
