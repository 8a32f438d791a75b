// Cholesky gives the bits, the refusals and the floating-point flags of the plain loops, at every instruction level.
#include "bailuxsko/kernels/cholesky.hpp"

#include "tests/kernels/plain/cholesky.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/outcome.hpp"

#include <gtest/gtest.h>

namespace {

using support::Kind;
using support::Matrix;
using support::outcome_of;
using support::Random;

class CholeskyBits : public support::AtLevel {
protected:
    static void expect_plain(const char* name, const Matrix& A)
    {
        Matrix plain = A;
        aMatrix expected = plain.record();
        const support::Outcome outcome = outcome_of([&] {
            plain::choldc(&expected);
            return &expected;
        });
        Matrix argument = A;
        aMatrix source = argument.record();
        EfiCallContext ctx;
        EXPECT_TRUE(outcome_of([&] { return native::cholesky(&ctx, &source); }) == outcome)
            << name << ", n = " << A.rows();
        EXPECT_EQ(argument.bits(), A.bits()) << name << ": the argument is not written";
        EXPECT_TRUE(outcome_of([&] {
                        native::choldc(&ctx, &source);
                        return &source;
                    }) == outcome)
            << name << " in place, n = " << A.rows();
        for (std::uint32_t j = 0; j < A.cols(); ++j)
            for (std::uint32_t i = A.rows(); i < source.m_anr; ++i)
                EXPECT_EQ(argument.re(i, j), Matrix::trap) << name << ": nor what stands between the columns";
    }

    static constexpr std::uint32_t sizes[] = {1,  2,  3,  7,  8,   9,   10,  15,  16,  17,  23,  31,  33,  40,
                                              63, 64, 65, 72, 120, 127, 128, 129, 137, 200, 255, 256, 257, 300};
};

TEST_P(CholeskyBits, OfAnyUpperTriangle)
{
    Random random(11);
    for (const Kind& kind : support::kinds)
        for (const std::uint32_t n : sizes)
            if (n <= 129)
                expect_plain(kind.name, draw(kind, n, n + n % 4, false, random));
}

TEST_P(CholeskyBits, OfMatricesWithALargeDiagonal)
{
    Random random(12);
    for (const Kind& kind : support::kinds)
        for (const std::uint32_t n : sizes) {
            Matrix A = draw(kind, n, n + n % 3, false, random);
            for (std::uint32_t i = 0; i < n; ++i)
                A.re(i, i) = std::ldexp(n + 1.0, static_cast<int>(i % 7));
            expect_plain(kind.name, A);
        }
}

TEST_P(CholeskyBits, OfDiagonalsWithAnInfinity)
{
    for (const std::uint32_t n : {1U, 2U, 7U, 9U, 12U, 16U, 70U})
        for (std::uint32_t place = 0; place < n; ++place) {
            Matrix A(n, n);
            for (std::uint32_t j = 0; j < n; ++j)
                for (std::uint32_t i = 0; i < n; ++i)
                    A.re(i, j) = i == j ? 2.0 : 0.0;
            A.re(place, place) = HUGE_VAL;
            expect_plain("an infinity on the diagonal", A);
        }
}

INSTANTIATE_TEST_SUITE_P(Levels, CholeskyBits, support::every_level(), support::level_name);

} // namespace
