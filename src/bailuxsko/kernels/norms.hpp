#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// Norms of square matrices. All take their number of columns from the number of rows, work in plain double precision
/// without scaling against overflow, and do not change their argument.
/// @see Golub and Van Loan, Matrix Computations, section 2.3; Higham, Accuracy and Stability of Numerical Algorithms,
///      chapter 6
namespace native {

/// The largest sum of a column's magnitudes, 0.0 of a matrix without rows. A column is summed from its top.
/// @throws "unknown error" (-1) without a real array
BAILUXSKO_API double norm1(EfiCallContext* ctx, aMatrix* A);

/// The largest sum of a row's magnitudes, 0.0 of a matrix without rows. A row is summed from its left.
/// @throws "unknown error" (-1) without a real array, "out of memory" (-1)
BAILUXSKO_API double normi(EfiCallContext* ctx, aMatrix* A);

/// The square root of the sum of all squared magnitudes, 0.0 of a matrix without rows. Every column is summed from its
/// top, then the columns' sums from the left: the columns do not wait for one another, at any instruction level.
/// @throws "unknown error" (-1) without any array
BAILUXSKO_API double norme(EfiCallContext* ctx, aMatrix* A);

/// The largest singular value.
/// @throws "invalid dimension" (-1) without rows or columns, "unknown error" (-1) without a real array, "out of memory"
///         (-1), and what svd_values raises, of a complex matrix what complex_norm2 does
BAILUXSKO_API double norm2(EfiCallContext* ctx, aMatrix* A);

/// The routines behind the first three, which look at the imaginary array to choose between them.
/// A complex one takes a record without an imaginary array as the real one does; complex_norme also takes one without
/// a real array, and sums what there is.
BAILUXSKO_API double real_norm1(EfiCallContext* ctx, aMatrix* A);
BAILUXSKO_API double real_normi(EfiCallContext* ctx, aMatrix* A);
BAILUXSKO_API double real_norme(EfiCallContext* ctx, aMatrix* A);
BAILUXSKO_API double complex_norm1(EfiCallContext* ctx, aMatrix* A);
BAILUXSKO_API double complex_normi(EfiCallContext* ctx, aMatrix* A);
BAILUXSKO_API double complex_norme(EfiCallContext* ctx, aMatrix* A);

/// The largest singular value: the square root of the largest eigenvalue of A^H * A, so that the elements of A should
/// lie between 1e-70 and 1e70. The search for the largest magnitude starts from the smallest eigenvalue as it is.
/// @throws "invalid dimension" (-1) without rows or columns, "unknown error" (-1) without a real array,
///         "too many iterations" (-1), "out of memory" (-1)
BAILUXSKO_API double complex_norm2(EfiCallContext* ctx, aMatrix* A);

} // namespace native
