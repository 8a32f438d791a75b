#include "bailuxsko/kernels/cholesky.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;
using support::raised_by;
using support::real;

TEST(Cholesky, ByHand)
{
    struct Case {
        const char* name;
        Matrix A, L;
    };
    const Case cases[] = {
        {.name = "one element", .A = {{4}}, .L = {{2}}},
        {.name = "the upper triangle alone is read", .A = {{4, 2}, {NAN, 3}}, .L = {{2, 0}, {1, std::sqrt(2.0)}}},
        {.name = "whole numbers",
         .A = {{4, 12, -16}, {0, 37, -43}, {0, 0, 98}},
         .L = {{2, 0, 0}, {6, 1, 0}, {-8, 5, 3}}},
        {.name = "imaginary parts take no part",
         .A = Matrix::complex({{4, 2}, {2, 2}}, {{1, 1}, {1, 1}}),
         .L = {{2, 0}, {1, 1}}},
        {.name = "empty", .A = {}, .L = {}},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        const aMatrix* const L = native::cholesky(&ctx, &record);
        EXPECT_EQ(L->m_rows, A.rows()) << c.name;
        EXPECT_EQ(L->m_cols, A.cols()) << c.name;
        EXPECT_EQ(L->m_iv, nullptr) << c.name;
        EXPECT_EQ(real(L), real(c.L)) << c.name;
        native::choldc(&ctx, &record);
        EXPECT_EQ(real(&record), real(c.L)) << c.name << ", in place";
    }
}

TEST(Cholesky, Refusals)
{
    struct Case {
        const char* name;
        Matrix A;
        Raised raised;
    };
    const Raised not_positive{.message = "non-positive definite matrix", .index = -1};
    const Raised not_square{.message = "must be square", .index = 1};
    const Case cases[] = {
        {.name = "zero", .A = {{0}}, .raised = not_positive},
        {.name = "negative zero", .A = {{-0.0}}, .raised = not_positive},
        {.name = "negative", .A = {{-1}}, .raised = not_positive},
        {.name = "singular", .A = {{1, 1}, {1, 1}}, .raised = not_positive},
        {.name = "wide", .A = {{1, 2}}, .raised = not_square},
        {.name = "tall", .A = {{1}, {2}}, .raised = not_square},
        {.name = "rows without columns", .A = Matrix(3, 0), .raised = not_square},
    };
    for (const Case& c : cases) {
        Matrix A = c.A;
        aMatrix record = A.record();
        EfiCallContext ctx;
        EXPECT_EQ(raised_by([&] { native::cholesky(&ctx, &record); }), c.raised) << c.name;
        if (c.raised == not_positive) {
            EXPECT_EQ(raised_by([&] { native::choldc(&ctx, &record); }), c.raised) << c.name;
        }
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name;
    }
}

TEST(Cholesky, AnAbsentRealArrayIsNamed)
{
    aMatrix A = {.m_anr = 2, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 2, .m_rv = nullptr, .m_iv = nullptr};
    EfiCallContext ctx;
    EXPECT_EQ(raised_by([&] { native::cholesky(&ctx, &A); }), (Raised{.message = "unknown error", .index = -1}));
    EXPECT_EQ(raised_by([&] { native::choldc(&ctx, &A); }), (Raised{.message = "unknown error", .index = -1}));
}

TEST(Cholesky, SizesThatNoMemoryHoldsAreOutOfMemory)
{
    double element = 1.0; // nobody reads it
    for (const std::uint32_t n : {1U << 27, 1U << 31, ~0U}) {
        aMatrix A = {.m_anr = n, .m_tag = aMatrix::tag, .m_rows = n, .m_cols = n, .m_rv = &element, .m_iv = nullptr};
        EfiCallContext ctx;
        EXPECT_EQ(raised_by([&] { native::cholesky(&ctx, &A); }), (Raised{.message = "out of memory", .index = -1}))
            << n;
    }
}

TEST(Cholesky, RunsOutOfMemoryCleanly)
{
    for (const std::uint32_t n : {2U, 100U}) {
        Matrix A(n, n);
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < n; ++i)
                A.re(i, j) = i == j ? n : 1.0;
        const std::vector<std::uint64_t> before = A.bits();
        aMatrix record = A.record();
        const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
            EfiCallContext ctx;
            native::cholesky(&ctx, &record);
        });
        EXPECT_EQ(requests, 3U);
        EXPECT_EQ(A.bits(), before);
    }
}

} // namespace
