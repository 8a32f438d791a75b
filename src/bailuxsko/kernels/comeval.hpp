#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// All eigenvalues of a square matrix, by balancing, reduction to Hessenberg form and the complex QR algorithm.
/// @param A       n by n, real or complex; overwritten by the triangular matrix at the end. A real record gets an
///                imaginary array of the arena when an imaginary part that is not zero has to be stored.
/// @param result  null until the routine has succeeded; then n by 1 with an imaginary array, the eigenvalues in the
///                order in which they stand on the diagonal at the end, those that balancing has isolated first and
///                last
/// @throws  "invalid dimension" (-1), "must be square" (-1), "unknown error" (-1) for an absent real array,
///          "too many iterations" (-1), "out of memory" (-1)
BAILUXSKO_API void comeval(EfiCallContext* ctx, aMatrix* A, aVector** result);

} // namespace native
