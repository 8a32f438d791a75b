// The decomposition gives the bits, the refusals and the floating-point flags of the plain loops, at every instruction
// level.
#include "bailuxsko/kernels/svd.hpp"

#include "tests/kernels/plain/svd.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/outcome.hpp"

#include <cfenv>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::append_bits;
using support::drawn;
using support::Kind;
using support::kinds;
using support::Matrix;
using support::Outcome;
using support::Random;

/// @param append  adds what the routine has filled to the bits
template <class Routine, class Append>
Outcome outcome(Routine routine, Append append)
{
    Outcome result;
    std::feclearexcept(FE_ALL_EXCEPT);
    result.raised = support::raised_by(routine);
    if (!result.raised.message.empty()) // what a refused matrix looks like afterwards is nobody's business
        return result;
    result.flags = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
    append(result.bits);
    return result;
}

using Decompose = void (*)(EfiCallContext*, aMatrix*, aMatrix*, aMatrix*);
using Values = void (*)(EfiCallContext*, aMatrix*);
using Pinv = void (*)(EfiCallContext*, aMatrix*, double, aMatrix**);

/// U, V and w, and what stands between the columns of U and V.
Outcome decomposed(Decompose decompose, Matrix A)
{
    EfiCallContext ctx;
    aMatrix a = A.record();
    Matrix V(A.cols(), A.cols(), A.cols() + (a.m_anr - a.m_rows));
    Matrix w(A.cols(), 1);
    aMatrix v = V.record();
    aMatrix record_of_w = w.record();
    return outcome([&] { decompose(&ctx, &a, &v, &record_of_w); },
                   [&](std::vector<std::uint64_t>& bits) {
                       append_bits(bits, a.m_rv, std::size_t{a.m_anr} * a.m_cols);
                       append_bits(bits, v.m_rv, std::size_t{v.m_anr} * v.m_cols);
                       append_bits(bits, w.record().m_rv, w.rows());
                   });
}

/// The diagonal; all else is scratch.
Outcome values(Values routine, Matrix A)
{
    EfiCallContext ctx;
    aMatrix a = A.record();
    return outcome([&] { routine(&ctx, &a); },
                   [&](std::vector<std::uint64_t>& bits) {
                       for (std::size_t i = 0; i < A.cols(); ++i)
                           append_bits(bits, &A.re(i, i), 1);
                   });
}

Outcome inverted(Pinv routine, Matrix A)
{
    EfiCallContext ctx;
    aMatrix a = A.record();
    aMatrix* X = nullptr;
    return outcome(
        [&] { routine(&ctx, &a, 1e-3, &X); },
        [&](std::vector<std::uint64_t>& bits) { append_bits(bits, X->m_rv, std::size_t{X->m_rows} * X->m_cols); });
}

class SvdBits : public support::AtLevel {
protected:
    /// Small matrices many times, large ones once for each kind; their sizes lie around the edges of vectors, strips
    /// and blocks.
    template <class Expect>
    static void for_each_matrix(std::uint32_t largest, Expect expect)
    {
        Random random(20240607);
        for (const Kind& kind : kinds) {
            for (std::uint32_t n = 1; n <= 13; ++n)
                for (const std::uint32_t taller : {0U, 1U, 2U, 7U})
                    for (const std::uint32_t gap : {0U, 3U})
                        expect(kind, drawn(kind.element, n + taller, n, n + taller + gap, random));
            for (const std::uint32_t n : {15U, 16U, 17U, 24U, 25U, 33U, 64U, 65U, 100U})
                if (n <= largest)
                    expect(kind, drawn(kind.element, n + n % 5, n, n + n % 5 + n % 2, random));
            expect(kind, drawn(kind.element, 150, 9, 150, random));
        }
    }
};

TEST_P(SvdBits, DecompositionIsThePlainLoops)
{
    for_each_matrix(100, [](const Kind& kind, const Matrix& A) {
        const bool same = decomposed(native::svd_decompose, A) == decomposed(plain::svd_decompose, A);
        EXPECT_TRUE(same) << kind.name << ", " << A.rows() << " by " << A.cols();
    });
}

TEST_P(SvdBits, ValuesAreThePlainLoops)
{
    for_each_matrix(100, [](const Kind& kind, const Matrix& A) {
        const bool same = values(native::svd_values, A) == values(plain::svd_values, A);
        EXPECT_TRUE(same) << kind.name << ", " << A.rows() << " by " << A.cols();
    });
}

TEST_P(SvdBits, GeneralisedInverseIsThePlainLoops)
{
    for_each_matrix(33, [](const Kind& kind, const Matrix& A) {
        const bool same = inverted(native::pinv_from_svd, A) == inverted(plain::pinv_from_svd, A);
        EXPECT_TRUE(same) << kind.name << ", " << A.rows() << " by " << A.cols();
    });
}

/// n by n, upper bidiagonal.
template <class Diagonal, class Above>
Matrix bidiagonal(std::uint32_t n, Diagonal diagonal, Above above)
{
    Matrix A(n, n);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i)
            A.re(i, j) = i == j ? diagonal(j) : i + 1 == j ? above(j) : 0.0;
    return A;
}

TEST_P(SvdBits, ElementsThatAreCancelledAlongManyColumns)
{
    for (const std::uint32_t n : {2U, 9U, 40U})
        for (const std::uint32_t zero : {0U, n / 2, n - 1}) {
            const Matrix A = bidiagonal(
                n, [&](std::uint32_t j) { return j == zero ? 0.0 : 1.0 + j; }, [](std::uint32_t j) { return 0.5 + j; });
            EXPECT_TRUE(decomposed(native::svd_decompose, A) == decomposed(plain::svd_decompose, A)) << n;
            EXPECT_TRUE(values(native::svd_values, A) == values(plain::svd_values, A)) << n;
        }
}

TEST_P(SvdBits, ManyBlocksWithAFewRotationsEach)
{
    const Matrix A = bidiagonal(
        301, [](std::uint32_t j) { return 1.0 + j % 7; }, [](std::uint32_t j) { return j % 2 == 1 ? 1.0 : 0.0; });
    EXPECT_TRUE(decomposed(native::svd_decompose, A) == decomposed(plain::svd_decompose, A));
}

INSTANTIATE_TEST_SUITE_P(Levels, SvdBits, support::every_level(), support::level_name);

} // namespace
