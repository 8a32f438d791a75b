#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// QR factorisation by Givens rotations of neighbouring rows, with a tolerance that reveals the rank.
/// @see Golub and Van Loan, Matrix Computations, section 5.2.5
namespace native {

/// Q and R side by side, with A = Q * R.
/// @param A   m by n, real; not changed
/// @return    m by m + n, real: the orthogonal Q, then R
/// @throws    "must be real matrix" (1) when A has an imaginary array; all that qr_givens raises
BAILUXSKO_API aMatrix* qr(EfiCallContext* ctx, aMatrix* A);

/// Q, m by m with an imaginary array of zeros, and R, m by n, both records of their own. R is upper trapezoidal, in
/// row-echelon form: a column whose elements from the pivot row on are negligible gets no pivot. An element of column
/// j, counted from 1, is negligible within j * (norm of the column * eps) / sqrt(rows from the pivot row on), on both
/// sides. The diagonal of R may be negative. Real parts only.
/// @throws    what MtoVcol says of a column (-1), "out of memory" (-1)
BAILUXSKO_API void qr_givens(EfiCallContext* ctx, aMatrix* A, aMatrix** Q, aMatrix** R);

/// Rotates rows p and q of M, counted from 1, real parts only: row p becomes c * p + s * q, row q becomes c * q - s *
/// p.
/// @throws    "QR FAILED" (-1) for a row that is not there
BAILUXSKO_API void givens_rows(double c, double s, int p, int q, aMatrix* M);

/// The Euclidean norm of a column, from the plain sum of its squares: large elements overflow. 0.0 without a real
/// array.
BAILUXSKO_API double col_norm(const aVector* v);

} // namespace native
