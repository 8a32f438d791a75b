// Convergents of a continued fraction (Knuth, The Art of Computer Programming, volume 2, section 4.5.3).
// Ours: three ends of the search beside the last convergent that is wanted: the fraction is met but for its rounding, a
// remainder is as small as the rounding of the ones before it, the next numerator would not fit 32 bits.
#include "bailuxsko/scalar/rational.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

namespace Efi::Affine {

namespace {

/// A remainder must be above this: 2^-30, and a little.
constexpr double least_remainder = std::bit_cast<double>(std::uint64_t{0x3E10000000100000});
constexpr double largest_numerator = std::numeric_limits<std::int32_t>::max();

struct Convergent {
    double numerator;
    double denominator;
};

} // namespace

std::int32_t truncated(double x) noexcept
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(x))
        return 0;
    return static_cast<std::int32_t>(std::clamp<double>(x, Limits::min(), Limits::max()));
}

void AsRational(double v, std::int32_t& numerator, std::int32_t& denominator, double largest) noexcept
{
    const double whole = std::floor(std::fabs(v));
    const double fraction = std::fabs(v) - whole;
    const double tolerance = fraction * 2.0 * std::numeric_limits<double>::epsilon();
    Convergent previous{.numerator = 1.0, .denominator = 0.0};
    Convergent current{.numerator = 0.0, .denominator = 1.0};
    double remainder = fraction;
    double off = fraction;
    while (off > tolerance && remainder > least_remainder) {
        const double inverse = 1.0 / remainder;
        const double a = std::floor(inverse);
        remainder = inverse - a;
        const Convergent next{.numerator = a * current.numerator + previous.numerator,
                              .denominator = a * current.denominator + previous.denominator};
        if (next.denominator * whole + next.numerator > largest_numerator || next.denominator > largest)
            break;
        previous = current;
        current = next;
        off = std::fabs(current.numerator / current.denominator - fraction);
    }
    numerator = truncated(current.denominator * whole + current.numerator);
    denominator = truncated(current.denominator);
    if (v < 0.0)
        numerator = -numerator;
}

} // namespace Efi::Affine
