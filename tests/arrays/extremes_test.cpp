// The parts that min and max are made of, each by itself.
#include "bailuxsko/arrays/extremes.hpp"

#include "bailuxhost/matval.hpp"
#include "bailuxsko/extremes.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Dim;
using Qud::Handle;
using support::host_raised_by;
using support::matrix;
using support::number;
using support::Raised;
using support::text;
using Values = std::vector<Handle>;

const Dim none;
const Dim m{Dim::Base::length};
const Dim s{Dim::Base::time};
constexpr double inf = std::numeric_limits<double>::infinity();
const double nan = std::nan("");

Handle row_of(const Values& elements)
{
    Qud::MatBuilder builder(1, static_cast<std::uint32_t>(elements.size()));
    for (std::size_t j = 0; j < elements.size(); ++j)
        builder.set(0, j, elements[j]);
    return builder.finish();
}

const Handle function = std::make_shared<const Qud::FunVal>("f", 1, 1, [](auto) { return number(0); });

TEST(UniformArgumentDimension, TheOneUnitOfAll)
{
    const auto unit = [](const Values& values) { return Efi::UniformArgumentDimension(values); };
    EXPECT_EQ(unit({number(1)}), none);
    EXPECT_EQ(unit({number(1, 0, m), matrix({{1, 2}}, m)}), m);
    EXPECT_EQ(unit({text("a")}), Dim::string_dim);
    EXPECT_EQ(unit({text("a"), row_of({text("b"), text("c")})}), Dim::string_dim);
    EXPECT_EQ(unit({row_of({matrix({{1}}), matrix({{2}})})}), Dim::string_dim);
    EXPECT_EQ(unit({Qud::MatVal::empty()}), none);
}

TEST(UniformArgumentDimension, WhatDoesNotAgreeIsRefusedInOrder)
{
    const auto raised = [](const Values& values) {
        return host_raised_by([&] { (void)Efi::UniformArgumentDimension(values); });
    };
    const Handle mixed = row_of({number(1, 0, m), number(1, 0, s)});
    const char* const uniform = "vector must have uniform dimension or all strings";
    const Raised cannot_mix{"cannot mix scalar and string for this function", -1};
    EXPECT_EQ(raised({mixed}), (Raised{uniform, 1}));
    EXPECT_EQ(raised({number(1), mixed}), (Raised{uniform, 2}));
    EXPECT_EQ(raised({text("a"), mixed}), (Raised{uniform, 2}));
    EXPECT_EQ(raised({row_of({text("a"), number(1)})}), (Raised{uniform, 1}));
    EXPECT_EQ(raised({text("a"), number(1)}), cannot_mix);
    EXPECT_EQ(raised({number(1), text("a"), mixed}), cannot_mix);
    EXPECT_EQ(raised({matrix({{1}}, m), row_of({text("a")})}), cannot_mix);
    EXPECT_EQ(raised({number(1, 0, m), number(1, 0, s), mixed}), (Raised{"unit mismatch", 2}));
    EXPECT_EQ(raised({number(1, 0, m), number(2, 0, m), number(3)}), (Raised{"unit mismatch", 3}));
}

TEST(AllNumbers, NumbersAndMatricesOfNumbers)
{
    const auto all = [](const Values& values) { return Efi::allNumbers(values); };
    EXPECT_TRUE(all({number(1), matrix({{1, 2}}, m), Qud::MatVal::empty()}));
    EXPECT_TRUE(all({row_of({number(1, 0, m), number(1, 0, s)})}));
    EXPECT_FALSE(all({text("a")}));
    EXPECT_FALSE(all({number(1), text("a")}));
    EXPECT_FALSE(all({row_of({number(1), text("a")})}));
    EXPECT_FALSE(all({row_of({matrix({{1}})})}));
    EXPECT_FALSE(all({function}));
    EXPECT_FALSE(all({nullptr}));
}

TEST(AllStrings, TextsAndMatricesWithAnEntryForEverySlot)
{
    const auto all = [](const Values& values) { return Efi::allStrings(values); };
    const Handle words = row_of({text("b"), text("c")});
    EXPECT_TRUE(all({text("a"), words}));
    EXPECT_TRUE(all({row_of({matrix({{1}}), text("b")})}));
    EXPECT_FALSE(all({text("a"), number(1)}));
    EXPECT_FALSE(all({matrix({{1}})}));
    EXPECT_FALSE(all({row_of({text("a"), number(1)})}));
    EXPECT_FALSE(all({Qud::MatVal::empty()}));
    EXPECT_FALSE(all({function}));
    EXPECT_FALSE(all({nullptr}));
    // A block counts its own slots, not those of the matrix that it is a view of.
    EXPECT_TRUE(all({Qud::matrix_of(row_of({number(1), text("a"), text("b")}))->SubMatrix(0, 0, 1, 2)}));
}

TEST(VecMin, BeginsAtTheOffsetAndStepsByTheStride)
{
    // Two columns of two rows, three words apart, from the second word on.
    const double a[] = {-9, 5, 4, -9, 3, 8, -9, -9};
    EXPECT_EQ(Efi::vecmin(a, 1, 2, 2, 3), 3);
    EXPECT_EQ(Efi::vecmin(a, 1, 1, 2, 3), 4);
    EXPECT_EQ(Efi::vecmin(a, 4, 1, 1, 3), 3);
    const double b[] = {9, 5, 4, 9, 3, 8, 9, 9};
    EXPECT_EQ(Efi::vecmax(b, 1, 2, 2, 3), 8);
    EXPECT_EQ(Efi::vecmax(b, 1, 1, 2, 3), 5);
}

/// The search step by step.
template <class Wins>
double plain_extreme(const std::vector<double>& a, Wins wins)
{
    double best = std::isnan(a[0]) ? 0.0 : a[0];
    for (const double x : a)
        if (wins(x, best))
            best = x;
    return best;
}

std::uint64_t bits_of(double x)
{
    return std::bit_cast<std::uint64_t>(x);
}

TEST(VecMin, AllKindsOfNumbersAsStepByStep)
{
    std::mt19937_64 random(5);
    const double special[] = {0.0, -0.0, nan, -nan, inf, -inf, 1.0, -1.0, 5e-324};
    for (int round = 0; round < 4000; ++round) {
        const std::size_t n = 1 + random() % 200;
        const std::size_t range = 1 + random() % std::size(special); // zeros only, zeros and NaN, ... all
        const double shift = round % 3 == 0 ? 0.0 : round % 3 == 1 ? 2.0 : -2.0;
        std::vector<double> a(n);
        for (double& x : a)
            x = random() % 2 == 0 ? special[random() % range]
                                  : shift + std::uniform_real_distribution<double>(-1.0, 1.0)(random);
        const double least = plain_extreme(a, [](double x, double best) { return x < best; });
        const double most = plain_extreme(a, [](double x, double best) { return x > best; });
        ASSERT_EQ(bits_of(Efi::vecmin(a.data(), 0, 1, n, n)), bits_of(least)) << round;
        ASSERT_EQ(bits_of(Efi::vecmax(a.data(), 0, 1, n, n)), bits_of(most)) << round;
        ASSERT_EQ(bits_of(Efi::vecmin(a.data(), 0, n, 1, 1)), bits_of(least)) << round;
        ASSERT_EQ(bits_of(Efi::vecmax(a.data(), 0, n, 1, 1)), bits_of(most)) << round;
    }
}

TEST(VecMin, TheFirstZeroStaysWhereverTheColumnsEnd)
{
    // One zero of each sign, everywhere in three columns of 40 rows that stand 41 words apart.
    const std::size_t rows = 40;
    const std::size_t stride = 41;
    const std::size_t cols = 3;
    for (std::size_t first = 0; first < rows * cols; first += 7)
        for (std::size_t second = first + 1; second < rows * cols; second += 5)
            for (const double zero : {0.0, -0.0}) {
                std::vector<double> a(stride * cols, 1.0);
                a[first / rows * stride + first % rows] = zero;
                a[second / rows * stride + second % rows] = -zero;
                ASSERT_EQ(bits_of(Efi::vecmin(a.data(), 0, cols, rows, stride)), bits_of(zero))
                    << first << ' ' << second;
                for (double& x : a)
                    x = x == 1.0 ? -1.0 : x;
                ASSERT_EQ(bits_of(Efi::vecmax(a.data(), 0, cols, rows, stride)), bits_of(zero))
                    << first << ' ' << second;
            }
}

TEST(VecMin, ANaNInTheFirstPlaceIsZero)
{
    const double a[] = {nan, 5, 7, -3};
    EXPECT_EQ(bits_of(Efi::vecmin(a, 0, 1, 3, 3)), bits_of(0.0));
    EXPECT_EQ(Efi::vecmin(a, 0, 1, 4, 4), -3);
    EXPECT_EQ(Efi::vecmax(a, 0, 1, 3, 3), 7);
    EXPECT_EQ(Efi::vecmax(a, 3, 1, 1, 1), -3);
}

double re(const Handle& value)
{
    return Qud::as_number(value)->re();
}

double im(const Handle& value)
{
    return Qud::as_number(value)->im();
}

TEST(Min, ANaNAsImaginaryPart)
{
    const Values alone = {number(1, nan)};
    EXPECT_EQ(re(Efi::Matrix::min(alone)), 1);
    EXPECT_EQ(bits_of(im(Efi::Matrix::min(alone))), bits_of(0.0));
    const Values with_another = {number(1, nan), number(2, -3)};
    EXPECT_EQ(im(Efi::Matrix::min(with_another)), -3);
    EXPECT_EQ(im(Efi::Matrix::max(with_another)), 0);
    const Values first_in_array = {matrix({{1, 2}}, none, {{nan, 4}})};
    EXPECT_EQ(im(Efi::Matrix::min(first_in_array)), 0);
    EXPECT_EQ(im(Efi::Matrix::max(first_in_array)), 4);
    const Values later_in_array = {matrix({{1, 2}}, none, {{4, nan}})};
    EXPECT_EQ(im(Efi::Matrix::min(later_in_array)), 4);
}

TEST(Min, BlocksOfLargerMatrices)
{
    const Handle M = matrix({{-9, -9, -9, -9}, {-9, 4, 3, -9}, {-9, 5, 6, -9}, {-9, -9, -9, -9}}, m,
                            {{-9, -9, -9, -9}, {-9, 1, 2, -9}, {-9, 3, 4, -9}, {-9, -9, -9, -9}});
    const Values block = {Qud::matrix_of(M)->SubMatrix(1, 2, 1, 2)};
    EXPECT_EQ(re(Efi::Matrix::min(block)), 3);
    EXPECT_EQ(im(Efi::Matrix::min(block)), 1);
    EXPECT_EQ(re(Efi::Matrix::max(block)), 6);
    EXPECT_EQ(im(Efi::Matrix::max(block)), 4);
    EXPECT_EQ(Qud::as_number(Efi::Matrix::min(block))->m_dim, m);
}

TEST(Min, WhatIsNoNumberAndNoText)
{
    const Raised cannot_mix{"cannot mix scalar and string for this function", -1};
    const auto raised = [](const Values& values) { return host_raised_by([&] { Efi::Matrix::min(values); }); };
    EXPECT_EQ(raised({nullptr}), cannot_mix);
    EXPECT_EQ(raised({number(1), function}), cannot_mix);
    EXPECT_EQ(raised({Qud::MatVal::make(3, 0, Qud::fresh_numbers(0))}), (Raised{"invalid dimension", 1}));
}

} // namespace
