#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// The singular value decomposition of a real matrix with at least as many rows as columns, by Householder reduction to
/// bidiagonal form and implicitly shifted QR, and the generalised inverse made from it.
/// @see Golub and Reinsch, Singular value decomposition and least squares solutions, Numerische Mathematik 14, 1970
namespace native {

/// U above V, with A = U * diag(w) * V' and the singular values w in descending order; w itself is not part of it.
/// @param A   m by n, real, m >= n >= 1; not changed
/// @return    m + n by n: U in rows 0 to m - 1, V in the n below
/// @throws    "must be real matrix" (1) for a record with an imaginary array, then "invalid dimension" (-1) without
///            rows or columns, then all that svd_decompose raises
BAILUXSKO_API aMatrix* svd2(EfiCallContext* ctx, aMatrix* A);

/// The generalised (Moore-Penrose) inverse V * diag(1/w) * U'. A singular value at or below tol counts as zero.
/// @param A   m by n, real, m >= n; not changed
/// @return    n by m
/// @throws    "must be real matrix" (1), then all that svd_decompose raises
BAILUXSKO_API aMatrix* geninv(EfiCallContext* ctx, aMatrix* A, double tol);

/// The same, which overwrites A.
BAILUXSKO_API void pinv_from_svd(EfiCallContext* ctx, aMatrix* A, double tol, aMatrix** result);

/// A = U * diag(w) * V' with w in descending order, none of them negative.
/// @param A   m by n, m >= n; becomes U
/// @param V   n by n, filled
/// @param w   n by 1, filled
/// @throws    "number of rows less than number of columns" (-1), "overflow" (-1), "too many iterations" (-1),
///            "out of memory" (-1)
BAILUXSKO_API void svd_decompose(EfiCallContext* ctx, aMatrix* A, aMatrix* V, aMatrix* w);

/// The singular values alone, in descending order on the diagonal of A; all else in A is overwritten.
/// @param A   m by n, m >= n
/// @throws    "number of rows less than number of columns" (1), unlike the decomposition; "may not be nested" (-1) for
///            a slot that holds a text or an array, "overflow" (-1), "too many iterations" (-1), "out of memory" (-1)
BAILUXSKO_API void svd_values(EfiCallContext* ctx, aMatrix* A);

} // namespace native
