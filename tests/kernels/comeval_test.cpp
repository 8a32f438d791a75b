#include "bailuxsko/comeval.hpp"

#include "bailuxsko/kernels/comeval.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <complex>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::imaginary;
using support::Matrix;
using support::Raised;
using support::raised_by;
using support::real;

using Complex = std::complex<double>;

std::vector<Complex> numbers(const aVector* w)
{
    std::vector<Complex> all;
    for (std::size_t i = 0; i < w->m_rows; ++i)
        all.emplace_back(w->m_rv[i], w->m_iv[i]);
    return all;
}

std::vector<Complex> eigenvalues(Matrix A)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    aVector* result = nullptr;
    native::comeval(&ctx, &record, &result);
    return numbers(result);
}

TEST(Comeval, GivesEigenvaluesInTheOrderOfTheDiagonalAtTheEnd)
{
    const double third = std::sqrt(0.75);
    struct Case {
        const char* name;
        Matrix A;
        std::vector<Complex> w;
    };
    const Case cases[] = {
        {.name = "one element", .A = Matrix::complex({{2}}, {{-3}}), .w = {{2, -3}}},
        {.name = "symmetric", .A = {{2, 1}, {1, 2}}, .w = {3, 1}},
        {.name = "a rotation", .A = {{0, -1}, {1, 0}}, .w = {{0, 1}, {0, -1}}},
        {.name = "an upper triangle", .A = {{1, 2, 3}, {0, 4, 5}, {0, 0, 6}}, .w = {1, 4, 6}},
        {.name = "a lower triangle", .A = {{1, 0, 0}, {2, 3, 0}, {4, 5, 6}}, .w = {6, 3, 1}},
        {.name = "a row alone", .A = {{9, 0, 0}, {7, 2, 1}, {5, 1, 2}}, .w = {3, 1, 9}},
        {.name = "a column alone", .A = {{2, 0, 1}, {5, 9, 7}, {1, 0, 2}}, .w = {9, 3, 1}},
        {.name = "an exceptional shift",
         .A = {{0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
         .w = {{-0.5, third}, {-0.5, -third}, 1}},
    };
    for (const Case& c : cases) {
        const std::vector<Complex> w = eigenvalues(c.A);
        ASSERT_EQ(w.size(), c.w.size()) << c.name;
        for (std::size_t i = 0; i < w.size(); ++i)
            EXPECT_LT(std::abs(w[i] - c.w[i]), 1e-14) << c.name << ", " << i;
    }
}

TEST(Comeval, TheResultIsOneColumnWithBothArrays)
{
    Matrix A{{2, 1}, {1, 2}};
    EfiCallContext ctx;
    aMatrix record = A.record();
    aVector* w = nullptr;
    comeval(&ctx, &record, &w, 0.0);
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(w->m_tag, aMatrix::tag);
    EXPECT_EQ(w->m_anr, 2U);
    EXPECT_EQ(w->m_rows, 2U);
    EXPECT_EQ(w->m_cols, 1U);
    EXPECT_EQ(imaginary(w), (std::vector<double>{0, 0}));
}

TEST(Comeval, RefusesInThisOrder)
{
    struct Case {
        const char* name;
        Matrix A;
        Raised raised;
    };
    const Raised dimension{.message = "invalid dimension", .index = -1};
    const Raised square{.message = "must be square", .index = -1};
    const Raised iterations{.message = "too many iterations", .index = -1};
    const Case cases[] = {
        {.name = "empty", .A = {}, .raised = dimension},
        {.name = "columns without rows", .A = Matrix(0, 3), .raised = dimension},
        {.name = "rows without columns", .A = Matrix(3, 0), .raised = dimension},
        {.name = "wide", .A = {{1, 2, 3}, {4, 5, 6}}, .raised = square},
        {.name = "tall", .A = {{1, 2}, {3, 4}, {5, 6}}, .raised = square},
        // All eigenvalues of both are zero. Which one needs how many steps was counted by an independent program.
        {.name = "31 steps", .A = {{0, 4, 0}, {2, 0, -8}, {0, 1, 0}}, .raised = {}},
        {.name = "32 steps", .A = {{0, -1, 0}, {1, 0, 1}, {0, 1, 0}}, .raised = iterations},
        {.name = "32 steps when others have converged",
         .A = {{0, -1, 0, 1}, {1, 0, 1, 2}, {0, 1, 0, 3}, {0, 0, 0, 5}},
         .raised = iterations},
    };
    for (const Case& c : cases) {
        Matrix A = c.A;
        EfiCallContext ctx;
        aMatrix record = A.record();
        aVector before{};
        aVector* result = &before;
        EXPECT_EQ(raised_by([&] { comeval(&ctx, &record, &result, 0.0); }), c.raised) << c.name;
        EXPECT_EQ(result == nullptr, !c.raised.message.empty()) << c.name;
        EXPECT_NE(result, &before) << c.name;
    }
}

TEST(Comeval, AnAbsentRealArrayIsNamed)
{
    aMatrix A = {.m_anr = 1, .m_tag = aMatrix::tag, .m_rows = 1, .m_cols = 1, .m_rv = nullptr, .m_iv = nullptr};
    EfiCallContext ctx;
    aVector* result = &A;
    EXPECT_EQ(raised_by([&] { comeval(&ctx, &A, &result, 0.0); }), (Raised{.message = "unknown error", .index = -1}));
    EXPECT_EQ(result, nullptr);
}

TEST(Comeval, TheFourthArgumentIsNotRead)
{
    const Matrix A{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}};
    std::vector<Complex> expected = eigenvalues(A);
    constexpr double inf = std::numeric_limits<double>::infinity();
    for (const double unused : {0.0, -1.0, 1e-300, inf, std::numeric_limits<double>::signaling_NaN()}) {
        Matrix copy = A;
        EfiCallContext ctx;
        aMatrix record = copy.record();
        aVector* w = nullptr;
        std::feclearexcept(FE_ALL_EXCEPT);
        comeval(&ctx, &record, &w, unused);
        EXPECT_EQ(std::fetestexcept(FE_INVALID), 0);
        EXPECT_EQ(numbers(w), expected);
    }
}

TEST(Comeval, ARealRecordGetsAnImaginaryArrayWithTheFirstStep)
{
    struct Case {
        const char* name;
        Matrix A;
        bool becomes_complex;
    };
    const Case cases[] = {
        {.name = "one element", .A = {{7}}, .becomes_complex = false},
        {.name = "a triangle", .A = {{1, 2}, {0, 3}}, .becomes_complex = false},
        {.name = "negligible below the diagonal", .A = {{1, 1e-20}, {1e-20, 2}}, .becomes_complex = false},
        {.name = "reduced, but no step: a reflection leaves exact zeros",
         .A = {{1, 0, 0, 1e-30}, {0, 2, 0, 0}, {1e-30, 0, 3, 1e-30}, {0, 0, 1e-30, 4}},
         .becomes_complex = false},
        {.name = "real eigenvalues", .A = {{2, 1}, {1, 2}}, .becomes_complex = true},
        {.name = "a rotation", .A = {{0, -1}, {1, 0}}, .becomes_complex = true},
    };
    for (const Case& c : cases) {
        Matrix A = c.A;
        EfiCallContext ctx;
        aMatrix record = A.record();
        aVector* w = nullptr;
        native::comeval(&ctx, &record, &w);
        EXPECT_EQ(record.m_iv != nullptr, c.becomes_complex) << c.name;
    }
}

TEST(Comeval, TheRecordHoldsTheTriangleAtTheEnd)
{
    // The sum of the eigenvalues is that of the diagonal plus what was subtracted from it; the matrix is overwritten.
    Matrix A{{0, -1}, {1, 0}};
    const Matrix before = A;
    EfiCallContext ctx;
    aMatrix record = A.record();
    aVector* w = nullptr;
    native::comeval(&ctx, &record, &w);
    EXPECT_NE(A.bits(), before.bits());
    EXPECT_LT(std::fabs(record.m_rv[1]), 1e-15) << "below the diagonal";
}

TEST(Comeval, WalksThroughTheLeadingDimension)
{
    const Matrix packed{{1, 2, 3}, {4, 5, 6}, {7, 8, 10}};
    Matrix A(3, 3, 7);
    Matrix source = packed;
    for (std::size_t j = 0; j < 3; ++j)
        for (std::size_t i = 0; i < 3; ++i)
            A.re(i, j) = source.re(i, j);
    EfiCallContext ctx;
    aMatrix record = A.record();
    aVector* w = nullptr;
    native::comeval(&ctx, &record, &w);
    EXPECT_EQ(numbers(w), eigenvalues(packed));
    for (std::size_t j = 0; j < 3; ++j)
        for (std::size_t i = 3; i < 7; ++i) {
            EXPECT_EQ(record.m_rv[i + 7 * j], Matrix::trap) << "between the columns";
            EXPECT_EQ(record.m_iv[i + 7 * j], 0.0) << "the new array has the same layout";
        }
}

TEST(Comeval, AsksForSoManyArrays)
{
    struct Case {
        const char* name;
        Matrix A;
        std::size_t requests;
    };
    // Eigenvalues in two parts and the record of balancing, a reflection's vector in two parts, the result's record;
    // one more where a real record becomes complex. None of them depends on the number of steps.
    const Case cases[] = {
        {.name = "a real triangle", .A = {{1, 2}, {0, 3}}, .requests = 6},
        {.name = "real", .A = {{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}, .requests = 7},
        {.name = "many steps", .A = {{0, 4, 0}, {2, 0, -8}, {0, 1, 0}}, .requests = 7},
        {.name = "complex", .A = Matrix::complex({{1, 2}, {3, 4}}, {{5, 6}, {7, 8}}), .requests = 6},
    };
    for (const Case& c : cases) {
        aVector before{};
        aVector* result = &before;
        const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
            EXPECT_TRUE(result == &before || result == nullptr) << c.name << ": null after a failure";
            Matrix A = c.A;
            aMatrix record = A.record();
            EfiCallContext ctx;
            native::comeval(&ctx, &record, &result);
        });
        EXPECT_EQ(requests, c.requests) << c.name;
        EXPECT_NE(result, nullptr) << c.name;
    }
}

TEST(Comeval, SizesThatNoMemoryHoldsAreOutOfMemory)
{
    double element = 1.0; // nobody reads it
    aMatrix A = {.m_anr = ~0U, .m_tag = aMatrix::tag, .m_rows = ~0U, .m_cols = ~0U, .m_rv = &element, .m_iv = nullptr};
    EfiCallContext ctx;
    aVector* result = &A;
    EXPECT_EQ(raised_by([&] { native::comeval(&ctx, &A, &result); }),
              (Raised{.message = "out of memory", .index = -1}));
    EXPECT_EQ(result, nullptr);
}

// Whole multiples of the smallest number lose what a scaling halves: it must not seem a gain again and again.
TEST(Comeval, WhatIsTooSmallToBeHalvedEnds)
{
    constexpr double smallest = std::numeric_limits<double>::denorm_min();
    for (const Matrix& A : {Matrix{{3 * smallest, -2 * smallest}, {smallest, 0}},
                            Matrix{{-3 * smallest, -smallest}, {-2 * smallest, 7 * smallest}}})
        EXPECT_EQ(raised_by([&] { eigenvalues(A); }).message, "too many iterations");
    std::mt19937_64 random(7);
    for (int repeat = 0; repeat < 2000; ++repeat) {
        const auto n = static_cast<std::uint32_t>(2 + random() % 5);
        Matrix A(n, n);
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < n; ++i)
                A.re(i, j) = smallest * (static_cast<double>(random() % 60) - 20.0);
        const Raised raised = raised_by([&] { eigenvalues(A); });
        EXPECT_TRUE(raised.message.empty() || raised.message == "too many iterations") << raised.message;
    }
}

TEST(Comeval, WhatIsNotFiniteEnds)
{
    std::mt19937_64 random(5);
    const double odd[] = {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
                          std::numeric_limits<double>::quiet_NaN(), 1e308, 5e-324};
    for (int repeat = 0; repeat < 2000; ++repeat) {
        const auto n = static_cast<std::uint32_t>(1 + random() % 6);
        Matrix A(n, n);
        if (random() % 2 == 0)
            A.make_complex();
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < n; ++i) {
                A.re(i, j) = random() % 4 == 0 ? odd[random() % 5] : static_cast<double>(random() % 5) - 2.0;
                if (A.is_complex())
                    A.im(i, j) = random() % 4 == 0 ? odd[random() % 5] : static_cast<double>(random() % 3) - 1.0;
            }
        const Raised raised = raised_by([&] { eigenvalues(A); });
        EXPECT_TRUE(raised.message.empty() || raised.message == "too many iterations") << raised.message;
    }
}

} // namespace
