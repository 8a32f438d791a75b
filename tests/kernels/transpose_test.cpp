#include "bailuxsko/kernels/transpose.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <vector>

#include <gtest/gtest.h>

namespace {

using support::imaginary;
using support::Matrix;
using support::real;

TEST(MatTranspose, ByHand)
{
    struct Case {
        const char* name;
        Matrix A, T;
    };
    const Case cases[] = {
        {.name = "one element", .A = {{7}}, .T = {{7}}},
        {.name = "wide", .A = {{1, 2, 3}, {4, 5, -0.0}}, .T = {{1, 4}, {2, 5}, {3, -0.0}}},
        {.name = "a column", .A = {{1}, {2}, {3}}, .T = {{1, 2, 3}}},
        {.name = "nothing is conjugated",
         .A = Matrix::complex({{1, 2}}, {{3, 4}}),
         .T = Matrix::complex({{1}, {2}}, {{3}, {4}})},
        {.name = "rows without columns", .A = Matrix(3, 0), .T = Matrix(0, 3)},
        {.name = "empty", .A = {}, .T = {}},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        const aMatrix* const T = native::mat_transpose(&ctx, &record);
        EXPECT_EQ(T->m_rows, A.cols()) << c.name;
        EXPECT_EQ(T->m_cols, A.rows()) << c.name;
        EXPECT_EQ(T->m_anr, A.cols()) << c.name;
        EXPECT_EQ(real(T), real(c.T)) << c.name;
        EXPECT_EQ(imaginary(T), imaginary(c.T)) << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name << ": the argument is not written";
    }
}

TEST(MatTranspose, EveryElementAroundTheEdgesOfTiles)
{
    for (const std::uint32_t m : {1U, 31U, 32U, 33U, 70U})
        for (const std::uint32_t n : {1U, 31U, 32U, 33U, 65U}) {
            Matrix A(m, n, m + 3); // with traps below each column
            A.make_complex();
            for (std::uint32_t j = 0; j < n; ++j)
                for (std::uint32_t i = 0; i < m; ++i) {
                    A.re(i, j) = i * 1000.0 + j;
                    A.im(i, j) = -A.re(i, j);
                }
            aMatrix record = A.record();
            EfiCallContext ctx;
            const aMatrix* const T = native::mat_transpose(&ctx, &record);
            bool same = true;
            for (std::uint32_t j = 0; j < n; ++j)
                for (std::uint32_t i = 0; i < m; ++i)
                    same = same && Efi::at(T, j, i) == A.re(i, j) && Efi::at_i(T, j, i) == A.im(i, j);
            EXPECT_TRUE(same) << m << " by " << n;
        }
}

TEST(MatTranspose, AnAbsentArrayStaysAbsent)
{
    double im[] = {1, 2};
    const aMatrix A = {.m_anr = 2, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 1, .m_rv = nullptr, .m_iv = im};
    EfiCallContext ctx;
    const aMatrix* const T = native::mat_transpose(&ctx, &A);
    EXPECT_EQ(T->m_rv, nullptr);
    EXPECT_EQ(imaginary(T), (std::vector<double>{1, 2}));
}

TEST(MatTranspose, RunsOutOfMemoryCleanly)
{
    Matrix A = Matrix::complex({{1, 2}}, {{3, 4}});
    const aMatrix record = A.record();
    const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
        EfiCallContext ctx;
        native::mat_transpose(&ctx, &record);
    });
    EXPECT_EQ(requests, 3U);
}

} // namespace
