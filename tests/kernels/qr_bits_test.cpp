// Givens QR gives the bits, signs of zeros included, and the floating-point flags of the plain loops, at every
// instruction level.
#include "bailuxsko/kernels/qr.hpp"

#include "tests/kernels/plain/qr.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/outcome.hpp"

#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Kind;
using support::Matrix;
using support::outcome_of;
using support::Random;

/// Q and R side by side, the columns of R in the same array.
struct Packed {
    Packed(std::uint32_t m, std::uint32_t n) : m_elements(m, m + n)
    {
        m_all = m_elements.record();
        m_Q = m_all;
        m_Q.m_cols = m;
        m_R = m_all;
        m_R.m_rv += std::size_t{m} * m;
        m_R.m_cols = n;
    }

    Matrix m_elements;
    aMatrix m_all, m_Q, m_R;
};

class QrBits : public support::AtLevel {
protected:
    static void expect_plain(const std::string& name, const Matrix& A)
    {
        Matrix argument = A;
        aMatrix source = argument.record();
        Packed plain(A.rows(), A.cols());
        for (std::uint32_t j = 0; j < A.cols(); ++j)
            for (std::uint32_t i = 0; i < A.rows(); ++i)
                Efi::at(&plain.m_R, i, j) = argument.re(i, j);
        const support::Outcome expected = outcome_of([&] {
            plain::qr_givens(&plain.m_Q, &plain.m_R);
            return &plain.m_all;
        });
        EfiCallContext ctx;
        EXPECT_TRUE(outcome_of([&] { return native::qr(&ctx, &source); }) == expected)
            << name << ", " << A.rows() << " by " << A.cols();
        EXPECT_EQ(argument.bits(), A.bits()) << name << ": the argument is not written";
    }

    static Matrix drawn(const Kind& kind, std::uint32_t m, std::uint32_t n, Random& random)
    {
        return support::drawn(kind.element, m, n, m + m % 3, random);
    }
};

TEST_P(QrBits, OfAllKinds)
{
    Random random(21);
    for (const Kind& kind : support::kinds) {
        for (std::uint32_t m = 1; m <= 18; ++m)
            for (const std::uint32_t n : {1U, 2U, 3U, 7U, 8U, 9U, 17U, 57U})
                expect_plain(kind.name, drawn(kind, m, n, random));
        for (const std::uint32_t m : {31U, 32U, 33U, 40U, 65U})
            for (const std::uint32_t n : {31U, 32U, 33U, 64U, 66U, 97U})
                expect_plain(kind.name, drawn(kind, m, n, random));
        for (const std::uint32_t n : {47U, 48U, 49U, 55U, 56U, 57U, 63U, 64U, 65U})
            expect_plain(kind.name, drawn(kind, n, n, random));
        for (const std::uint32_t n : {95U, 96U, 97U})
            expect_plain(kind.name, drawn(kind, 70, n, random));
        expect_plain(kind.name, drawn(kind, 130, 129, random));
        for (const std::uint32_t m : {121U, 127U, 140U, 170U})
            for (const std::uint32_t n : {1U, 2U, 5U, 8U, 9U, 20U, 55U})
                expect_plain(kind.name, drawn(kind, m, n, random));
        expect_plain(kind.name, drawn(kind, 90, 205, random));
    }
}

TEST_P(QrBits, WhereColumnsHaveNoPivot)
{
    Random random(22);
    for (const std::uint32_t m : {4U, 9U, 33U, 70U})
        for (const std::uint32_t n : {5U, 40U, 70U})
            for (const std::uint32_t rank : {1U, 2U, 3U}) {
                Matrix A(m, n);
                std::vector<double> left(std::size_t{m} * rank);
                for (double& x : left)
                    x = support::uniform(random);
                for (std::uint32_t j = 0; j < n; ++j) {
                    std::vector<double> right(rank);
                    for (double& x : right)
                        x = j % 5 == 0 ? 0.0 : support::uniform(random);
                    for (std::uint32_t i = 0; i < m; ++i) {
                        A.re(i, j) = 0.0;
                        for (std::uint32_t k = 0; k < rank; ++k)
                            A.re(i, j) += left[i * rank + k] * right[k];
                    }
                }
                expect_plain("rank " + std::to_string(rank), A);
            }
}

TEST_P(QrBits, WhereRotationsAreLeftOut)
{
    Random random(23);
    for (const std::uint32_t n : {12U, 34U, 70U, 100U}) {
        Matrix hessenberg(n, n);
        Matrix triangle(n, n);
        Matrix banded(n, n);
        Matrix column_of_tiny(n, n);
        Matrix some_rotated(n, n);
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < n; ++i) {
                const double x = support::uniform(random);
                hessenberg.re(i, j) = i <= j + 1 ? x : 0.0;
                triangle.re(i, j) = i <= j ? x : -0.0;
                some_rotated.re(i, j) = i <= j || (i == j + 1 && j % 5 == 3) ? x : -0.0;
                banded.re(i, j) = i <= j + 5 && j <= i + 5 ? x : 0.0;
                column_of_tiny.re(i, j) = j == 2 ? x * 1e-170 : x; // its squares are zero: it is passed over as it is
            }
        expect_plain("Hessenberg", hessenberg);
        expect_plain("triangle", triangle);
        expect_plain("banded", banded);
        expect_plain("columns that need no rotation between those that do", some_rotated);
        expect_plain("a column without norm", column_of_tiny);
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, QrBits, support::every_level(), support::level_name);

} // namespace
