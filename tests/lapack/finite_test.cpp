#include "bailuxsko/lapack/finite.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

#include <cfenv>
#include <limits>

namespace {

using matrices::Complex;
using matrices::inf;
using matrices::NaN;
using Qud::Handle;

constexpr double largest = std::numeric_limits<double>::max();
constexpr double tiny = std::numeric_limits<double>::denorm_min();

bool is_finite(const Handle& M)
{
    return lapack::is_finite(*Qud::matrix_of(M));
}

TEST(Finite, LooksAtEveryElementOfBothParts)
{
    for (const std::uint32_t m : {1U, 2U, 5U, 8U})
        for (const std::uint32_t n : {1U, 3U})
            for (std::uint32_t place = 0; place < m * n; ++place)
                for (const double odd : {NaN, -NaN, inf, -inf, std::numeric_limits<double>::signaling_NaN()}) {
                    const auto at = [&](auto i, auto j) { return i + j * m == place ? odd : -1.0; };
                    const Handle in_real = matrices::generate(m, n, at);
                    const Handle in_imaginary =
                        matrices::generate(m, n, [&](auto i, auto j) { return Complex(1.0, at(i, j)); });
                    for (const Handle& M : {in_real, in_imaginary}) {
                        EXPECT_FALSE(is_finite(M)) << m << " by " << n << ", place " << place;
                        EXPECT_FALSE(is_finite(matrices::as_view(M))) << m << " by " << n << ", place " << place;
                    }
                }
}

TEST(Finite, LargestAndSmallestNumbersAre)
{
    EXPECT_TRUE(is_finite(matrices::real({{largest, -largest, tiny, -tiny, 0.0, -0.0}})));
    EXPECT_TRUE(is_finite(matrices::complex({{{largest, -largest}, {-0.0, tiny}}})));
}

TEST(Finite, WhatLiesBetweenColumnsIsNotLookedAt)
{
    const Qud::FreshNumbers numbers = Qud::fresh_numbers(6);
    std::copy_n(std::initializer_list<double>{NaN, 1, NaN, inf, 2, -inf}.begin(), 6, numbers.get());
    EXPECT_TRUE(is_finite(Qud::MatVal::make({.rows = 1,
                                             .cols = 2,
                                             .anr = 3,
                                             .offset = 1,
                                             .real = numbers,
                                             .imaginary = nullptr,
                                             .units = {},
                                             .entries = nullptr})));
}

TEST(Finite, SetsNoFloatingPointFlag)
{
    std::feclearexcept(FE_ALL_EXCEPT);
    is_finite(matrices::real({{NaN, inf, std::numeric_limits<double>::signaling_NaN()}}));
    EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_OVERFLOW | FE_DIVBYZERO), 0);
}

TEST(Finite, RefusalSaysNotConverging)
{
    const auto raised = support::host_raised_by([] {
        lapack::refuse_not_finite(*Qud::matrix_of(matrices::real({{1, inf}})));
    });
    EXPECT_EQ(raised, (support::Raised{"not converging", -1, ""}));
    EXPECT_EQ(raised.detail, "the matrix holds an infinity or a NaN");
    lapack::refuse_not_finite(*Qud::matrix_of(matrices::real({{1, 2}})));
}

} // namespace
