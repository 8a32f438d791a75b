#include "bailuxsko/kernels/svd.hpp"

#include "bailuxsko/kernels/rank.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;
using support::raised_by;
using support::real;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double inf = std::numeric_limits<double>::infinity();

const Raised overflow{.message = "overflow", .index = -1};
const Raised too_many{.message = "too many iterations", .index = -1};

Matrix scattered(std::uint32_t m, std::uint32_t n, std::uint32_t ld)
{
    support::Random random(11);
    return support::drawn(support::uniform, m, n, ld, random);
}

std::vector<double> values(Matrix A)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    native::svd_values(&ctx, &record);
    std::vector<double> w;
    for (std::uint32_t i = 0; i < A.cols(); ++i)
        w.push_back(A.re(i, i));
    return w;
}

TEST(SvdValues, ByHand)
{
    struct Case {
        const char* name;
        Matrix A;
        std::vector<double> w;
    };
    const Case cases[] = {
        {.name = "empty", .A = {}, .w = {}},
        {.name = "rows without columns", .A = Matrix(3, 0), .w = {}},
        {.name = "one element", .A = {{-5}}, .w = {5}},
        {.name = "zero", .A = {{-0.0}}, .w = {0}},
        {.name = "a column", .A = {{3}, {0}, {-4}}, .w = {5}},
        {.name = "a diagonal in no order", .A = {{2, 0, 0}, {0, -7, 0}, {0, 0, 3}, {0, 0, 0}}, .w = {7, 3, 2}},
        {.name = "above a diagonal of zeros", .A = {{0, 3, 0}, {0, 0, 2}, {0, 0, 0}}, .w = {3, 2, 0}},
        {.name = "ones", .A = {{1, 1}, {1, 1}}, .w = {2, 0}},
        {.name = "golden", .A = {{1, 1}, {0, 1}}, .w = {(1 + std::sqrt(5.0)) / 2, (std::sqrt(5.0) - 1) / 2}},
    };
    for (const Case& c : cases) {
        const std::vector<double> w = values(c.A);
        ASSERT_EQ(w.size(), c.w.size()) << c.name;
        for (std::size_t i = 0; i < w.size(); ++i)
            EXPECT_NEAR(w[i], c.w[i], 1e-15 * c.w[0]) << c.name;
    }
}

TEST(SvdValues, Refusals)
{
    const Raised nested{.message = "may not be nested", .index = -1};
    const double element = Efi::ptr_nan();
    struct Case {
        const char* name;
        Matrix A;
        Raised raised;
    };
    const Case cases[] = {
        {.name = "wide",
         .A = {{1, 2, 3}, {4, 5, 6}},
         .raised = {.message = "number of rows less than number of columns", .index = 1}},
        {.name = "columns without rows",
         .A = Matrix(0, 1),
         .raised = {.message = "number of rows less than number of columns", .index = 1}},
        {.name = "an array in the first column", .A = {{1, 2}, {element, 3}}, .raised = nested},
        {.name = "an array in a later column", .A = {{1, 2}, {4, element}}, .raised = nested},
        {.name = "an array right of a column of zeros", .A = {{0, element}, {0, 3}}, .raised = nested},
        {.name = "nothing but an array", .A = {{element}}, .raised = nested},
        {.name = "squares that overflow", .A = {{1e160, 1e160}, {2e160, 3e160}}, .raised = overflow},
        {.name = "NaN", .A = {{nan, 1}, {1, 1}}, .raised = too_many},
        {.name = "infinity", .A = {{1, 2}, {3, inf}}, .raised = too_many},
    };
    for (const Case& c : cases)
        EXPECT_EQ(raised_by([&] { values(c.A); }), c.raised) << c.name;
}

TEST(Svd, RefusalsLeaveTheArgumentAlone)
{
    const Raised wide{.message = "number of rows less than number of columns", .index = -1};
    const Raised not_real{.message = "must be real matrix", .index = 1};
    struct Case {
        const char* name;
        Matrix A;
        Raised svd, geninv;
    };
    const Case cases[] = {
        {.name = "wide", .A = {{1, 2, 3}, {4, 5, 6}}, .svd = wide, .geninv = wide},
        {.name = "complex and wide", .A = Matrix::complex({{1, 2}}, {{0, 0}}), .svd = not_real, .geninv = not_real},
        {.name = "empty", .A = {}, .svd = {.message = "invalid dimension", .index = -1}, .geninv = {}},
        {.name = "rows without columns",
         .A = Matrix(3, 0),
         .svd = {.message = "invalid dimension", .index = -1},
         .geninv = {}},
        {.name = "squares that overflow", .A = {{1e160, 1e160}, {2e160, 3e160}}, .svd = overflow, .geninv = overflow},
        {.name = "NaN", .A = {{nan, 1}, {1, 1}}, .svd = too_many, .geninv = too_many},
    };
    for (const Case& c : cases) {
        Matrix A = c.A;
        aMatrix record = A.record();
        EXPECT_EQ(raised_by([&] {
                      EfiCallContext ctx;
                      native::svd2(&ctx, &record);
                  }),
                  c.svd)
            << c.name;
        EXPECT_EQ(raised_by([&] {
                      EfiCallContext ctx;
                      native::geninv(&ctx, &record, 0.0);
                  }),
                  c.geninv)
            << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name;
    }
}

TEST(Svd, ReadsABlockThroughItsLeadingDimension)
{
    for (const std::uint32_t m : {1U, 4U, 9U, 40U})
        for (const std::uint32_t n : {1U, 4U, 9U, 33U}) {
            if (m < n)
                continue;
            EfiCallContext ctx;
            Matrix packed = scattered(m, n, m);
            Matrix block = scattered(m, n, m + 5); // the traps between its columns would show
            const auto before = block.bits();
            const aMatrix P = packed.record();
            const aMatrix B = block.record();
            const auto elements = [&](auto worker, aMatrix record) { return real(worker(&record)); };
            const auto svd = [&](aMatrix* A) { return native::svd2(&ctx, A); };
            const auto geninv = [&](aMatrix* A) { return native::geninv(&ctx, A, 1e-10); };
            EXPECT_EQ(elements(svd, P), elements(svd, B)) << m << " by " << n;
            EXPECT_EQ(elements(geninv, P), elements(geninv, B)) << m << " by " << n;
            EXPECT_EQ(native::rank(&ctx, &P), native::rank(&ctx, &B)) << m << " by " << n;
            EXPECT_EQ(block.bits(), before) << m << " by " << n << ": the argument is not written";
            EXPECT_EQ(values(packed), values(block)) << m << " by " << n;
        }
}

TEST(Svd, TheValuesAreThoseOfTheDecomposition)
{
    for (const std::uint32_t n : {1U, 2U, 5U, 30U}) {
        EfiCallContext ctx;
        Matrix A = scattered(n + 3, n, n + 4);
        Matrix V(n, n, n + 1);
        Matrix w(n, 1);
        aMatrix a = A.record();
        aMatrix v = V.record();
        aMatrix record_of_w = w.record();
        native::svd_decompose(&ctx, &a, &v, &record_of_w);
        EXPECT_EQ(real(w), values(scattered(n + 3, n, n + 3))) << n;
        EXPECT_EQ(A.re(n + 3, 0), Matrix::trap) << "nothing is written between the columns";
        EXPECT_EQ(V.re(n, n - 1), Matrix::trap);
    }
}

/// Requests of the arena that a call makes; each is tried as the one that fails.
template <class Worker>
std::size_t requests(Matrix A, Worker worker)
{
    const auto before = A.bits();
    aMatrix record = A.record();
    const std::size_t count = support::fails_at_every_request<Efi::NativeError>([&] {
        EfiCallContext ctx;
        worker(&ctx, &record);
    });
    EXPECT_EQ(A.bits(), before);
    return count;
}

TEST(Svd, RunsOutOfMemoryCleanlyAndTakesNoneInsideAnIteration)
{
    Matrix diagonal(30, 30); // needs no iteration
    for (std::uint32_t j = 0; j < 30; ++j)
        for (std::uint32_t i = 0; i < 30; ++i)
            diagonal.re(i, j) = i == j ? 1.0 : 0.0;
    const Matrix full = scattered(30, 30, 30);
    const auto svd = [](EfiCallContext* ctx, aMatrix* A) { native::svd2(ctx, A); };
    const auto geninv = [](EfiCallContext* ctx, aMatrix* A) { native::geninv(ctx, A, 0.0); };
    const auto rank = [](EfiCallContext* ctx, aMatrix* A) { native::rank(ctx, A); };
    EXPECT_EQ(requests(full, svd), requests(diagonal, svd));
    EXPECT_EQ(requests(full, geninv), requests(diagonal, geninv));
    EXPECT_EQ(requests(full, rank), requests(diagonal, rank));
    EXPECT_GT(requests(full, rank), 2U);
}

TEST(Svd, SizesThatNoMemoryHoldsAreOutOfMemory)
{
    const Raised out_of_memory{.message = "out of memory", .index = -1};
    double element = 1.0; // nobody reads it
    for (const std::uint32_t n : {1U << 27, 1U << 31, ~0U}) {
        aMatrix A = {.m_anr = n, .m_tag = aMatrix::tag, .m_rows = n, .m_cols = n, .m_rv = &element, .m_iv = nullptr};
        EfiCallContext ctx;
        EXPECT_EQ(raised_by([&] { native::svd2(&ctx, &A); }), out_of_memory) << n;
        EXPECT_EQ(raised_by([&] { native::geninv(&ctx, &A, 0.0); }), out_of_memory) << n;
        EXPECT_EQ(raised_by([&] { native::rank(&ctx, &A); }), out_of_memory) << n;
    }
}

TEST(Rank, AWideMatrixHasTheRankOfItsTranspose)
{
    for (std::uint32_t deficient = 0; deficient <= 4; ++deficient) {
        Matrix A(9, 4);
        Matrix T(4, 9);
        for (std::uint32_t j = 0; j < 4; ++j)
            for (std::uint32_t i = 0; i < 9; ++i)
                T.re(j, i) = A.re(i, j) = j < deficient ? 0.0 : std::pow(i + 1.0, j);
        EfiCallContext ctx;
        const aMatrix a = A.record();
        const aMatrix t = T.record();
        EXPECT_EQ(native::rank(&ctx, &a), 4 - deficient);
        EXPECT_EQ(native::rank(&ctx, &t), 4 - deficient);
    }
}

} // namespace
