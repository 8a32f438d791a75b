#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// The cross product of two vectors of 3 elements, in complex arithmetic and without conjugation. An absent array reads
/// as zeros; shapes are not looked at.
/// @return    3 by 1; real when every imaginary part is zero. A position that is NaN in both parts becomes a real NaN
///            (imaginary part 0), and where that happens at all three the result is real too.
/// @throws    "out of memory" (-1)
BAILUXSKO_API aMatrix* crossprod(EfiCallContext* ctx, aMatrix* a, aMatrix* b);

} // namespace native
