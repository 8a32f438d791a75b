#pragma once

#include "efiutl/api.hpp"

#include <cstdint>

namespace Efi::Affine {

/// The number without its fraction, as a 32-bit integer; what is beyond becomes the nearest of them, a NaN 0.
BAILUXSKO_API std::int32_t truncated(double x) noexcept;

/// The first convergent of v's continued fraction that is v but for rounding, or the last whose denominator is not
/// above `largest` and whose numerator fits 32 bits. The sign is the numerator's; a whole v has the denominator 1.
/// @see  Knuth, The Art of Computer Programming, volume 2, section 4.5.3
BAILUXSKO_API void AsRational(double v, std::int32_t& numerator, std::int32_t& denominator, double largest) noexcept;

} // namespace Efi::Affine
