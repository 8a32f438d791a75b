#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// Products of matrices whose every element is a sum that starts at +0.0 and takes its terms in ascending k, with a
/// rounding after each product and after each sum.
namespace native {

/// A * B. Where a factor has no imaginary array its imaginary parts take no part; of two complex factors a term is
/// re * re - im * im and re * im + im * re. The result is complex when a factor is.
/// @param A   m by k
/// @param B   k by n
/// @throws    "out of memory" (-1)
BAILUXSKO_API aMatrix* product(EfiCallContext* ctx, const aMatrix* A, const aMatrix* B);

/// Takes the imaginary array away when every imaginary part is zero.
BAILUXSKO_API void drop_zero_imaginary(aMatrix* A);

} // namespace native
