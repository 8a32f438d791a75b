// Trace, sum and cross product on records: absent arrays, leading dimensions, the rule for NaN.
#include "bailuxsko/kernels/crossprod.hpp"
#include "bailuxsko/kernels/sums.hpp"

#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;

using Sum = aComplex* (*)(EfiCallContext*, aMatrix*);

struct Case {
    const char* name;
    Sum sum;
    Matrix A;
    double re, im;
};

Matrix padded(std::uint32_t rows, std::uint32_t cols)
{
    Matrix A(rows, cols, rows + 3);
    for (std::uint32_t j = 0; j < cols; ++j)
        for (std::uint32_t i = 0; i < rows; ++i)
            A.re(i, j) = i + 10.0 * j;
    return A;
}

TEST(Sums, OfRealAndComplexRecordsWhateverTheLeadingDimension)
{
    const Case cases[] = {
        {.name = "trace", .sum = native::tr, .A = padded(3, 3), .re = 33, .im = 0},
        {.name = "complex trace",
         .sum = native::tr,
         .A = Matrix::complex({{1, 0}, {0, 3}}, {{2, 9}, {9, 0}}),
         .re = 4,
         .im = 2},
        {.name = "empty trace", .sum = native::tr, .A = Matrix(0, 0), .re = 0, .im = 0},
        {.name = "column", .sum = native::sigmasum, .A = padded(4, 1), .re = 6, .im = 0},
        {.name = "row", .sum = native::sigmasum, .A = padded(1, 3), .re = 30, .im = 0},
        {.name = "one element", .sum = native::sigmasum, .A = Matrix{{5}}, .re = 5, .im = 0},
        {.name = "complex row", .sum = native::sigmasum, .A = Matrix::complex({{1, 2}}, {{3, 4}}), .re = 3, .im = 7},
    };
    for (Case c : cases) {
        EfiCallContext ctx;
        aMatrix record = c.A.record();
        const aComplex* const sum = c.sum(&ctx, &record);
        EXPECT_EQ(sum->m_re, c.re) << c.name;
        EXPECT_EQ(sum->m_im, c.im) << c.name;
        if (record.m_iv == nullptr)
            continue;
        record.m_rv = nullptr; // only the imaginary parts are left
        EXPECT_EQ(c.sum(&ctx, &record)->m_re, 0) << c.name;
        EXPECT_EQ(c.sum(&ctx, &record)->m_im, c.im) << c.name;
    }
}

TEST(Sums, StartAtPositiveZero)
{
    EfiCallContext ctx;
    Matrix A = {{-0.0}};
    aMatrix record = A.record();
    EXPECT_FALSE(std::signbit(native::tr(&ctx, &record)->m_re));
    EXPECT_FALSE(std::signbit(native::sigmasum(&ctx, &record)->m_re));
}

TEST(Sums, Refusals)
{
    EfiCallContext ctx;
    Matrix A(2, 3);
    aMatrix record = A.record();
    EXPECT_EQ(support::raised_by([&] { native::tr(&ctx, &record); }), (Raised{"must be square", 1}));
    EXPECT_EQ(support::raised_by([&] { native::sigmasum(&ctx, &record); }), (Raised{"must be vector", 1}));
}

std::vector<double> cross(Matrix a, Matrix b, bool* is_complex, bool without_real = false)
{
    EfiCallContext ctx;
    aMatrix u = a.record();
    aMatrix v = b.record();
    if (without_real)
        u.m_rv = nullptr;
    const aMatrix* const c = native::crossprod(&ctx, &u, &v);
    EXPECT_EQ(c->m_rows, 3U);
    EXPECT_EQ(c->m_cols, 1U);
    EXPECT_EQ(c->m_anr, 3U);
    *is_complex = c->m_iv != nullptr;
    std::vector<double> all = support::real(c);
    const std::vector<double> im = support::imaginary(c);
    all.insert(all.end(), im.begin(), im.end());
    return all;
}

TEST(Crossprod, RealWhereImaginaryPartsVanish)
{
    bool is_complex = true;
    EXPECT_EQ(cross({{1}, {2}, {3}}, {{4}, {5}, {6}}, &is_complex), (std::vector<double>{-3, 6, -3}));
    EXPECT_FALSE(is_complex);
    const Matrix i = Matrix::complex({{0}, {0}, {0}}, {{1}, {0}, {0}});
    EXPECT_EQ(cross(i, Matrix::complex({{0}, {0}, {0}}, {{0}, {1}, {0}}), &is_complex),
              (std::vector<double>{0, 0, -1}));
    EXPECT_FALSE(is_complex);
    EXPECT_EQ(cross(i, {{0}, {1}, {0}}, &is_complex), (std::vector<double>{0, 0, 0, 0, 0, 1}));
    EXPECT_TRUE(is_complex);
    EXPECT_EQ(cross(i, {{0}, {1}, {0}}, &is_complex, true), (std::vector<double>{0, 0, 0, 0, 0, 1}));
}

TEST(Crossprod, PositionsWithoutANumberAreRealNaN)
{
    bool is_complex = true;
    const Matrix all = Matrix::complex({{NAN}, {NAN}, {NAN}}, {{NAN}, {NAN}, {NAN}});
    for (const double x : cross(all, {{1}, {2}, {4}}, &is_complex))
        EXPECT_TRUE(std::isnan(x));
    EXPECT_FALSE(is_complex);

    const Matrix some = Matrix::complex({{NAN}, {0}, {0}}, {{NAN}, {0}, {0}});
    const std::vector<double> c = cross(some, {{0}, {1}, {1}}, &is_complex);
    ASSERT_TRUE(is_complex);
    EXPECT_EQ(c[0], 0);
    EXPECT_TRUE(std::isnan(c[1]) && std::isnan(c[2]));
    EXPECT_EQ((std::vector<double>{c[3], c[4], c[5]}), (std::vector<double>{0, 0, 0}));
}

} // namespace
