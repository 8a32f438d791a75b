#include "bailuxsko/lapack/product.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

namespace {

using matrices::Complex;
using matrices::Dense;
using matrices::random_complex;
using matrices::random_real;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

Handle product(const Handle& A, const Handle& B)
{
    EfiCallContext context;
    return lapack::_gemm(&context, *matrix_of(A), *matrix_of(B));
}

Complex number(const Handle& value)
{
    const Qud::NumVal* const number = Qud::as_number(value);
    if (!number) {
        ADD_FAILURE() << "no number";
        return {};
    }
    return {number->re(), number->im()};
}

const Handle column = matrices::real({{1}, {2}, {3}});
const Handle row = matrices::real({{4, 5, 6}});

TEST(Product, OfColumnsAndRows)
{
    EXPECT_EQ(number(product(column, column)), Complex(14)) << "two columns: the inner product";
    EXPECT_EQ(number(product(row, column)), Complex(32));
    const Handle outer = product(column, row);
    EXPECT_EQ((Dense(outer) - Dense(matrices::real({{4, 5, 6}, {8, 10, 12}, {12, 15, 18}}))).norm1(), 0.0);
    EXPECT_FALSE(matrix_of(outer)->HasImag());
    const Handle scaled = product(column, matrices::real({{2}}));
    EXPECT_EQ((Dense(scaled) - Dense(matrices::real({{2}, {4}, {6}}))).norm1(), 0.0);
    EXPECT_EQ(number(product(matrices::real({{3}}), matrices::real({{5}}))), Complex(15));
}

TEST(Product, TheSecondOfTwoComplexColumnsIsConjugated)
{
    const Handle u = matrices::complex({{{0, 1}}, {{2, 3}}});
    const Handle v = matrices::complex({{{0, 1}}, {{1, -1}}});
    // conj(i) i + conj(1 - i) (2 + 3i) = 1 + (1 + i)(2 + 3i) = 1 + (-1 + 5i)
    EXPECT_EQ(number(product(u, v)), Complex(0, 5));
    EXPECT_EQ(number(product(v, u)), Complex(0, -5));
    EXPECT_EQ(number(product(u, matrices::real({{1}, {1}}))), Complex(2, 4));
    EXPECT_EQ(number(product(matrices::real({{1}, {1}}), u)), Complex(2, -4));
}

TEST(Product, OfAComplexRowAndColumnConjugatesNothing)
{
    EXPECT_EQ(number(product(matrices::complex({{{0, 1}, 0}}), matrices::complex({{{0, 1}}, {0}}))), Complex(-1));
}

TEST(Product, Residuals)
{
    const std::uint32_t sizes[] = {1, 2, 11, 40, 97};
    for (const std::uint32_t rows : sizes)
        for (const std::uint32_t inner : sizes)
            for (const std::uint32_t cols : sizes) {
                if (rows * cols == 1 || (inner == 1 && cols == 1))
                    continue;
                const Handle A = random_real(rows, inner, rows);
                const Handle B = random_real(inner, cols, cols);
                const Handle Ac = random_complex(rows, inner, rows);
                const Handle Bc = random_complex(inner, cols, cols);
                EXPECT_LT(matrices::residual_product(A, B, product(A, B)), 30);
                for (const auto& [left, right] : {std::pair(Ac, Bc), std::pair(Ac, B), std::pair(A, Bc)}) {
                    const Handle C = product(left, right);
                    EXPECT_TRUE(matrix_of(C)->HasImag());
                    EXPECT_LT(matrices::residual_product(left, right, C), 30);
                }
                const Handle of_views = product(matrices::as_view(A), matrices::as_view(B));
                EXPECT_LT(matrices::residual_product(A, B, of_views), 30);
                const Handle of_complex_views = product(matrices::as_view(Ac), matrices::as_view(Bc));
                EXPECT_LT(matrices::residual_product(Ac, Bc, of_complex_views), 30);
            }
}

TEST(Product, WhatAnEarlierCallLeftInMemoryDoesNotMatter)
{
    const Handle A = random_real(300, 300, 1);
    const Handle B = random_real(300, 1, 1);
    const Handle C = random_real(300, 300, 2);
    for (int round = 0; round < 3; ++round) {
        {
            const Qud::FreshNumbers poison = Qud::fresh_numbers(300 * 300);
            std::fill_n(poison.get(), 300 * 300, matrices::NaN);
            const Qud::FreshNumbers small = Qud::fresh_numbers(300);
            std::fill_n(small.get(), 300, matrices::NaN);
        }
        EXPECT_LT(matrices::residual_product(A, B, product(A, B)), 30);
        EXPECT_LT(matrices::residual_product(A, C, product(A, C)), 30);
    }
}

TEST(Product, OfShapesThatDoNotMatch)
{
    const Raised mismatch{"array size mismatch", -1, ""};
    const std::pair<Handle, Handle> pairs[] = {
        {random_real(3, 4, 1), random_real(3, 4, 1)},    {random_real(3, 1, 1), random_real(2, 1, 1)},
        {random_real(3, 1, 1), random_real(3, 2, 1)},    {random_real(3, 2, 1), random_real(3, 1, 1)},
        {random_complex(3, 1, 1), random_real(2, 1, 1)}, {random_real(3, 1, 1), random_complex(3, 2, 1)},
    };
    for (const auto& [A, B] : pairs)
        EXPECT_EQ(host_raised_by([&, &a = A, &b = B] { product(a, b); }), mismatch);
}

TEST(Product, RefusesMatricesWithoutElements)
{
    const Raised invalid{"invalid dimension", -1, ""};
    EXPECT_EQ(host_raised_by([] { product(Qud::MatVal::empty(), column); }), invalid);
    EXPECT_EQ(host_raised_by([] { product(row, Qud::MatVal::empty()); }), invalid);
    EXPECT_EQ(host_raised_by([] { product(Qud::MatVal::empty(), Qud::MatVal::empty()); }), invalid);
}

} // namespace
