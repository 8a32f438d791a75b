// Products, powers and identity matrices on records: values and bits, tagged results, refusals, memory.
#include "bailuxsko/kernels/identity.hpp"
#include "bailuxsko/kernels/matrix_power.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "bailuxsko/kernels/small_product.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/outcome.hpp"
#include "tests/support/raises.hpp"

#include <algorithm>
#include <bit>
#include <cfenv>
#include <climits>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;
using Random = std::mt19937_64;

double element(Random& random)
{
    const std::uint64_t kind = random() % 8;
    if (kind == 0)
        return random() % 2 == 0 ? 0.0 : -0.0;
    return std::uniform_real_distribution<double>(-1.0, 1.0)(random);
}

Matrix draw(std::uint32_t rows, std::uint32_t cols, std::uint32_t gap, bool with_imaginary, Random& random)
{
    Matrix A(rows, cols, rows + gap);
    if (with_imaginary)
        A.make_complex();
    for (std::uint32_t j = 0; j < cols; ++j)
        for (std::uint32_t i = 0; i < rows; ++i) {
            A.re(i, j) = element(random);
            if (with_imaginary)
                A.im(i, j) = element(random);
        }
    return A;
}

/// The same real parts, and imaginary ones of a kind.
Matrix draw_parts(const support::Kind& kind, Matrix A, Random& random)
{
    A.make_complex();
    for (std::uint32_t j = 0; j < A.cols(); ++j)
        for (std::uint32_t i = 0; i < A.rows(); ++i)
            A.im(i, j) = kind.element(random);
    return A;
}

/// The product as the definition says it, every sum from +0.0 in ascending k.
Matrix plain_product(Matrix& A, Matrix& B)
{
    Matrix C(A.rows(), B.cols());
    if (A.is_complex() || B.is_complex())
        C.make_complex();
    for (std::uint32_t i = 0; i < A.rows(); ++i)
        for (std::uint32_t j = 0; j < B.cols(); ++j) {
            double re = 0.0;
            double im = 0.0;
            for (std::uint32_t k = 0; k < A.cols(); ++k) {
                if (A.is_complex() && B.is_complex()) {
                    re += A.re(i, k) * B.re(k, j) - A.im(i, k) * B.im(k, j);
                    im += A.re(i, k) * B.im(k, j) + A.im(i, k) * B.re(k, j);
                } else {
                    re += A.re(i, k) * B.re(k, j);
                    if (A.is_complex())
                        im += A.im(i, k) * B.re(k, j);
                    if (B.is_complex())
                        im += A.re(i, k) * B.im(k, j);
                }
            }
            C.re(i, j) = re;
            if (C.is_complex())
                C.im(i, j) = im;
        }
    return C;
}

std::vector<std::uint64_t> bits(const std::vector<double>& values)
{
    std::vector<std::uint64_t> all;
    for (const double x : values)
        all.push_back(std::bit_cast<std::uint64_t>(x));
    return all;
}

class ProductBits : public support::AtLevel {};

TEST_P(ProductBits, AreThoseOfThePlainSums)
{
    Random random(20240612);
    struct Size {
        std::uint32_t m, k, n;
    };
    const Size sizes[] = {{1, 1, 1},     {2, 3, 4},      {10, 10, 10},   {16, 5, 9},   {17, 1, 1},   {17, 8, 5},
                          {24, 24, 4},   {25, 3, 7},     {31, 40, 3},    {64, 1, 64},  {33, 70, 34}, {1, 50, 6},
                          {100, 20, 2},  {5, 9, 200},    {20, 255, 3},   {19, 256, 5}, {33, 257, 6}, {17, 520, 9},
                          {128, 3, 7},   {129, 4, 8},    {140, 300, 13}, {20, 159, 3}, {19, 160, 4}, {33, 161, 66},
                          {192, 3, 64},  {193, 330, 65}, {200, 9, 68},   {216, 5, 71}, {23, 7, 63},  {39, 319, 66},
                          {191, 320, 5}, {47, 321, 64},  {32, 2, 65},    {41, 6, 4},   {40, 5, 63}};
    for (const Size& size : sizes)
        for (const bool complex_A : {false, true})
            for (const bool complex_B : {false, true}) {
                Matrix A = draw(size.m, size.k, 3, complex_A, random);
                Matrix B = draw(size.k, size.n, 1, complex_B, random);
                const std::vector<std::uint64_t> before_A = A.bits();
                const std::vector<std::uint64_t> before_B = B.bits();
                const aMatrix a = A.record();
                const aMatrix b = B.record();
                EfiCallContext ctx;
                const aMatrix* const C = native::product(&ctx, &a, &b);
                const Matrix expected = plain_product(A, B);
                EXPECT_EQ(bits(support::real(C)), bits(support::real(expected))) << size.m << ' ' << size.k;
                EXPECT_EQ(bits(support::imaginary(C)), bits(support::imaginary(expected))) << size.m << ' ' << size.k;
                EXPECT_EQ(A.bits(), before_A);
                EXPECT_EQ(B.bits(), before_B);
            }
}

/// With the flags, and on numbers of all kinds.
TEST_P(ProductBits, FlagsAreThoseOfThePlainSums)
{
    const auto outcome = [](auto compute) {
        std::feclearexcept(FE_ALL_EXCEPT);
        const aMatrix* const C = compute();
        const int flags = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
        const std::size_t count = std::size_t{C->m_rows} * C->m_cols;
        std::vector<std::uint64_t> all = support::bits_of(C->m_rv, count);
        if (C->m_iv != nullptr)
            support::append_bits(all, C->m_iv, count);
        all.push_back(static_cast<std::uint64_t>(flags));
        return all;
    };
    Random random(20241122);
    struct Size {
        std::uint32_t m, k, n;
    };
    for (const support::Kind& kind : support::kinds)
        for (const Size& size : {Size{17, 3, 5}, Size{23, 4, 66}, Size{39, 161, 3}, Size{49, 2, 7}, Size{193, 1, 65}})
            for (const bool complex : {false, true}) {
                Matrix A = support::drawn(kind.element, size.m, size.k, size.m + 1, random);
                Matrix B = support::drawn(kind.element, size.k, size.n, size.k, random);
                if (complex) {
                    A = draw_parts(kind, A, random);
                    B = draw_parts(kind, B, random);
                }
                const aMatrix a = A.record();
                const aMatrix b = B.record();
                EfiCallContext ctx;
                Matrix plain;
                aMatrix expected;
                const auto by_definition = [&] {
                    plain = plain_product(A, B);
                    expected = plain.record();
                    return &expected;
                };
                EXPECT_TRUE(outcome([&] { return native::product(&ctx, &a, &b); }) == outcome(by_definition))
                    << kind.name << ", " << size.m << ' ' << size.k << ' ' << size.n << ", complex " << complex;
            }
}

TEST_P(ProductBits, OfFewRowsAreThoseOfThePlainSums)
{
    Random random(20241121);
    for (std::uint32_t m = 1; m <= 17; ++m)
        for (const std::uint32_t k : {1U, 2U, 3U, 4U, 5U, 15U, 16U, 17U, 40U})
            for (const std::uint32_t n : {1U, 2U, 3U, 4U, 5U, 6U, 7U, 8U, 11U}) {
                Matrix A = draw(m, k, m % 3, false, random);
                Matrix B = draw(k, n, n % 2, false, random);
                const aMatrix a = A.record();
                const aMatrix b = B.record();
                EfiCallContext ctx;
                const aMatrix* const C = native::product(&ctx, &a, &b);
                EXPECT_EQ(bits(support::real(C)), bits(support::real(plain_product(A, B))))
                    << m << ' ' << k << ' ' << n;
            }
}

TEST_P(ProductBits, OfFewRowsRaiseNoFlagsOfTheirOwn)
{
    for (std::uint32_t m = 1; m <= 17; ++m)
        for (const std::uint32_t k : {1U, 2U, 3U, 4U, 5U, 17U}) {
            Matrix A(m, k, m + 4); // zeros between the columns, which times infinity would be no number
            Matrix B(k, 7, k + 1);
            for (std::uint32_t l = 0; l < k; ++l) {
                for (std::uint32_t i = 0; i < m; ++i)
                    A.re(i, l) = 1.0;
                for (std::uint32_t j = 0; j < 7; ++j)
                    B.re(l, j) = HUGE_VAL;
            }
            const aMatrix a = A.record();
            const aMatrix b = B.record();
            EfiCallContext ctx;
            std::feclearexcept(FE_ALL_EXCEPT);
            const aMatrix* const C = native::product(&ctx, &a, &b);
            EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_OVERFLOW | FE_DIVBYZERO), 0) << m << ' ' << k;
            EXPECT_EQ(support::real(C), std::vector<double>(std::size_t{m} * 7, HUGE_VAL)) << m << ' ' << k;
        }
}

TEST_P(ProductBits, SumsWithoutTermsAreZero)
{
    constexpr std::uint32_t n = 200;
    for (const std::uint32_t m : {0U, 1U, 4U, 16U, 17U, 30U})
        for (const bool complex : {false, true}) {
            const std::size_t count = std::size_t{m} * n;
            {
                EfiCallContext before; // leaves memory that is not clear
                std::fill_n(Efi::uncleared_doubles(&before, count + 3), count + 3, 1.0);
                std::fill_n(Efi::uncleared_doubles(&before, count + 3), count + 3, 1.0);
            }
            double none = 0.0;
            Matrix A(m, 0);
            Matrix B(0, n);
            aMatrix a = A.record();
            aMatrix b = B.record();
            a.m_iv = b.m_iv = complex ? &none : nullptr;
            EfiCallContext ctx;
            const aMatrix* const C = native::product(&ctx, &a, &b);
            EXPECT_EQ(bits(support::real(C)), std::vector<std::uint64_t>(count)) << m;
            EXPECT_EQ(bits(support::imaginary(C)), std::vector<std::uint64_t>(complex ? count : 0)) << m;
        }
}

TEST_P(ProductBits, EdgesOfTilesRaiseNoFlagsOfTheirOwn)
{
    Matrix A(19, 6, 21);
    Matrix B(6, 5, 7);
    for (std::uint32_t k = 0; k < 6; ++k) {
        for (std::uint32_t i = 0; i < 19; ++i)
            A.re(i, k) = 1.0;
        for (std::uint32_t j = 0; j < 5; ++j)
            B.re(k, j) = HUGE_VAL;
    }
    const aMatrix a = A.record();
    const aMatrix b = B.record();
    EfiCallContext ctx;
    std::feclearexcept(FE_ALL_EXCEPT);
    const aMatrix* const C = native::product(&ctx, &a, &b);
    EXPECT_EQ(std::fetestexcept(FE_INVALID | FE_OVERFLOW | FE_DIVBYZERO), 0);
    EXPECT_EQ(support::real(C), std::vector<double>(95, HUGE_VAL));
}

TEST_P(ProductBits, PowersAreThoseOfTheSquaresThatTheyNeed)
{
    Random random(5);
    for (const std::uint32_t n : {2U, 20U}) {
        Matrix A = draw(n, n, 2, false, random);
        Matrix squared = plain_product(A, A);
        Matrix fourth = plain_product(squared, squared);
        Matrix third = plain_product(A, squared);
        Matrix seventh = plain_product(third, fourth);
        EfiCallContext ctx;
        aMatrix a = A.record();
        EXPECT_EQ(bits(support::real(native::mx_power(&ctx, &a, 4, true))), bits(support::real(fourth)));
        EXPECT_EQ(bits(support::real(native::mx_power(&ctx, &a, 7, true))), bits(support::real(seventh)));
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, ProductBits, support::every_level(), support::level_name);

Anyval* dispatched(EfiCallContext* ctx, Matrix A, Matrix B)
{
    aMatrix a = A.record();
    aMatrix b = B.record();
    return native::dispatchmult(ctx, &a, &b);
}

TEST(Dispatchmult, GivesATaggedNumberOrMatrix)
{
    EfiCallContext ctx;
    const Anyval* const number = dispatched(&ctx, {{1, 2, 3}}, {{4}, {5}, {6}});
    ASSERT_FALSE(Efi::is_matrix(number));
    EXPECT_EQ(number->m_number.m_re, 32);
    EXPECT_EQ(number->m_number.m_im, 0);

    const Anyval* const matrix = dispatched(&ctx, {{1}, {2}}, {{3, 4}});
    ASSERT_TRUE(Efi::is_matrix(matrix));
    EXPECT_EQ(support::real(&matrix->m_matrix), (std::vector<double>{3, 6, 4, 8}));
    EXPECT_EQ(matrix->m_matrix.m_iv, nullptr);

    const Anyval* const not_a_number = dispatched(&ctx, {{NAN, 1}}, {{1}, {1}});
    EXPECT_FALSE(Efi::is_matrix(not_a_number));
}

TEST(Dispatchmult, InnerProductsConjugateTheSecond)
{
    EfiCallContext ctx;
    struct Case {
        Matrix a, b;
        double re, im;
    };
    const Matrix i_0 = Matrix::complex({{0}, {0}}, {{1}, {0}});
    const Case cases[] = {
        {.a = i_0, .b = i_0, .re = 1, .im = 0},
        {.a = i_0, .b = {{3}, {5}}, .re = 0, .im = 3},
        {.a = {{3}, {5}}, .b = i_0, .re = 0, .im = -3},
        {.a = Matrix::complex({{1}, {2}}, {{1}, {0}}), .b = Matrix::complex({{2}, {0}}, {{-1}, {1}}), .re = 1, .im = 1},
        {.a = {{1}, {2}}, .b = {{3}, {4}}, .re = 11, .im = 0},
    };
    for (const Case& c : cases) {
        const Anyval* const product = dispatched(&ctx, c.a, c.b);
        ASSERT_FALSE(Efi::is_matrix(product));
        EXPECT_EQ(product->m_number.m_re, c.re);
        EXPECT_EQ(product->m_number.m_im, c.im);
    }
    // one row: the product, which conjugates nothing
    const Anyval* const product = dispatched(&ctx, Matrix::complex({{0}}, {{1}}), Matrix::complex({{0}}, {{1}}));
    EXPECT_EQ(product->m_number.m_re, -1);
}

TEST(Dispatchmult, ArraysThatAreNotThereTakeNoPart)
{
    EfiCallContext ctx;
    Matrix A = Matrix::complex({{1}, {2}}, {{3}, {4}});
    Matrix B = {{5}, {6}};
    aMatrix a = A.record();
    aMatrix b = B.record();
    a.m_rv = nullptr;
    const Anyval* const product = native::dispatchmult(&ctx, &a, &b);
    EXPECT_EQ(product->m_number.m_re, 0);
    EXPECT_EQ(product->m_number.m_im, 39);
}

TEST(Dispatchmult, Refusals)
{
    EfiCallContext ctx;
    const auto raised = [&](Matrix A, Matrix B) { return support::raised_by([&] { dispatched(&ctx, A, B); }); };
    EXPECT_EQ(raised({{1, 2}}, {{1, 2}}), (Raised{"array size mismatch", -1}));
    EXPECT_EQ(raised({{1}, {2}}, {{1}, {2}, {3}}), (Raised{"array size mismatch", -1}));
    EXPECT_EQ(raised(Matrix(0, 0), {{1}}), (Raised{"invalid dimension", -1}));
    EXPECT_EQ(raised({{1}}, Matrix(0, 0)), (Raised{"invalid dimension", -1}));
}

TEST(MatrixPower, RecordsAndBounds)
{
    EfiCallContext ctx;
    Matrix shear = {{1, 1}, {0, 1}};
    aMatrix record = shear.record();
    const auto power = [&](int n) { return support::real(native::mx_power(&ctx, &record, n, true)); };
    EXPECT_EQ(power(0), (std::vector<double>{1, 0, 0, 1}));
    EXPECT_EQ(power(1), (std::vector<double>{1, 0, 1, 1}));
    EXPECT_EQ(power(-1), (std::vector<double>{1, 0, -1, 1}));
    EXPECT_EQ(power(10000), (std::vector<double>{1, 0, 10000, 1}));
    EXPECT_EQ(power(-10000), (std::vector<double>{1, 0, -10000, 1}));
    for (const int n : {10001, -10001, INT_MAX, INT_MIN})
        EXPECT_EQ(support::raised_by([&] { power(n); }), (Raised{"domain error", 1})) << n;
    Matrix wide = {{1, 2}};
    aMatrix wide_record = wide.record();
    EXPECT_EQ(support::raised_by([&] { native::mx_power(&ctx, &wide_record, 2, true); }),
              (Raised{"must be square", -1}));
}

TEST(MatrixPower, ASquareThatNoProductNeedsIsNotComputed)
{
    Matrix A = {{1e60, 0}, {0, 1}};
    aMatrix record = A.record();
    EfiCallContext ctx;
    std::feclearexcept(FE_ALL_EXCEPT);
    native::mx_power(&ctx, &record, 5, true); // the eighth power would overflow
    EXPECT_EQ(std::fetestexcept(FE_OVERFLOW), 0);
}

TEST(MatrixPower, ArenaThatFailsAtAnyRequestAndTheArgumentIsNotWritten)
{
    Random random(9);
    for (const bool complex : {false, true})
        for (const int n : {0, 1, 7, -3}) {
            Matrix A = draw(20, 20, 1, complex, random);
            const std::vector<std::uint64_t> before = A.bits();
            aMatrix record = A.record();
            support::fails_at_every_request<Efi::NativeError>([&] {
                EfiCallContext ctx;
                native::mx_power(&ctx, &record, n, false);
            });
            EXPECT_EQ(A.bits(), before);
        }
}

TEST(Identity, OnesOnTheDiagonal)
{
    EfiCallContext ctx;
    EXPECT_EQ(support::real(native::identity(&ctx, 3)), (std::vector<double>{1, 0, 0, 0, 1, 0, 0, 0, 1}));
    const aMatrix* const none = native::identity(&ctx, 0);
    EXPECT_EQ(none->m_rows, 0U);
    EXPECT_EQ(none->m_cols, 0U);
    const aMatrix* const largest = native::identity(&ctx, 4096);
    EXPECT_EQ(Efi::at(largest, 4095, 4095), 1.0);
    EXPECT_EQ(Efi::at(largest, 4095, 4094), 0.0);
    EXPECT_EQ(support::raised_by([&] { native::identity(&ctx, 4097); }), (Raised{"matrix too big", 1}));
    EXPECT_EQ(support::raised_by([&] { native::identity(&ctx, UINT_MAX); }), (Raised{"matrix too big", 1}));
}

} // namespace
