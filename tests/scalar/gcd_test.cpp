// What no worksheet can show of divisors: the constant, other operations to fold with, flags of the processor.
#include "bailuxsko/gcd.hpp"

#include "bailuxhost/matval.hpp"
#include "bailuxsko/frame/floating_point.hpp"
#include "bailuxsko/scalar/gcd.hpp"
#include "bailuxsko/small_functions.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cmath>
#include <limits>
#include <numeric>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

using Qud::Handle;
using support::host_raised_by;
using support::matrix;
using support::number;
using support::Raised;

constexpr double inf = std::numeric_limits<double>::infinity();

double result(const Handle& value)
{
    const Qud::NumVal& number = *Qud::as_number(value);
    EXPECT_EQ(number.m_dim, Qud::Dim::identity);
    EXPECT_TRUE(number.is_real());
    return number.re();
}

TEST(Divisors, TheLargestWholeNumberIsTwoToThe53)
{
    EXPECT_EQ(Efi::max_fp_int, 9007199254740992.0);
    EXPECT_EQ(Efi::max_fp_int + 1.0, Efi::max_fp_int);
}

TEST(Divisors, FoldsWithAnyOperationDownTheColumns)
{
    const Handle values[] = {matrix({{1, -2}, {3, 4}}), number(-5), matrix({{6, 7}})};
    EXPECT_EQ(result(Efi::fold(values, [](double a, double b) { return 10 * a + b; })), 1324567);
    EXPECT_EQ(result(Efi::fold(values, [](double a, double b) { return a - b; })), 1 - 3 - 2 - 4 - 5 - 6 - 7);
    EXPECT_EQ(result(Efi::fold(values, [](double a, double b) { return std::fmax(a, b); })), 7);
    EXPECT_EQ(result(Efi::fold({}, Efi::GCD)), 0);
}

TEST(Divisors, OnlyTheFirstNumberOfTheFirstValueStartsTheFold)
{
    const Handle first_is_empty[] = {Qud::MatVal::empty(), number(5), matrix({{6}, {7}})};
    EXPECT_EQ(result(Efi::fold(first_is_empty, [](double a, double b) { return 10 * a + b; })), 567);
    int calls = 0;
    static int* counter = &calls;
    const Handle one[] = {number(5)};
    Efi::fold(one, [](double a, double) { return ++*counter, a; });
    EXPECT_EQ(calls, 0);
}

TEST(Divisors, ViewsAndAbsentArguments)
{
    const Handle M = matrix({{6, 10, 15}, {12, 14, 21}, {18, 22, 35}});
    const Handle view[] = {Qud::matrix_of(M)->SubMatrix(1, 2, 0, 1)};
    const std::vector<std::uint64_t> before = support::bits(M);
    EXPECT_EQ(result(Efi::Matrix::gcd(view)), 2);
    EXPECT_EQ(support::bits(M), before);
    const Handle absent[] = {number(6), nullptr};
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::gcd(absent); }), (Raised{"must be integer", 2}));
}

TEST(Divisors, OfTwoNumbers)
{
    EXPECT_EQ(Efi::GCD(12, -18), 6);
    EXPECT_EQ(Efi::GCD(-18, 12), 6);
    EXPECT_EQ(Efi::GCD(0, -5), 5);
    EXPECT_EQ(Efi::GCD(-5, 0), 5);
    EXPECT_EQ(Efi::GCD(0, 0), 0);
    EXPECT_EQ(Efi::GCD(2.5, 1.5), 0.5); // remainders of doubles do as well
    EXPECT_EQ(Efi::GCD(1e300, 2e300), 1e300);
    for (const double x : {double{NAN}, inf, -inf}) {
        EXPECT_TRUE(std::isnan(Efi::GCD(x, 4)));
        EXPECT_TRUE(std::isnan(Efi::GCD(4, x)));
        EXPECT_TRUE(std::isnan(Efi::GCD(2.5, x)));
    }
    EXPECT_EQ(Efi::LCM(6, 4), 12);
    EXPECT_TRUE(std::isnan(Efi::LCM(0, 0)));
    EXPECT_TRUE(std::isnan(Efi::LCM(NAN, 5)));
    EXPECT_TRUE(std::isnan(Efi::LCM(5, NAN)));
}

RC_GTEST_PROP(Divisors, AreThoseOfIntegers, (std::uint64_t a, std::uint64_t b))
{
    constexpr std::uint64_t end = std::uint64_t{1} << 53U;
    const std::uint64_t x = a % (end + 1);
    const std::uint64_t y = b % (end + 1);
    RC_ASSERT(Efi::GCD(static_cast<double>(x), static_cast<double>(y)) == static_cast<double>(std::gcd(x, y)));
    const std::uint64_t s = a % (1U << 26U) + 1;
    const std::uint64_t t = b % (1U << 26U) + 1;
    RC_ASSERT(Efi::LCM(static_cast<double>(s), static_cast<double>(t)) == static_cast<double>(std::lcm(s, t)));
}

/// Columns of multiples: the divisor so far divides the next number, or does not, up to the largest quotients.
RC_GTEST_PROP(Divisors, OfColumnsAreThoseOfIntegers, ())
{
    constexpr std::uint64_t end = std::uint64_t{1} << 53U;
    const std::uint64_t factor = std::uint64_t{1} << *rc::gen::inRange(0U, 53U);
    const auto size = *rc::gen::inRange<std::uint32_t>(1, 50);
    Qud::FreshNumbers column = Qud::fresh_numbers(size);
    std::uint64_t expected = 0;
    for (std::size_t k = 0; k < size; ++k) {
        const std::uint64_t n = *rc::gen::arbitrary<std::uint64_t>() % (end / factor + 1) * factor;
        const std::uint64_t x = *rc::gen::inRange(0, 5) == 0 ? 0 : n;
        column[k] = (k % 2 == 0 ? 1.0 : -1.0) * static_cast<double>(x);
        expected = std::gcd(expected, x);
    }
    const Handle values[] = {Qud::MatVal::make(size, 1, column)};
    RC_ASSERT(result(Efi::Matrix::gcd(values)) == static_cast<double>(expected));
}

TEST(Divisors, OfColumnsWithTheLargestNumbers)
{
    constexpr double last = Efi::max_fp_int;
    const auto of = [](support::Numbers numbers) {
        const Handle values[] = {matrix(numbers)};
        return result(Efi::Matrix::gcd(values));
    };
    EXPECT_EQ(of({{1}, {last}, {last - 1}}), 1);
    EXPECT_EQ(of({{2}, {last}, {last - 2}}), 2);
    EXPECT_EQ(of({{3}, {last - 2}, {9007199254740990}}), 3); // 2^53 - 2 is a multiple of 3
    EXPECT_EQ(of({{0}, {0}, {last}, {last}}), last);
    EXPECT_EQ(of({{last}, {0}, {0}}), last);
}

TEST(Divisors, TheFlagsOfNoMultipleFailNoLaterCall)
{
    Efi::fp::_clearfp();
    const Handle zeros[] = {number(0), number(0)};
    EXPECT_TRUE(std::isnan(result(Efi::Matrix::lcm(zeros))));
    EXPECT_TRUE((Efi::fp::_statusfp() & Efi::fp::invalid) != 0) << "0 / 0 leaves its flag";
    EXPECT_EQ(result(Efi::Matrix::tr(matrix({{1, 2}, {3, 4}}))), 5);
}

} // namespace
