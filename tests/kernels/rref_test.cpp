#include "bailuxsko/kernels/rref.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;
using support::raised_by;
using support::real;

TEST(Rref, ByHand)
{
    struct Case {
        const char* name;
        Matrix A, reduced;
    };
    const Case cases[] = {
        {.name = "zero", .A = {{0, 0}, {0, 0}}, .reduced = {{0, 0}, {0, 0}}},
        {.name = "rank 1", .A = {{1, 2}, {2, 4}}, .reduced = {{1, 2}, {0, 0}}},
        {.name = "an exchange", .A = {{0, 1}, {1, 0}}, .reduced = {{1, 0}, {0, 1}}},
        {.name = "negligible, kept", .A = {{1, 1e-13}, {0, 1e-13}}, .reduced = {{1, 1e-13}, {0, 1e-13}}},
        {.name = "wide", .A = {{1, 2, 3}, {4, 5, 6}}, .reduced = {{1, 0, -1}, {0, 1, 2}}},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        const aMatrix* const reduced = native::rref(&ctx, &record);
        EXPECT_EQ(reduced->m_rows, A.rows()) << c.name;
        EXPECT_EQ(reduced->m_anr, A.rows()) << c.name;
        EXPECT_EQ(reduced->m_cols, A.cols()) << c.name;
        EXPECT_EQ(real(reduced), real(c.reduced)) << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name << ": the argument is not written";
    }
}

TEST(Rref, ARecordWithoutARealArrayIsHandedBack)
{
    double im = 1.0;
    aMatrix A = {.m_anr = 1, .m_tag = aMatrix::tag, .m_rows = 1, .m_cols = 1, .m_rv = nullptr, .m_iv = nullptr};
    EfiCallContext ctx;
    EXPECT_EQ(native::rref(&ctx, &A), &A);
    A.m_iv = &im;
    EXPECT_EQ(native::rref(&ctx, &A), &A);
}

TEST(Rref, Refusals)
{
    struct Case {
        const char* name;
        Matrix A;
        Raised raised;
    };
    const Raised invalid_dimension{.message = "invalid dimension", .index = -1};
    const Case cases[] = {
        {.name = "empty", .A = {}, .raised = invalid_dimension},
        {.name = "rows without columns", .A = Matrix(3, 0), .raised = invalid_dimension},
        {.name = "columns without rows", .A = Matrix(0, 3), .raised = invalid_dimension},
        {.name = "complex",
         .A = Matrix::complex({{1}}, {{0}}),
         .raised = {.message = "must be real matrix", .index = 1}},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        EXPECT_EQ(raised_by([&] { native::rref(&ctx, &record); }), c.raised) << c.name;
    }
    double element = 1.0; // nobody reads it
    aMatrix tall = {
        .m_anr = 1U << 31, .m_tag = aMatrix::tag, .m_rows = 1U << 31, .m_cols = 1, .m_rv = &element, .m_iv = nullptr};
    EfiCallContext ctx;
    EXPECT_EQ(raised_by([&] { native::rref(&ctx, &tall); }), (Raised{.message = "matrix too big", .index = 1}));
    tall.m_rows = tall.m_cols = (1U << 31) - 1;
    EXPECT_EQ(raised_by([&] { native::rref(&ctx, &tall); }), (Raised{.message = "out of memory", .index = -1}));
}

TEST(Rref, RunsOutOfMemoryCleanly)
{
    Matrix A = {{1, 2}, {3, 4}};
    const std::vector<std::uint64_t> before = A.bits();
    aMatrix record = A.record();
    const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
        EfiCallContext ctx;
        native::rref(&ctx, &record);
    });
    EXPECT_EQ(requests, 3U);
    EXPECT_EQ(A.bits(), before);
}

TEST(RrefColumns, AreCountedFrom1)
{
    EfiCallContext ctx;
    double** const columns = native::rref_columns(&ctx, 3, 2);
    EXPECT_EQ(columns[2] + 1, columns[1] + 3) << "no gap between the columns";
    EXPECT_EQ(columns[3] + 1, columns[2] + 3);
    for (int c = 1; c <= 3; ++c)
        std::fill_n(columns[c] + 1, 2, 1.0);
}

TEST(GaussJordan, TakesAnyToleranceThatIsNotNegativeOrNan)
{
    struct Case {
        double tol;
        std::vector<double> reduced;
    };
    const std::vector<double> same = {2, 0, 1, 0.5};
    const Case cases[] = {
        {.tol = 0.0, .reduced = {1, 0, 0, 1}},
        {.tol = 0.5, .reduced = {1, 0, 0.5, 0.5}}, // what equals the tolerance is no pivot
        {.tol = 2.0, .reduced = same},
        {.tol = -1.0, .reduced = same},
        {.tol = std::numeric_limits<double>::quiet_NaN(), .reduced = same},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        double** const columns = native::rref_columns(&ctx, 2, 2);
        std::copy(same.begin(), same.end(), columns[1] + 1);
        native::gauss_jordan(columns, 2, 2, c.tol);
        EXPECT_EQ(std::vector<double>(columns[1] + 1, columns[1] + 5), c.reduced) << c.tol;
    }
}

TEST(GaussJordan, WithoutRowsOrColumnsDoesNothing)
{
    double* const columns[] = {nullptr, nullptr};
    native::gauss_jordan(columns, 0, 1, 0.0);
    native::gauss_jordan(columns, -1, 1, 0.0);
    native::gauss_jordan(columns, 1, 0, 0.0);
}

TEST(MinNorm1i, IsTheSmallerNorm)
{
    Matrix tall(2, 1, 4);
    tall.re(0, 0) = 3;
    tall.re(1, 0) = -4;
    const aMatrix record = tall.record();
    EXPECT_EQ(native::min_norm_1i(&record), 4) << "the rows' norm";
    Matrix wide = {{3, -4}};
    const aMatrix turned = wide.record();
    EXPECT_EQ(native::min_norm_1i(&turned), 4) << "the columns' norm";
    Matrix none(3, 0);
    const aMatrix without_columns = none.record();
    EXPECT_EQ(native::min_norm_1i(&without_columns), 0);
    Matrix flat(0, 3);
    const aMatrix without_rows = flat.record();
    EXPECT_EQ(native::min_norm_1i(&without_rows), 0);
}

} // namespace
