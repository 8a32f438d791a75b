#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// The largest exponent of a matrix.
inline constexpr int largest_matrix_exponent = 10000;

/// M to the power n by repeated squaring; a negative n raises the inverse. Sums start at +0.0 and take their terms in
/// ascending k; a square that no product needs is not computed.
/// @param M       square; not changed
/// @param strict  whether the inverse refuses nearly singular matrices
/// @return        complex only when some imaginary part is not zero
/// @throws        "must be square" (-1), "matrix too big" (1) for n = 0 and more than 4096 rows, "domain error" (1) for
///                |n| > 10000 (after inverting), what the inverse raises, "invalid dimension" (-1) without rows,
///                "out of memory" (-1)
/// @see           Knuth, The Art of Computer Programming, volume 2, section 4.6.3
BAILUXSKO_API aMatrix* mx_power(EfiCallContext* ctx, aMatrix* M, int n, bool strict);

} // namespace native
