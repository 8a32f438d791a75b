#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// Condition numbers of square matrices: a norm of the matrix times that of its inverse. The inverse is the strict one,
/// which refuses nearly singular matrices.
/// @throws "unknown error" (-1) without a real array, "invalid dimension" (-1), "must be square" (-1),
///         "singular matrix" (-1), "out of memory" (-1)
/// @see    Higham, Accuracy and Stability of Numerical Algorithms, chapter 6; Golub and Van Loan, Matrix Computations,
///         section 2.6.2
namespace native {

BAILUXSKO_API double cond1(EfiCallContext* ctx, aMatrix* A); ///< by norm1
BAILUXSKO_API double condi(EfiCallContext* ctx, aMatrix* A); ///< by normi
BAILUXSKO_API double conde(EfiCallContext* ctx, aMatrix* A); ///< by norme

/// By norm2. A real matrix is not inverted: it is the quotient of the largest and the smallest singular value, and
/// "singular matrix" (-1) only where that is exactly zero.
/// @throws what svd_values raises, besides
BAILUXSKO_API double cond2(EfiCallContext* ctx, aMatrix* A);

} // namespace native
