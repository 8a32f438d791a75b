#pragma once

#include <algorithm>
#include <cstddef>

/// What the real and the complex elimination share.
namespace native {

/// Has x computed although nothing may read it: an overflow on the way is a flag that the caller's guard sees.
inline void raise_flags_of(double x)
{
    [[maybe_unused]] const volatile double computed = x;
}

/// The largest of magnitude(0) to magnitude(count - 1), but not below `least`. A NaN is never the largest, yet it is
/// compared, which raises the invalid flag.
template <typename Magnitude>
[[gnu::always_inline]] inline double largest(std::size_t count, double least, Magnitude magnitude)
{
    double lanes[4] = {least, least, least, least}; // a maximum does not depend on the order: four at a time
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4)
        for (std::size_t lane = 0; lane < 4; ++lane) {
            const double m = magnitude(i + lane);
            lanes[lane] = m > lanes[lane] ? m : lanes[lane];
        }
    for (; i < count; ++i) {
        const double m = magnitude(i);
        lanes[0] = m > lanes[0] ? m : lanes[0];
    }
    return std::max(std::max(lanes[0], lanes[1]), std::max(lanes[2], lanes[3]));
}

} // namespace native
