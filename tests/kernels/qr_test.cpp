#include "bailuxsko/kernels/qr.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <climits>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::imaginary;
using support::Matrix;
using support::Raised;
using support::raised_by;
using support::real;

TEST(QrGivens, MakesRecordsOfTheirOwn)
{
    Matrix A = {{0, 1}, {0, 2}, {0, 0}};
    aMatrix record = A.record();
    EfiCallContext ctx;
    aMatrix* Q = nullptr;
    aMatrix* R = nullptr;
    native::qr_givens(&ctx, &record, &Q, &R);
    const double s = 1.0 / std::sqrt(1.25); // b = 2 is larger than a = 1: t = 0.5
    const double c = 0.5 * s;
    EXPECT_EQ(Q->m_anr, 3U);
    EXPECT_EQ(real(Q), (std::vector<double>{c, s, 0, -s, c, 0, 0, 0, 1}));
    EXPECT_EQ(imaginary(Q), std::vector<double>(9, 0.0));
    EXPECT_EQ(R->m_anr, 3U);
    EXPECT_EQ(R->m_iv, nullptr);
    EXPECT_EQ(real(R), (std::vector<double>{0, 0, 0, c + 2 * s, 0, 0}));
    EXPECT_EQ(A.bits(), (Matrix{{0, 1}, {0, 2}, {0, 0}}.bits()));
}

TEST(QrGivens, ImaginaryPartsTakeNoPart)
{
    Matrix A = Matrix::complex({{3}}, {{4}});
    aMatrix record = A.record();
    EfiCallContext ctx;
    aMatrix* Q = nullptr;
    aMatrix* R = nullptr;
    native::qr_givens(&ctx, &record, &Q, &R);
    EXPECT_EQ(real(R), (std::vector<double>{3}));
    EXPECT_EQ(raised_by([&] { native::qr(&ctx, &record); }), (Raised{.message = "must be real matrix", .index = 1}));
}

TEST(QrGivens, PassesOnWhatIsWrongWithAColumn)
{
    aMatrix A = {.m_anr = 2, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 3, .m_rv = nullptr, .m_iv = nullptr};
    EfiCallContext ctx;
    aMatrix* Q = nullptr;
    aMatrix* R = nullptr;
    const Raised null_pointer{.message = "null pointer", .index = -1};
    EXPECT_EQ(raised_by([&] { native::qr_givens(&ctx, &A, &Q, &R); }), null_pointer);
    EXPECT_EQ(raised_by([&] { native::qr(&ctx, &A); }), null_pointer);
}

TEST(Qr, OfShapesWithoutElements)
{
    struct Case {
        const char* name;
        Matrix A;
        std::vector<double> QR;
    };
    const Case cases[] = {
        {.name = "empty", .A = {}, .QR = {}},
        {.name = "columns without rows", .A = Matrix(0, 3), .QR = {}},
        {.name = "rows without columns", .A = Matrix(2, 0), .QR = {1, 0, 0, 1}},
    };
    for (const Case& c : cases) {
        Matrix A = c.A;
        aMatrix record = A.record();
        EfiCallContext ctx;
        const aMatrix* const packed = native::qr(&ctx, &record);
        EXPECT_EQ(packed->m_rows, A.rows()) << c.name;
        EXPECT_EQ(packed->m_cols, A.rows() + A.cols()) << c.name;
        EXPECT_EQ(real(packed), c.QR) << c.name;
        EXPECT_EQ(packed->m_iv, nullptr) << c.name;
    }
}

TEST(Qr, SizesThatNoMemoryHoldsAreOutOfMemory)
{
    double element = 1.0; // nobody reads it
    struct Size {
        std::uint32_t m, n;
    };
    for (const Size size : {Size{1U << 27, 1U << 27}, Size{1U << 31, 1U << 31}, Size{~0U, ~0U}, Size{1U << 30, 1U},
                            Size{1U << 20, ~0U}}) {
        aMatrix A = {.m_anr = size.m,
                     .m_tag = aMatrix::tag,
                     .m_rows = size.m,
                     .m_cols = size.n,
                     .m_rv = &element,
                     .m_iv = nullptr};
        EfiCallContext ctx;
        EXPECT_EQ(raised_by([&] { native::qr(&ctx, &A); }), (Raised{.message = "out of memory", .index = -1}))
            << size.m << " by " << size.n;
    }
}

TEST(Qr, RunsOutOfMemoryCleanly)
{
    for (const std::uint32_t n : {2U, 40U}) {
        Matrix A(n, n);
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < n; ++i)
                A.re(i, j) = std::sin(i * n + j);
        const std::vector<std::uint64_t> before = A.bits();
        aMatrix record = A.record();
        const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
            EfiCallContext ctx;
            native::qr(&ctx, &record);
        });
        EXPECT_GT(requests, 4U);
        EXPECT_EQ(A.bits(), before);
    }
}

TEST(GivensRows, RotatesTwoRowsOfAllColumns)
{
    Matrix A(3, 2, 5);
    A.re(0, 0) = 1;
    A.re(1, 0) = 2;
    A.re(2, 0) = 3;
    A.re(0, 1) = 4;
    A.re(1, 1) = 5;
    A.re(2, 1) = 6;
    aMatrix record = A.record();
    native::givens_rows(0.5, 2.0, 1, 3, &record);
    EXPECT_EQ(A.re(0, 0), 1 * 0.5 + 3 * 2.0);
    EXPECT_EQ(A.re(2, 0), 3 * 0.5 - 1 * 2.0);
    EXPECT_EQ(A.re(0, 1), 4 * 0.5 + 6 * 2.0);
    EXPECT_EQ(A.re(2, 1), 6 * 0.5 - 4 * 2.0);
    EXPECT_EQ(A.re(1, 0), 2);
    EXPECT_EQ(A.re(1, 1), 5);
    EXPECT_EQ(A.re(3, 0), Matrix::trap);
}

TEST(GivensRows, LeavesImaginaryPartsAlone)
{
    Matrix A = Matrix::complex({{1}, {2}}, {{3}, {4}});
    aMatrix record = A.record();
    native::givens_rows(0.0, 1.0, 1, 2, &record);
    EXPECT_EQ(real(&record), (std::vector<double>{2, -1}));
    EXPECT_EQ(imaginary(&record), (std::vector<double>{3, 4}));
}

TEST(GivensRows, RefusesRowsThatAreNotThere)
{
    Matrix A = {{1}, {2}, {3}};
    const std::vector<std::uint64_t> before = A.bits();
    aMatrix record = A.record();
    struct Rows {
        int p, q;
    };
    for (const Rows rows :
         {Rows{0, 1}, Rows{1, 0}, Rows{4, 1}, Rows{1, 4}, Rows{-1, 2}, Rows{2, INT_MIN}, Rows{INT_MAX, 2}})
        EXPECT_EQ(raised_by([&] { native::givens_rows(1.0, 0.0, rows.p, rows.q, &record); }),
                  (Raised{.message = "QR FAILED", .index = -1}))
            << rows.p << ' ' << rows.q;
    EXPECT_EQ(A.bits(), before);
}

TEST(ColNorm, IsTheRootOfTheSumOfSquares)
{
    Matrix v(2, 1, 7);
    v.re(0, 0) = 3;
    v.re(1, 0) = 4;
    aMatrix record = v.record();
    EXPECT_EQ(native::col_norm(&record), 5.0);
    v.re(0, 0) = 1e200;
    EXPECT_EQ(native::col_norm(&record), HUGE_VAL) << "nothing is scaled";
    record.m_rv = nullptr;
    EXPECT_EQ(native::col_norm(&record), 0.0);
}

} // namespace
