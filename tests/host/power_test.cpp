#include "bailuxhost/power.hpp"

#include "tests/host/generated.hpp"
#include "tests/support/host_raises.hpp"

#include <bit>
#include <cmath>
#include <complex>
#include <limits>
#include <string>

namespace {

using Qud::Dim;
using Qud::NumVal;
using Qud::qupwr;
using support::host_raised_by;
using support::Raised;

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double denormal = std::numeric_limits<double>::denorm_min();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double eps = std::numeric_limits<double>::epsilon();

const Dim m{Dim::Base::length};
const Dim s{Dim::Base::time};

/// The same bits, any NaN like any other.
bool same(double x, double y)
{
    return std::isnan(x) ? std::isnan(y) : std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
}

std::string text(aComplex z)
{
    return std::to_string(z.m_re) + " + " + std::to_string(z.m_im) + "i";
}

struct Case {
    aComplex base;
    aComplex exponent;
    aComplex power;
};

void expect_bits(std::initializer_list<Case> cases)
{
    for (const Case& c : cases) {
        const aComplex power = qupwr(c.base, c.exponent);
        EXPECT_TRUE(same(power.m_re, c.power.m_re) && same(power.m_im, c.power.m_im))
            << "(" << text(c.base) << ") ^ (" << text(c.exponent) << ") is " << text(power) << ", not "
            << text(c.power);
    }
}

double real_power(double x, double y)
{
    const aComplex power = qupwr(aComplex{x, 0.0}, aComplex{y, 0.0});
    EXPECT_TRUE(same(power.m_im, 0.0)) << x << " ^ " << y;
    return power.m_re;
}

TEST(Power, OfRealNumbers)
{
    expect_bits({
        {{3, 0}, {5, 0}, {243, 0}},
        {{10, 0}, {-3, 0}, {0.001, 0}},
        {{10, 0}, {22, 0}, {1e22, 0}},
        {{2, 0}, {1023, 0}, {std::ldexp(1.0, 1023), 0}},
        {{2, 0}, {1024, 0}, {inf, 0}},
        {{2, 0}, {-1074, 0}, {denormal, 0}},
        {{2, 0}, {-1076, 0}, {0, 0}},
        {{-2, 0}, {3, 0}, {-8, 0}},
        {{-2, 0}, {4, 0}, {16, 0}},
        {{-2, 0}, {-3, 0}, {-0.125, 0}},
        {{-2, 0}, {1025, 0}, {-inf, 0}},
        {{-2, 0}, {-1077, 0}, {-0.0, 0}},
        {{denormal, 0}, {-1, 0}, {inf, 0}},
        {{denormal, 0}, {2, 0}, {0, 0}},
        {{9, 0}, {0.5, 0}, {3, 0}},
        {{2, 0}, {0.5, 0}, {1.4142135623730951, 0}}, // correctly rounded
        {{0.25, 0}, {-0.5, 0}, {2, 0}},
        {{1.5, 0}, {1, 0}, {1.5, 0}},
        {{3, 0}, {-1, 0}, {1.0 / 3.0, 0}},
        {{1, 0}, {1e300, 0}, {1, 0}},
        {{-1, 0}, {9007199254740993.0, 0}, {1, 0}}, // that number is a double, and even: ...992
        {{-1, 0}, {9007199254740991.0, 0}, {-1, 0}},
        {{largest, 0}, {1, 0}, {largest, 0}},
    });
}

TEST(Power, ToTheZerothIsOne)
{
    for (const double x : {0.0, -0.0, 1.0, -3.5, inf, -inf, NaN, denormal})
        for (const double y : {0.0, -0.0})
            expect_bits({{{x, 0}, {y, 0}, {1, 0}}, {{x, 2}, {y, 0}, {1, 0}}, {{x, NaN}, {y, -0.0}, {1, 0}}});
}

TEST(Power, OfZero)
{
    expect_bits({
        {{0, 0}, {2, 0}, {0, 0}},
        {{-0.0, 0}, {2, 0}, {0, 0}},
        {{-0.0, 0}, {3, 0}, {-0.0, 0}},
        {{-0.0, 0}, {0.5, 0}, {0, 0}},
        {{0, 0}, {inf, 0}, {0, 0}},
        {{0, 0}, {2, 1}, {0, 0}},
        {{0, 0}, {0, 1}, {NaN, NaN}},
        {{0, 0}, {NaN, 0}, {NaN, 0}},
    });
    const Raised divide_by_zero{.message = "divide by zero", .index = 2};
    for (const double zero : {0.0, -0.0})
        for (const double y : {-1.0, -2.0, -0.5, -inf, -denormal})
            for (const double im : {0.0, -0.0, 1.0})
                EXPECT_EQ(host_raised_by([&] { qupwr(aComplex{zero, -zero}, aComplex{y, im}); }), divide_by_zero) << y;
}

TEST(Power, InfinitiesAndNaNAreThoseOfIeeePow)
{
    for (const double x : {inf, -inf, NaN, 0.5, 1.0, 2.0, -0.5, -1.0, -2.0})
        for (const double y : {inf, -inf, NaN, 1.0, 2.0, 3.0, -1.0, -2.0, -3.0, 5e300, -5e300})
            EXPECT_TRUE(same(real_power(x, y), std::pow(x, y))) << x << " ^ " << y;
    for (const double x : {inf, NaN})
        for (const double y : {0.5, -0.5, 2.5})
            EXPECT_TRUE(same(real_power(x, y), std::pow(x, y))) << x << " ^ " << y;
}

TEST(Power, OfNegativeNumbersIsThePrincipalValue)
{
    expect_bits({
        {{-4, 0}, {0.5, 0}, {0, 2}},
        {{-4, -0.0}, {0.5, 0}, {0, 2}}, // an imaginary part of -0 is none: above the cut, not below
        {{-4, 0}, {-0.5, 0}, {0, -0.5}},
        {{-4, 0}, {1.5, 0}, {0, -8}},
        {{-4, 0}, {2.5, 0}, {0, 32}},
        {{-inf, 0}, {0.5, 0}, {0, inf}},
        {{-inf, 0}, {-0.5, 0}, {0, 0}},
    });
    const aComplex cube_root = qupwr(aComplex{-8, 0}, aComplex{1.0 / 3.0, 0});
    EXPECT_NEAR(cube_root.m_re, 1.0, 4 * eps);
    EXPECT_NEAR(cube_root.m_im, std::sqrt(3.0), 4 * eps);
    const aComplex fourth = qupwr(aComplex{-1, 0}, aComplex{1.25, 0});
    EXPECT_NEAR(fourth.m_re, -std::sqrt(0.5), 2 * eps);
    EXPECT_NEAR(fourth.m_im, -std::sqrt(0.5), 2 * eps);
}

TEST(Power, OfComplexNumbersToWholeOnes)
{
    expect_bits({
        {{0, 1}, {2, 0}, {-1, 0}},
        {{0, 1}, {3, 0}, {0, -1}},
        {{0, 1}, {4, 0}, {1, 0}},
        {{0, 1}, {-1, 0}, {0, -1}},
        {{0, -1}, {-2, 0}, {-1, 0}},
        {{1, 1}, {2, 0}, {0, 2}},
        {{1, 1}, {100, 0}, {-1125899906842624.0, 0}}, // (2i)^50 = -2^50
        {{1, 1}, {-2, 0}, {0, -0.5}},
        {{3, 4}, {1, 0}, {3, 4}},
        {{2, -3}, {3, 0}, {-46, -9}},
        {{1e200, 1e200}, {2, 0}, {0, inf}},     // 1e400 - 1e400 is 0, not NaN
        {{1e300, 1e-300}, {2, 0}, {inf, 2}},    // the small part is kept
        {{1e-170, 1e-170}, {-2, 0}, {0, -inf}}, // -5e339
        {{0x1p600, 0x1p600}, {-1, 0}, {0x1p-601, -0x1p-601}},
    });
}

TEST(Power, OfComplexNumbersToOthers)
{
    expect_bits({
        {{0, 2}, {0.5, 0}, {1, 1}},
        {{0, -2}, {0.5, 0}, {1, -1}},
        {{-3, 4}, {0.5, 0}, {1, 2}},
        {{1, 0}, {2, 3}, {1, 0}},
    });
    // exp(-pi/2); cos and sin of ln 2; 10 digits and more by hand
    const aComplex i_to_i = qupwr(aComplex{0, 1}, aComplex{0, 1});
    EXPECT_NEAR(i_to_i.m_re, 0.20787957635076190855, 1e-16);
    EXPECT_EQ(i_to_i.m_im, 0.0);
    const aComplex two_to_i = qupwr(aComplex{2, 0}, aComplex{0, 1});
    EXPECT_NEAR(two_to_i.m_re, 0.76923890136397212658, 2e-16);
    EXPECT_NEAR(two_to_i.m_im, 0.63896127631363480115, 2e-16);
    const aComplex minus_one_to_i = qupwr(aComplex{-1, 0}, aComplex{0, 1}); // exp(-pi)
    EXPECT_NEAR(minus_one_to_i.m_re, 0.04321391826377224977, 1e-17);
    const aComplex far = qupwr(aComplex{largest, largest}, aComplex{0.25, 0}); // no overflow on the way
    EXPECT_NEAR(std::hypot(far.m_re, far.m_im) / std::pow(largest, 0.25), std::pow(2.0, 0.125), 1e-12);
}

TEST(Power, UnitsFollowTheExponent)
{
    const Qud::Handle power = qupwr(NumVal(9.0, 0.0, m), NumVal(0.5, 0.0));
    EXPECT_EQ(Qud::as_number(power)->re(), 3.0);
    EXPECT_EQ(Qud::as_number(power)->m_dim, Dim::Pwr(m, 0.5));
    EXPECT_EQ(Qud::as_number(qupwr(NumVal(2.0, 0.0, m), NumVal(0.0, 0.0)))->m_dim, Dim::identity);
    EXPECT_EQ(Qud::as_number(qupwr(NumVal(2.0, 0.0), NumVal(0.0, 1.0)))->m_dim, Dim::identity);
}

TEST(Power, ErrorsOfTheNumberComeBeforeTheUnits)
{
    const Raised not_representable{.message = "unit power not representable", .index = -1};
    EXPECT_EQ(host_raised_by([] { qupwr(NumVal(2.0, 0.0, m), NumVal(1.0, 0.0, s)); }),
              (Raised{.message = "must be dimless", .index = 2}));
    EXPECT_EQ(host_raised_by([] { qupwr(NumVal(0.0, 0.0, m), NumVal(-inf, 0.0)); }),
              (Raised{.message = "divide by zero", .index = 2}));
    for (const double exponent : {inf, NaN, 0.7000001, 1e9})
        EXPECT_EQ(host_raised_by([&] { qupwr(NumVal(2.0, 0.0, m), NumVal(exponent, 0.0)); }), not_representable);
    EXPECT_EQ(host_raised_by([] { qupwr(NumVal(2.0, 0.0, m), NumVal(2.0, 1.0)); }), not_representable);
}

RC_GTEST_PROP(PowerLaws, WholePowersOfWholeNumbersAreExact, ())
{
    const std::int64_t base = *rc::gen::inRange<std::int64_t>(-1000, 1001);
    RC_PRE(base != 0);
    std::int64_t exact = 1;
    for (int n = 1; std::llabs(exact) < (std::int64_t{1} << 53) / 1001; ++n) {
        exact *= base;
        const double x = static_cast<double>(base);
        RC_ASSERT(real_power(x, n) == static_cast<double>(exact));
        RC_ASSERT(real_power(x, -n) == 1.0 / static_cast<double>(exact)); // one correct rounding
        if (n == 64)
            break;
    }
}

RC_GTEST_PROP(PowerLaws, WholePowersAreWithinAPlace, ())
{
    const double x =
        std::ldexp(1.0 + static_cast<double>(*rc::gen::inRange<std::int64_t>(1, std::int64_t{1} << 52)) * eps,
                   *rc::gen::inRange(-20, 20));
    const int n = *rc::gen::inRange(-50, 51);
    const long double wide = std::pow(static_cast<long double>(x), static_cast<long double>(n));
    const double power = real_power(x, n);
    RC_ASSERT(std::abs(power - wide) <= 0.51L * eps * wide);
}

RC_GTEST_PROP(PowerLaws, GaussianIntegersStayWhole, ())
{
    const int re = *rc::gen::inRange(-9, 10);
    const int im = *rc::gen::inRange(-9, 10);
    RC_PRE(im != 0);
    std::int64_t power_re = 1;
    std::int64_t power_im = 0;
    for (int n = 1; n <= 12; ++n) { // (9 sqrt 2)^12 is below 2^53
        const std::int64_t next_re = power_re * re - power_im * im;
        power_im = power_re * im + power_im * re;
        power_re = next_re;
        const aComplex power =
            qupwr(aComplex{static_cast<double>(re), static_cast<double>(im)}, aComplex{static_cast<double>(n), 0.0});
        RC_ASSERT(power.m_re == static_cast<double>(power_re));
        RC_ASSERT(power.m_im == static_cast<double>(power_im));
    }
}

RC_GTEST_PROP(PowerLaws, ComplexPowersAgreeWithWiderArithmetic, ())
{
    const auto part = [] { return *rc::gen::inRange(-4000, 4001) / 1000.0; };
    const aComplex x{part(), part()};
    const aComplex y{part(), part()};
    RC_PRE(x.m_re != 0.0 || x.m_im != 0.0);
    const std::complex<long double> wide =
        std::exp(std::complex<long double>(y.m_re, y.m_im) *
                 std::log(std::complex<long double>(x.m_re, x.m_im == 0.0 ? 0.0 : x.m_im)));
    const aComplex power = qupwr(x, y);
    const long double error = std::abs(std::complex<long double>(power.m_re, power.m_im) - wide);
    RC_ASSERT(error <= 40 * eps * std::abs(wide));
}

} // namespace
