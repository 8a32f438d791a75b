#include "bailuxsko/scalar/rational.hpp"

#include <bit>
#include <cmath>
#include <limits>
#include <numeric>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr std::int32_t largest_int = std::numeric_limits<std::int32_t>::max();
const double least_remainder = std::bit_cast<double>(std::uint64_t{0x3E10000000100000});

struct Case {
    const char* name;
    double v;
    double largest;
    std::int32_t numerator;
    std::int32_t denominator;
};

const Case cases[] = {
    {.name = "zero", .v = 0.0, .largest = 256, .numerator = 0, .denominator = 1},
    {.name = "negative zero", .v = -0.0, .largest = 256, .numerator = 0, .denominator = 1},
    {.name = "whole", .v = 5.0, .largest = 256, .numerator = 5, .denominator = 1},
    {.name = "negative whole", .v = -3.0, .largest = 256, .numerator = -3, .denominator = 1},
    {.name = "met exactly", .v = 0.375, .largest = 256, .numerator = 3, .denominator = 8},
    {.name = "met but for rounding", .v = 0.1, .largest = 1e9, .numerator = 1, .denominator = 10},
    {.name = "above 1", .v = 2.75, .largest = 256, .numerator = 11, .denominator = 4},
    {.name = "negative", .v = -2.75, .largest = 256, .numerator = -11, .denominator = 4},
    {.name = "negative below 1", .v = -0.1, .largest = 256, .numerator = -1, .denominator = 10},
    {.name = "convergent below the largest denominator",
     .v = 3.141592653589793,
     .largest = 256,
     .numerator = 355,
     .denominator = 113},
    {.name = "denominator equal to the largest",
     .v = 3.141592653589793,
     .largest = 113,
     .numerator = 355,
     .denominator = 113},
    {.name = "one less", .v = 3.141592653589793, .largest = 112, .numerator = 333, .denominator = 106},
    {.name = "a small one", .v = 3.141592653589793, .largest = 7, .numerator = 22, .denominator = 7},
    {.name = "none fits", .v = 3.141592653589793, .largest = 6, .numerator = 3, .denominator = 1},
    {.name = "rounds up to 1", .v = 0.9999, .largest = 256, .numerator = 1, .denominator = 1},
    {.name = "remainder as small as rounding", .v = 0.5 + 1e-11, .largest = 1e15, .numerator = 1, .denominator = 2},
    {.name = "remainder at the limit", .v = least_remainder, .largest = 1e15, .numerator = 0, .denominator = 1},
    {.name = "remainder above the limit",
     .v = std::nextafter(least_remainder, 1.0),
     .largest = 1073741823,
     .numerator = 1,
     .denominator = static_cast<std::int32_t>(1.0 / least_remainder)},
    {.name = "numerator that fits", .v = 1e9 + 0.5, .largest = 256, .numerator = 2000000001, .denominator = 2},
    {.name = "numerator at the limit", .v = 1073741823.5, .largest = 256, .numerator = largest_int, .denominator = 2},
    {.name = "numerator beyond", .v = 1073741824.5, .largest = 256, .numerator = 1073741824, .denominator = 1},
    {.name = "whole number at the limit",
     .v = 2147483647.5,
     .largest = 256,
     .numerator = largest_int,
     .denominator = 1},
    {.name = "whole number beyond", .v = 3e9, .largest = 256, .numerator = largest_int, .denominator = 1},
    {.name = "negative beyond", .v = -3e9, .largest = 256, .numerator = -largest_int, .denominator = 1},
    {.name = "inf", .v = inf, .largest = 256, .numerator = largest_int, .denominator = 1},
    {.name = "-inf", .v = -inf, .largest = 256, .numerator = -largest_int, .denominator = 1},
    {.name = "NaN", .v = NAN, .largest = 256, .numerator = 0, .denominator = 1},
};

TEST(AsRational, EveryEndOfTheSearch)
{
    for (const Case& c : cases) {
        std::int32_t numerator = -7;
        std::int32_t denominator = -7;
        Efi::Affine::AsRational(c.v, numerator, denominator, c.largest);
        EXPECT_EQ(numerator, c.numerator) << c.name;
        EXPECT_EQ(denominator, c.denominator) << c.name;
    }
}

RC_GTEST_PROP(AsRational, FindsTheFractionThatTheNumberIs, ())
{
    const auto d = *rc::gen::inRange(1, 257);
    const auto n = *rc::gen::inRange(-100000, 100000);
    std::int32_t numerator = 0;
    std::int32_t denominator = 0;
    Efi::Affine::AsRational(static_cast<double>(n) / d, numerator, denominator, 256);
    const int divisor = std::gcd(n, d);
    RC_ASSERT(numerator == n / divisor);
    RC_ASSERT(denominator == d / divisor);
}

RC_GTEST_PROP(AsRational, IsNearerThanItsDenominatorPromises, ())
{
    const double v = *rc::gen::inRange(0, 1 << 30) / static_cast<double>(1 << 30);
    std::int32_t numerator = 0;
    std::int32_t denominator = 0;
    Efi::Affine::AsRational(v, numerator, denominator, 256);
    RC_ASSERT(denominator >= 1 && denominator <= 256);
    const double off = std::fabs(v - static_cast<double>(numerator) / denominator);
    RC_ASSERT(off <= 1.0 / (256.0 * denominator)); // the next convergent's denominator is above 256
}

TEST(Truncated, NeverLeaves32Bits)
{
    using Efi::Affine::truncated;
    EXPECT_EQ(truncated(2.9), 2);
    EXPECT_EQ(truncated(-2.9), -2);
    EXPECT_EQ(truncated(2147483647.9), largest_int);
    EXPECT_EQ(truncated(2147483648.0), largest_int);
    EXPECT_EQ(truncated(-2147483648.9), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(truncated(inf), largest_int);
    EXPECT_EQ(truncated(-inf), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(truncated(NAN), 0);
}

} // namespace
