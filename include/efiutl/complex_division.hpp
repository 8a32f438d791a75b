#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace Efi {

/// x / y, but 0 for a zero numerator whatever the divisor, and 0 when the upper half of x or y is all ones
/// (the pattern that marks a slot without a number). A non-zero x over zero is the infinity of the hardware.
inline double safe_quotient(double x, double y) noexcept
{
    constexpr std::uint32_t no_number = 0xFFFFFFFFU;
    const auto upper_half = [](double v) { return static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(v) >> 32); };
    if (upper_half(x) == no_number || upper_half(y) == no_number || x == 0.0)
        return 0.0;
    return x / y;
}

/// re + i im = (ar + i ai) / (br + i bi), by Smith's method with safe quotients: 0 over 0 is 0.
/// @see R. L. Smith, Algorithm 116: Complex division, CACM 5 (1962)
inline void cpxd(double ar, double ai, double br, double bi, double& re, double& im) noexcept
{
    if (std::fabs(br) > std::fabs(bi)) {
        const double r = safe_quotient(bi, br);
        const double d = r * bi + br;
        re = safe_quotient(r * ai + ar, d);
        im = safe_quotient(ai - r * ar, d);
    } else {
        const double r = safe_quotient(br, bi);
        const double d = r * br + bi;
        re = safe_quotient(r * ar + ai, d);
        im = safe_quotient(r * ai - ar, d);
    }
}

} // namespace Efi
