#include "bailuxsko/kernels/lu.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::imaginary;
using support::Matrix;
using support::Raised;
using support::raised_by;
using support::real;

TEST(Lu, ByHand)
{
    struct Case {
        const char* name;
        Matrix A, PLU;
    };
    const Case cases[] = {
        {.name = "one element", .A = {{5}}, .PLU = {{1, 1, 5}}},
        {.name = "the last of equally scaled rows",
         .A = {{1, 0}, {1, 0.5}},
         .PLU = {{0, 1, 1, 0, 1, 0.5}, {1, 0, 1, 1, 0, -0.5}}},
        {.name = "rows are compared by their scale",
         .A = {{10, 1000}, {1, 1}},
         .PLU = {{0, 1, 1, 0, 1, 1}, {1, 0, 10, 1, 0, 990}}},
        {.name = "three exchanges in a ring",
         .A = {{0, 2, 0}, {0, 0, 4}, {8, 0, 0}},
         .PLU = {{0, 0, 1, 1, 0, 0, 8, 0, 0}, {1, 0, 0, 0, 1, 0, 0, 2, 0}, {0, 1, 0, 0, 0, 1, 0, 0, 4}}},
        {.name = "complex: the first of equally scaled rows",
         .A = Matrix::complex({{1, 0}, {1, 0.5}}, {{0, 0}, {0, 0}}),
         .PLU = Matrix::complex({{1, 0, 1, 0, 1, 0}, {0, 1, 1, 1, 0, 0.5}}, {{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}})},
        {.name = "complex: L and U",
         .A = Matrix::complex({{1, 0}, {2, 1}}, {{0, 1}, {0, 0}}),
         .PLU = Matrix::complex({{1, 0, 1, 0, 1, 0}, {0, 1, 2, 1, 0, 1}}, {{0, 0, 0, 0, 0, 1}, {0, 0, 0, 0, 0, -2}})},
        {.name = "complex: a quotient by Smith's method",
         .A = Matrix::complex({{1, 0}, {5, 100}}, {{2, 0}, {0, 0}}),
         .PLU = Matrix::complex({{1, 0, 1, 0, 1, 0}, {0, 1, 1, 1, 0, 100}}, {{0, 0, 0, 0, 2, 0}, {0, 0, -2, 0, 0, 0}})},
        {.name = "complex: exchanged rows",
         .A = Matrix::complex({{0, 0}, {1, 2}}, {{0, 1}, {1, 0}}),
         .PLU = Matrix::complex({{0, 1, 1, 0, 1, 2}, {1, 0, 0, 1, 0, 0}}, {{0, 0, 0, 0, 1, 0}, {0, 0, 0, 0, 0, 1}})},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        const aMatrix* const packed = native::lu(&ctx, &record);
        EXPECT_EQ(packed->m_rows, A.rows()) << c.name;
        EXPECT_EQ(packed->m_cols, 3 * A.rows()) << c.name;
        EXPECT_EQ(real(packed), real(c.PLU)) << c.name;
        EXPECT_EQ(imaginary(packed), imaginary(c.PLU)) << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name << ": the argument is not written";
    }
}

TEST(Lu, RefusesWhatCannotBeFactorised)
{
    struct Case {
        const char* name;
        Matrix A;
        Raised raised;
    };
    const Raised singular{.message = "singular matrix", .index = -1};
    const Case cases[] = {
        {.name = "wide", .A = {{1, 2, 3}, {4, 5, 6}}, .raised = {.message = "must be square", .index = 1}},
        {.name = "tall", .A = {{1, 2}, {3, 4}, {5, 6}}, .raised = {.message = "must be square", .index = -1}},
        {.name = "empty", .A = {}, .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "rows without columns", .A = Matrix(3, 0), .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "columns without rows", .A = Matrix(0, 3), .raised = {.message = "must be square", .index = 1}},
        {.name = "zero", .A = {{0}}, .raised = singular},
        {.name = "negative zero", .A = {{-0.0}}, .raised = singular},
        {.name = "a row of zeros", .A = {{1, 2, 3}, {0, 0, 0}, {4, 5, 7}}, .raised = singular},
        {.name = "singular only after a step", .A = {{1, 2}, {2, 4}}, .raised = singular},
        {.name = "a column of zeros", .A = {{0, 1}, {0, 2}}, .raised = singular},
        {.name = "complex, zero", .A = Matrix::complex({{0}}, {{0}}), .raised = singular},
        {.name = "complex, a row of zeros",
         .A = Matrix::complex({{1, 2}, {0, 0}}, {{3, 4}, {0, 0}}),
         .raised = singular},
        {.name = "complex, singular after a step",
         .A = Matrix::complex({{1, 0}, {0, -1}}, {{0, 1}, {1, 0}}),
         .raised = singular},
    };
    for (const Case& c : cases) {
        Matrix A = c.A;
        aMatrix record = A.record();
        EXPECT_EQ(raised_by([&] {
                      EfiCallContext ctx;
                      native::lu(&ctx, &record);
                  }),
                  c.raised)
            << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name;
    }
}

TEST(Lu, ReadsABlockThroughItsLeadingDimension)
{
    Matrix A(2, 2, 5);
    A.re(0, 0) = 2;
    A.re(1, 0) = 1;
    A.re(0, 1) = 4;
    A.re(1, 1) = 4;
    EfiCallContext ctx;
    aMatrix record = A.record();
    EXPECT_EQ(real(native::lu(&ctx, &record)), (std::vector<double>{1, 0, 0, 1, 1, 0.5, 0, 1, 2, 0, 4, 2}));
}

TEST(Lu, AnAbsentRealArrayIsNamed)
{
    double im = 1.0;
    aMatrix A = {.m_anr = 1, .m_tag = aMatrix::tag, .m_rows = 1, .m_cols = 1, .m_rv = nullptr, .m_iv = nullptr};
    EfiCallContext ctx;
    EXPECT_EQ(raised_by([&] { native::lu(&ctx, &A); }), (Raised{.message = "null pointer", .index = -1}));
    A.m_rows = 2;
    EXPECT_EQ(raised_by([&] { native::lu(&ctx, &A); }), (Raised{.message = "null pointer", .index = -1})) << "tall";
    A.m_rows = 1;
    A.m_iv = &im;
    EXPECT_EQ(raised_by([&] { native::lu(&ctx, &A); }), (Raised{.message = "unknown error", .index = -1}));
}

TEST(Lu, SizesThatNoMemoryHoldsAreOutOfMemory)
{
    double element = 1.0; // nobody reads it
    // 2479700525 * 2479700525 * 3 is just above 2^64.
    for (const std::uint32_t n : {1U << 27, 1U << 31, 2479700525U, ~0U})
        for (double* const imaginary : {static_cast<double*>(nullptr), &element}) {
            aMatrix A = {
                .m_anr = n, .m_tag = aMatrix::tag, .m_rows = n, .m_cols = n, .m_rv = &element, .m_iv = imaginary};
            EfiCallContext ctx;
            EXPECT_EQ(raised_by([&] { native::lu(&ctx, &A); }), (Raised{.message = "out of memory", .index = -1})) << n;
        }
}

TEST(Lu, RunsOutOfMemoryCleanly)
{
    for (const Matrix& source : {Matrix{{1, 2}, {3, 4}}, Matrix::complex({{1, 2}, {3, 4}}, {{5, 6}, {7, 8}})}) {
        Matrix A = source;
        aMatrix record = A.record();
        const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
            EfiCallContext ctx;
            native::lu(&ctx, &record);
        });
        EXPECT_GT(requests, 5U);
        EXPECT_EQ(A.bits(), source.bits());
    }
}

TEST(LuThreads, SharedMatricesGiveTheBitsOfOneThread)
{
    constexpr std::uint32_t n = 90;
    Matrix A(n, n);
    std::mt19937_64 random(7);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i)
            A.re(i, j) = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
    const aMatrix shared = A.record();
    const auto factors = [&] {
        aMatrix own = shared;
        EfiCallContext ctx;
        return real(native::lu(&ctx, &own));
    };
    const std::vector<double> expected = factors();
    std::array<std::thread, 8> threads;
    for (std::thread& thread : threads)
        thread = std::thread([&] {
            for (int round = 0; round < 20; ++round)
                EXPECT_EQ(factors(), expected);
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
