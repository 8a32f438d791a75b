#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// Reduced row echelon form.
/// @see Golub and Van Loan, Matrix Computations, section 3.4; Strang, Linear Algebra and Its Applications, section 2.2
namespace native {

/// The reduced row echelon form. What is at most max(m, n) * 1e-12, times min_norm_1i(A) where A is square, is no
/// pivot.
/// @param A   m by n, real; not changed
/// @return    m by n, real, a record of its own; A itself when it has no real array
/// @throws    "invalid dimension" (-1) without rows or columns, "must be real matrix" (1) when A has an imaginary
/// array,
///            "matrix too big" (1) for more rows or columns than an int counts, "out of memory" (-1)
BAILUXSKO_API aMatrix* rref(EfiCallContext* ctx, aMatrix* A);

/// A table of n columns of m elements each, columns and elements counted from 1. They follow each other without a gap.
/// @throws    "out of memory" (-1)
BAILUXSKO_API double** rref_columns(EfiCallContext* ctx, int n, int m);

/// Gauss-Jordan elimination with partial pivoting of a table of n columns of m elements, counted from 1: the pivot is
/// the first of the largest magnitudes in the first column that has one above tol. What is passed over as negligible
/// stays as it is. Nothing happens where tol is negative or NaN.
BAILUXSKO_API void gauss_jordan(double* const* columns, int m, int n, double tol);

/// The smaller of the largest absolute column sum and the largest absolute row sum of the real parts, 0.0 without
/// columns. A NaN sum is never the largest.
BAILUXSKO_API double min_norm_1i(const aMatrix* A);

} // namespace native
