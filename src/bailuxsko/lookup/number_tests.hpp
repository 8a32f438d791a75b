#pragma once

#include <cstdint>
#include <limits>
#include <variant>

/// What a predicate asks of a number that has the right unit, for one number or for two side by side: the same
/// operations in the same order, so both forms give the same answers.
/// Every tolerance is finite and not negative. So where a distance has to lie within it, infinities and NaN fail by
/// themselves; the one-sided tests have to look.
namespace Efi::number_tests {

/// Two doubles side by side; comparisons give two words of all ones or all zeros.
using Two [[gnu::vector_size(16)]] = double;
using TwoWords [[gnu::vector_size(16)]] = std::int64_t;

inline double magnitude(double x) noexcept
{
    return __builtin_fabs(x);
}

inline Two magnitude(Two x) noexcept
{
    const TwoWords all_but_sign = {INT64_MAX, INT64_MAX};
    return reinterpret_cast<Two>(reinterpret_cast<TwoWords>(x) & all_but_sign);
}

/// False for infinities and NaN, the marker of an empty slot among them.
template <class X>
auto is_finite(X x) noexcept
{
    return magnitude(x) <= std::numeric_limits<double>::max();
}

/// abs(x - t) <= tol
struct Within {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    auto operator()(X x) const noexcept
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
    auto operator()(X x) const noexcept
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
    auto operator()(X x, X y) const noexcept
    {
        return (magnitude(x - re) <= tol) & (magnitude(y - im) <= tol);
    }
    /// The same for numbers whose imaginary parts are all 0: a distance is never within a negative tolerance.
    Within of_reals() const noexcept { return {.t = re, .tol = magnitude(0.0 - im) <= tol ? tol : -1.0}; }
};

/// Some part not finite or farther than the tolerance from that of the target.
struct SomeOutside {
    static constexpr bool reads_imaginary = true;
    double re;
    double im;
    double tol;

    template <class X>
    auto operator()(X x, X y) const noexcept
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
    auto operator()(X x) const noexcept
    {
        return is_finite(x) & (x - t > tol);
    }
};

/// Finite and x - t >= -tol.
struct AtLeast {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    auto operator()(X x) const noexcept
    {
        return is_finite(x) & (x - t >= -tol);
    }
};

/// Finite and t - x > tol.
struct Below {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    auto operator()(X x) const noexcept
    {
        return is_finite(x) & (t - x > tol);
    }
};

/// Finite and t - x >= -tol.
struct AtMost {
    static constexpr bool reads_imaginary = false;
    double t;
    double tol;

    template <class X>
    auto operator()(X x) const noexcept
    {
        return is_finite(x) & (t - x >= -tol);
    }
};

/// Finite, x - lower >= -tol and upper - x >= -tol; bounds in falling order hold nothing.
struct Between {
    static constexpr bool reads_imaginary = false;
    double lower;
    double upper;
    double tol;

    template <class X>
    auto operator()(X x) const noexcept
    {
        return is_finite(x) & (x - lower >= -tol) & (upper - x >= -tol);
    }
};

} // namespace Efi::number_tests

namespace Efi {

using NumberTest = std::variant<number_tests::Within, number_tests::Outside, number_tests::BothWithin,
                                number_tests::SomeOutside, number_tests::Above, number_tests::AtLeast,
                                number_tests::Below, number_tests::AtMost, number_tests::Between>;

} // namespace Efi
