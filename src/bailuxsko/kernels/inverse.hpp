#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// The inverse, column by column, from an LU factorisation with scaled rows.
/// @see Golub and Van Loan, Matrix Computations, sections 3.1, 3.4 and 3.5.4
namespace native {

/// The inverse of a real or complex matrix.
/// @param A       n by n; not changed
/// @param strict  refuse nearly singular matrices, as the factorisation says
/// @return        n by n; complex only when some imaginary part is not zero
/// @throws        "must be square" (-1), all of the two below
BAILUXSKO_API aMatrix* inv2(EfiCallContext* ctx, aMatrix* A, bool strict);

/// The inverse of a real matrix in *result.
/// @throws "unknown error" (-1) without a real array, "invalid dimension" (-1), "must be square" (-1),
///         "singular matrix" (-1), "out of memory" (-1)
BAILUXSKO_API void real_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict);

/// The inverse of a complex matrix in *result; in complex arithmetic throughout, quotients by Smith's method.
/// @throws the same
BAILUXSKO_API void complex_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict);

} // namespace native
