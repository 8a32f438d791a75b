// The echelon form has the bits and the floating-point flags of the plain loops, at every instruction level.
#include "bailuxsko/kernels/rref.hpp"

#include "tests/kernels/plain/rref.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/outcome.hpp"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace {

using support::Kind;
using support::Matrix;
using support::outcome_of;
using support::Random;

class RrefBits : public support::AtLevel {
protected:
    static void expect_plain(const std::string& name, const Matrix& A)
    {
        Matrix argument = A;
        aMatrix source = argument.record();
        Matrix plain = A;
        aMatrix reduced = plain.record();
        const support::Outcome expected = outcome_of([&] {
            double tol = std::max(A.rows(), A.cols()) * 1e-12;
            if (A.rows() == A.cols())
                tol = tol * plain::min_norm_1i(&reduced);
            plain::gauss_jordan(&reduced, tol);
            return &reduced;
        });
        EfiCallContext ctx;
        EXPECT_TRUE(outcome_of([&] { return native::rref(&ctx, &source); }) == expected)
            << name << ", " << A.rows() << " by " << A.cols();
        EXPECT_EQ(argument.bits(), A.bits()) << name << ": the argument is not written";
    }

    static Matrix drawn(const Kind& kind, std::uint32_t m, std::uint32_t n, Random& random)
    {
        return support::drawn(kind.element, m, n, m + n % 3, random);
    }
};

TEST_P(RrefBits, OfAllKinds)
{
    Random random(31);
    for (const Kind& kind : support::kinds) {
        for (std::uint32_t m = 1; m <= 13; ++m)
            for (std::uint32_t n = 1; n <= 13; ++n)
                expect_plain(kind.name, drawn(kind, m, n, random));
        for (const std::uint32_t m : {5U, 31U, 32U, 33U, 47U, 65U, 130U})
            for (const std::uint32_t n : {31U, 32U, 33U, 34U, 36U, 37U, 40U, 64U, 67U, 97U, 129U, 135U})
                expect_plain(kind.name, drawn(kind, m, n, random));
        for (const std::uint32_t n : {31U, 32U, 33U, 63U, 64U, 65U, 96U, 127U, 128U, 129U, 161U, 230U})
            expect_plain(kind.name, drawn(kind, n, n, random));
    }
}

TEST_P(RrefBits, WhereColumnsArePassedOver)
{
    Random random(32);
    for (const std::uint32_t m : {6U, 40U, 90U})
        for (const std::uint32_t n : {8U, 70U, 90U, 200U})
            for (const double negligible : {0.0, -0.0, 1e-13}) {
                Matrix A = drawn(support::kinds[0], m, n, random);
                for (std::uint32_t j = 0; j < n; ++j)
                    if (j % 3 == 1 || j / 10 == 2 || j / 33 == 1)
                        for (std::uint32_t i = 0; i < m; ++i)
                            A.re(i, j) *= negligible;
                expect_plain("columns passed over", A);
                for (std::uint32_t j = 0; j < n; ++j)
                    for (std::uint32_t i = 0; i < m; ++i)
                        A.re(i, j) = i / 2 + j; // of rank 2, with rows that are equal
                expect_plain("of rank 2", A);
            }
}

TEST_P(RrefBits, OfTheNorm)
{
    Random random(33);
    for (const Kind& kind : support::kinds)
        for (const std::uint32_t m : {1U, 4U, 5U, 255U, 256U, 257U})
            for (const std::uint32_t n : {1U, 2U, 4U, 5U, 7U, 300U}) {
                Matrix A = drawn(kind, m, n, random);
                const aMatrix record = A.record();
                double norm;
                const aMatrix one{
                    .m_anr = 1, .m_tag = aMatrix::tag, .m_rows = 1, .m_cols = 1, .m_rv = &norm, .m_iv = nullptr};
                const auto outcome = [&](double (*min_norm)(const aMatrix*)) {
                    return outcome_of([&] {
                        norm = min_norm(&record);
                        return &one;
                    });
                };
                EXPECT_TRUE(outcome(native::min_norm_1i) == outcome(plain::min_norm_1i))
                    << kind.name << ", " << m << " by " << n;
            }
}

INSTANTIATE_TEST_SUITE_P(Levels, RrefBits, support::every_level(), support::level_name);

} // namespace
