#include "bailuxhost/power.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/complex_division.hpp"
#include "efiutl/messages.hpp"

#include <bit>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>

namespace Qud {

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// Whole exponents up to here go by multiplication; beyond, the error of the pairs below would show in the last place.
constexpr double largest_real_multiplied = 4294967296.0;
/// The same for complex numbers, whose rounding errors add up step by step.
constexpr double largest_complex_multiplied = 512.0;

bool is_whole(double x)
{
    return std::isfinite(x) && std::trunc(x) == x;
}

/// The unevaluated sum hi + lo times 2^exponent, hi between 2^-200 and 1: no product of two leaves the range of
/// doubles.
struct Pair {
    double hi;
    double lo;
    std::int64_t exponent;
};

/// a * b = hi + lo exactly, by splitting both into halves of 26 bits. No fused operation: the same bits everywhere.
/// @see Dekker, A floating-point technique for extending the available precision, Numer. Math. 18 (1971)
Pair exact_product(double a, double b)
{
    constexpr double splitter = 134217729.0; // 2^27 + 1
    const double a_scaled = splitter * a;
    const double a_hi = a_scaled - (a_scaled - a);
    const double a_lo = a - a_hi;
    const double b_scaled = splitter * b;
    const double b_hi = b_scaled - (b_scaled - b);
    const double b_lo = b - b_hi;
    const double hi = a * b;
    const double lo = ((a_hi * b_hi - hi) + a_hi * b_lo + a_lo * b_hi) + a_lo * b_lo;
    return {.hi = hi, .lo = lo, .exponent = 0};
}

Pair product(const Pair& x, const Pair& y)
{
    const Pair p = exact_product(x.hi, y.hi);
    const double lo = p.lo + (x.hi * y.lo + x.lo * y.hi);
    double hi = p.hi + lo;
    double rest = lo - (hi - p.hi);
    std::int64_t exponent = x.exponent + y.exponent;
    if (hi < 0x1p-200) {
        hi *= 0x1p200;
        rest *= 0x1p200;
        exponent -= 200;
    }
    return {.hi = hi, .lo = rest, .exponent = exponent};
}

double scaled(double x, std::int64_t exponent)
{
    constexpr std::int64_t far = 4000;     // beyond the range of doubles from any start
    if (-900 < exponent && exponent < 900) // then 2^exponent is a normal number, even after 1 / hi
        return x * std::bit_cast<double>(static_cast<std::uint64_t>(exponent + 1023) << 52);
    return std::ldexp(x, static_cast<int>(exponent < -far ? -far : exponent > far ? far : exponent));
}

/// a^n for finite a other than 0 and whole n other than 0, by binary exponentiation on pairs of doubles: exact where
/// the power is a double, else almost always the double nearest to it.
double real_multiplied(double a, double n)
{
    int exponent = 0;
    const double mantissa = std::frexp(std::fabs(a), &exponent);
    Pair square{.hi = mantissa, .lo = 0.0, .exponent = exponent};
    Pair power{.hi = 0.5, .lo = 0.0, .exponent = 1};
    std::uint64_t left = static_cast<std::uint64_t>(std::fabs(n));
    const bool negative = a < 0.0 && left % 2 == 1;
    for (;;) {
        if (left % 2 == 1)
            power = product(power, square);
        left /= 2;
        if (left == 0)
            break;
        square = product(square, square);
    }
    if (n < 0.0) {
        // 1 / (hi + lo): the quotient by hi, and one step of Newton's iteration with the exact remainder.
        const double quotient = 1.0 / power.hi;
        const Pair back = exact_product(quotient, power.hi);
        const double remainder = (1.0 - back.hi) - back.lo - quotient * power.lo;
        power = {.hi = quotient + quotient * remainder, .lo = 0.0, .exponent = -power.exponent};
    }
    const double result = scaled(power.hi, power.exponent);
    return negative ? -result : result;
}

/// cos(pi * x) and sin(pi * x) for finite x, exact at multiples of 1/2.
aComplex turn(double x)
{
    const double half_turns = std::fmod(x, 2.0);
    const double quarter = std::round(2.0 * half_turns);
    const double rest = std::numbers::pi * (half_turns - 0.5 * quarter);
    const double c = std::cos(rest);
    const double s = std::sin(rest);
    switch ((static_cast<int>(quarter) + 4) % 4) {
    case 0:
        return {.m_re = c, .m_im = s};
    case 1:
        return {.m_re = -s, .m_im = c};
    case 2:
        return {.m_re = -c, .m_im = -s};
    default:
        return {.m_re = s, .m_im = -c};
    }
}

/// A direction times a modulus; a direction along an axis stays there even with an infinite modulus, and zeros are +0.
aComplex along(const aComplex& direction, double modulus)
{
    const auto part = [modulus](double x) { return x == 0.0 ? 0.0 : x * modulus + 0.0; };
    return {.m_re = part(direction.m_re), .m_im = part(direction.m_im)};
}

/// a^b for a >= 0 or a NaN, or whole or not finite b.
double real_power(double a, double b)
{
    if (b == 1.0)
        return a;
    if (b == 2.0)
        return a * a;
    if (b == -1.0)
        return 1.0 / a;
    if (b == 0.5 && a > 0.0)
        return std::sqrt(a);
    if (is_whole(b) && b != 0.0 && std::fabs(b) <= largest_real_multiplied && std::isfinite(a) && a != 0.0)
        return real_multiplied(a, b);
    return std::pow(a, b);
}

/// x^n for a whole n other than 0, by binary exponentiation with the plain product.
aComplex plain_multiplied(const aComplex& x, double n)
{
    const auto multiply = [](const aComplex& a, const aComplex& b) {
        return aComplex{.m_re = a.m_re * b.m_re - a.m_im * b.m_im, .m_im = a.m_re * b.m_im + a.m_im * b.m_re};
    };
    unsigned left = static_cast<unsigned>(std::fabs(n));
    aComplex square = x;
    for (; left % 2 == 0; left /= 2)
        square = multiply(square, square);
    aComplex power = square; // not 1 times it: 0 times an infinite part would be no number
    for (left /= 2; left != 0; left /= 2) {
        square = multiply(square, square);
        if (left % 2 == 1)
            power = multiply(power, square);
    }
    if (n < 0.0)
        Efi::cpxd(1.0, 0.0, power.m_re, power.m_im, power.m_re, power.m_im);
    return power;
}

/// x^n for finite x and a whole n other than 0. A part for which the plain products leave the range of doubles comes
/// from an x scaled by a power of 2 so that its larger part lies between 0.5 and 1; zeros are +0.
aComplex complex_multiplied(const aComplex& x, double n)
{
    constexpr double nearly_overflown = 1e290; // the inverse of a power that has lost digits to underflow
    aComplex power = plain_multiplied(x, n);
    const bool lost_digits = n < 0.0 && std::fmax(std::fabs(power.m_re), std::fabs(power.m_im)) > nearly_overflown;
    const bool lost_all = power.m_re == 0.0 && power.m_im == 0.0;
    if (!std::isfinite(power.m_re) || !std::isfinite(power.m_im) || lost_digits || lost_all) {
        int exponent = 0;
        (void)std::frexp(std::fmax(std::fabs(x.m_re), std::fabs(x.m_im)), &exponent);
        const aComplex near_one =
            plain_multiplied({.m_re = std::ldexp(x.m_re, -exponent), .m_im = std::ldexp(x.m_im, -exponent)}, n);
        const std::int64_t back = static_cast<std::int64_t>(n) * exponent;
        if (!std::isfinite(power.m_re) || lost_digits || lost_all)
            power.m_re = scaled(near_one.m_re, back);
        if (!std::isfinite(power.m_im) || lost_digits || lost_all)
            power.m_im = scaled(near_one.m_im, back);
    }
    return {.m_re = power.m_re + 0.0, .m_im = power.m_im + 0.0};
}

/// exp(y * log(x)), x not 0.
aComplex polar_power(const aComplex& x, const aComplex& y)
{
    const double angle = x.m_im == 0.0 ? (x.m_re < 0.0 ? std::numbers::pi : 0.0) : std::atan2(x.m_im, x.m_re);
    int exponent = 0;
    double log_modulus = std::log(std::hypot(x.m_re, x.m_im));
    if (std::isinf(log_modulus) && std::isfinite(x.m_re) && std::isfinite(x.m_im)) {
        (void)std::frexp(std::fmax(std::fabs(x.m_re), std::fabs(x.m_im)), &exponent);
        log_modulus = std::log(std::hypot(std::ldexp(x.m_re, -exponent), std::ldexp(x.m_im, -exponent))) +
                      exponent * std::numbers::ln2;
    }
    // A real exponent takes no part in the products with the other's zero: 0 * inf is no number.
    if (y.m_im == 0.0) {
        const double modulus =
            exponent == 0 ? std::pow(std::hypot(x.m_re, x.m_im), y.m_re) : std::exp(y.m_re * log_modulus);
        const double direction = y.m_re * angle;
        return along({.m_re = std::cos(direction), .m_im = std::sin(direction)}, modulus);
    }
    const double modulus = std::exp(y.m_re * log_modulus - y.m_im * angle);
    const double direction = y.m_im * log_modulus + y.m_re * angle;
    return along({.m_re = std::cos(direction), .m_im = std::sin(direction)}, modulus);
}

/// 0 to the power y.
aComplex power_of_zero(double zero, const aComplex& y)
{
    if (y.m_re < 0.0)
        Evl::Run::AppException::Raise(msg::divide_by_zero, 2, "0 to a negative power");
    if (y.m_im == 0.0)
        return {.m_re = std::pow(zero, y.m_re), .m_im = 0.0};
    if (y.m_re > 0.0 && !std::isnan(y.m_im))
        return {.m_re = 0.0, .m_im = 0.0};
    return {.m_re = not_a_number, .m_im = not_a_number};
}

} // namespace

aComplex qupwr(aComplex x, aComplex y)
{
    const bool real_base = x.m_im == 0.0;
    const bool real_exponent = y.m_im == 0.0;
    if (real_base && x.m_re == 0.0)
        return power_of_zero(x.m_re, y);
    if (real_base && real_exponent) {
        if (!(x.m_re < 0.0) || is_whole(y.m_re) || !std::isfinite(y.m_re))
            return {.m_re = real_power(x.m_re, y.m_re), .m_im = 0.0};
        return along(turn(y.m_re), real_power(-x.m_re, y.m_re));
    }
    if (real_exponent && y.m_re == 0.0)
        return {.m_re = 1.0, .m_im = 0.0};
    if (real_exponent && std::isfinite(x.m_re) && std::isfinite(x.m_im)) {
        if (y.m_re == 1.0)
            return x;
        if (y.m_re == 0.5) {
            const std::complex<double> root = std::sqrt(std::complex<double>(x.m_re, x.m_im));
            return {.m_re = root.real(), .m_im = root.imag()};
        }
        if (is_whole(y.m_re) && std::fabs(y.m_re) <= largest_complex_multiplied)
            return complex_multiplied(x, y.m_re);
    }
    return polar_power(x, y);
}

Handle qupwr(const NumVal& x, const NumVal& y)
{
    Dim::Id(y.m_dim, 2);
    const aComplex power = qupwr({.m_re = x.re(), .m_im = x.im()}, {.m_re = y.re(), .m_im = y.im()});
    return NumVal::make(power.m_re, power.m_im, Dim::Pwr(x.m_dim, y.re(), y.im()));
}

} // namespace Qud
