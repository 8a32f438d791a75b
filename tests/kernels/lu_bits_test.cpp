// The factorisations give the bits, the pivots, the refusals and the floating-point flags of the plain loops, at every
// instruction level.
#include "bailuxsko/kernels/lu.hpp"

#include "tests/kernels/plain/lu.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/outcome.hpp"
#include "tests/support/raises.hpp"

#include <cfenv>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::bits_of;
using support::draw;
using support::Kind;
using support::kinds;
using support::Matrix;
using support::Random;

/// All that a factorisation shows. Which of two NaNs an operation hands on is up to the compiler's order of operands,
/// so all NaNs count as one.
struct Outcome {
    support::Raised raised;
    std::vector<std::uint64_t> re, im, pivots;
    double sign = 0.0;
    int flags = 0;

    bool operator==(const Outcome&) const = default;
};

using Factorisation = void (*)(EfiCallContext*, aMatrix*, double*, double*, bool);

Outcome outcome(Factorisation factorise, Matrix A, bool strict)
{
    constexpr int faults = FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID;
    EfiCallContext ctx;
    aMatrix record = A.record();
    std::vector<double> pivots(A.rows(), -7.0);
    Outcome result;
    std::feclearexcept(FE_ALL_EXCEPT);
    result.raised = support::raised_by([&] { factorise(&ctx, &record, pivots.data(), &result.sign, strict); });
    result.flags = std::fetestexcept(faults);
    if (!result.raised.message.empty()) // what a refused matrix looks like afterwards is nobody's business
        return {.raised = result.raised, .re = {}, .im = {}, .pivots = {}};
    const std::size_t area = std::size_t{record.m_anr} * record.m_cols;
    result.re = bits_of(record.m_rv, area);
    if (record.m_iv != nullptr)
        result.im = bits_of(record.m_iv, area);
    result.pivots = bits_of(pivots.data(), pivots.size());
    return result;
}

class LuBits : public support::AtLevel {
protected:
    /// Small matrices many times, large ones once for each kind; their sizes lie around the edges of vectors and
    /// blocks.
    static void expect_plain(Factorisation fast, Factorisation plain, bool with_imaginary, std::uint32_t largest)
    {
        Random random(20240607);
        for (const Kind& kind : kinds) {
            for (std::uint32_t n = 1; n <= 20; ++n)
                for (const std::uint32_t gap : {0U, 3U})
                    for (const bool strict : {false, true})
                        expect_same(fast, plain, kind, draw(kind, n, n + gap, with_imaginary, random), strict);
            for (const std::uint32_t n :
                 {31U, 32U, 33U, 34U, 35U, 36U, 37U, 39U,  40U,  41U,  42U,  43U,  44U,  47U, 48U,
                  49U, 63U, 64U, 65U, 95U, 96U, 97U, 103U, 127U, 128U, 129U, 130U, 161U, 200U})
                if (n <= largest)
                    expect_same(fast, plain, kind, draw(kind, n, n + n % 2, with_imaginary, random), n % 3 == 0);
        }
        // halves around the rows, and above the terms, that a product takes at once: each on one kind
        std::size_t next = 0;
        for (const std::uint32_t n : {384U, 399U, 400U, 401U, 530U})
            if (n <= largest) {
                const Kind& kind = kinds[next++ % std::size(kinds)];
                expect_same(fast, plain, kind, draw(kind, n, n + 1, with_imaginary, random), n % 3 == 0);
            }
    }

private:
    static void expect_same(Factorisation fast, Factorisation plain, const Kind& kind, const Matrix& A, bool strict)
    {
        const bool same = outcome(fast, A, strict) == outcome(plain, A, strict);
        EXPECT_TRUE(same) << kind.name << ", n = " << A.rows() << ", strict " << strict;
    }
};

TEST_P(LuBits, RealIsThePlainLoops)
{
    expect_plain(native::lu_decomp, plain::lu_decomp, false, 530);
}

TEST_P(LuBits, ComplexIsThePlainLoops)
{
    expect_plain(native::clu_decomp, plain::clu_decomp, true, 130);
}

TEST_P(LuBits, ComplexWithoutAnImaginaryArrayIsThePlainLoops)
{
    expect_plain(native::clu_decomp, plain::clu_decomp, false, 33);
}

INSTANTIATE_TEST_SUITE_P(Levels, LuBits, support::every_level(), support::level_name);

} // namespace
