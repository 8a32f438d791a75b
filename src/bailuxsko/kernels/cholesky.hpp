#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// Cholesky factorisation, row by row.
/// @see Golub and Van Loan, Matrix Computations, section 4.2
namespace native {

/// The lower triangular L with M = L * L', where M is A's upper triangle mirrored; real parts only.
/// @param A   n by n; not changed, its lower triangle is not read
/// @return    n by n, real, zeros above the diagonal; without elements when A is
/// @throws    "must be square" (1), "non-positive definite matrix" (-1), "unknown error" (-1) for an absent real array,
///            "out of memory" (-1)
BAILUXSKO_API aMatrix* cholesky(EfiCallContext* ctx, aMatrix* A);

/// The same in place: A, which must be square, is read on and above its diagonal and becomes L. It is left as it was
/// when it cannot be factorised.
/// @throws    "non-positive definite matrix" (-1): a pivot is not above zero; "unknown error" (-1), "out of memory"
/// (-1)
BAILUXSKO_API void choldc(EfiCallContext* ctx, aMatrix* A);

} // namespace native
