#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

#include <span>

/// Divisors and multiples of whole numbers, held exactly by doubles up to 2^53. Signs do not count.
namespace Efi::Matrix {

/// The greatest common divisor of all numbers among the values; of zeros alone 0.
/// @param values  numbers and real matrices without unit, at least one
/// @return        a number without unit
/// @throws        "must be integer" (k) for anything but a real whole number or a matrix, "must be real matrix" (k),
///                "significance lost" (k) above 2^53, "must be dimless" (k)
/// @see           Knuth, The Art of Computer Programming, volume 2, section 4.5.2
BAILUXSKO_API Qud::Handle gcd(std::span<const Qud::Handle> values);

/// The least common multiple of all numbers among the values; with a 0 among them 0, of several zeros alone NaN.
/// @throws  as gcd; "significance lost" (-1) when a multiple exceeds 2^53
BAILUXSKO_API Qud::Handle lcm(std::span<const Qud::Handle> values);

} // namespace Efi::Matrix
