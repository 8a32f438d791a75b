#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>
#include <variant>

/// Questions to numbers: is this one near a target, above it, in a range? Each is asked of one number or of four side
/// by side, by the same operations in the same order, so both forms give the same answers. Every tolerance is finite
/// and not negative. So an infinity or a NaN fails by itself where a distance has to lie within it, and where both ends
/// are bounded; a test of one end has to look.
namespace native::number_tests {

/// Four doubles side by side; a comparison gives four words of all ones or all zeros.
using Four [[gnu::vector_size(32)]] = double;
using FourWords [[gnu::vector_size(32)]] = std::int64_t;

inline constexpr double largest = std::numeric_limits<double>::max();

template <class X>
[[gnu::always_inline]] inline X magnitude(const X& x) noexcept
{
    constexpr std::int64_t all_but_sign = INT64_MAX;
    if constexpr (std::is_same_v<X, double>)
        return __builtin_fabs(x);
    else
        return reinterpret_cast<X>(reinterpret_cast<FourWords>(x) & all_but_sign);
}

/// abs(x - t) <= tol
struct Within {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x) const noexcept
    {
        return magnitude(x - t) <= tol;
    }
};

/// Not finite, or abs(x - t) > tol.
struct Outside {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x) const noexcept
    {
        return !(magnitude(x - t) <= tol);
    }
};

/// Both parts of a complex number within the tolerance of those of the target.
struct BothWithin {
    static constexpr bool reads_imaginary = true;
    double re;
    double im;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x, const X& y) const noexcept
    {
        return (magnitude(x - re) <= tol) & (magnitude(y - im) <= tol);
    }
    /// The same for numbers whose imaginary parts are all 0: no distance is within a negative tolerance.
    Within of_reals() const noexcept { return {.t = re, .tol = magnitude(0.0 - im) <= tol ? tol : -1.0}; }
};

/// Some part not finite or farther than the tolerance from that of the target.
struct SomeOutside {
    static constexpr bool reads_imaginary = true;
    double re;
    double im;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x, const X& y) const noexcept
    {
        return !((magnitude(x - re) <= tol) & (magnitude(y - im) <= tol));
    }
    Outside of_reals() const noexcept { return {.t = re, .tol = magnitude(0.0 - im) <= tol ? tol : -1.0}; }
};

/// Finite and x - t > tol.
struct Above {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x) const noexcept
    {
        return (x <= largest) & (x - t > tol);
    }
};

/// Finite and x - t >= -tol.
struct AtLeast {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x) const noexcept
    {
        return (x <= largest) & (x - t >= -tol);
    }
};

/// Finite and t - x > tol.
struct Below {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x) const noexcept
    {
        return (x >= -largest) & (t - x > tol);
    }
};

/// Finite and t - x >= -tol.
struct AtMost {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x) const noexcept
    {
        return (x >= -largest) & (t - x >= -tol);
    }
};

/// Finite, x - lower >= -tol and upper - x >= -tol; bounds in falling order hold nothing.
struct Between {
    static constexpr bool reads_imaginary = false;
    double lower;
    double upper;
    double tol;

    template <class X>
    [[gnu::always_inline]] auto operator()(const X& x) const noexcept
    {
        return (x - lower >= -tol) & (upper - x >= -tol);
    }
};

} // namespace native::number_tests

namespace native {

using NumberTest = std::variant<number_tests::Within, number_tests::Outside, number_tests::BothWithin,
                                number_tests::SomeOutside, number_tests::Above, number_tests::AtLeast,
                                number_tests::Below, number_tests::AtMost, number_tests::Between>;

} // namespace native
