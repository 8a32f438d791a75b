// The iteration on bidiagonal matrices made by hand: where it splits, cancels, gives up and overflows.
#include "bailuxsko/kernels/bidiagonal_qr.hpp"

#include "tests/support/raises.hpp"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using native::Bidiagonal;
using support::Raised;
using support::raised_by;

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Counts what the iteration reports.
struct Counted {
    int m_V = 0, m_U = 0, m_sweeps = 0, m_cancellations = 0, m_negated = 0;

    void begin_sweep(std::size_t, std::size_t) { ++m_sweeps; }
    void begin_cancellation(std::size_t, std::size_t) { ++m_cancellations; }
    void rotate_V(double, double) { ++m_V; }
    void rotate_U(double, double) { ++m_U; }
    void negate_V(std::size_t) { ++m_negated; }
};

struct Outcome {
    Raised raised;
    std::vector<double> w;
    Counted counted;
};

Outcome diagonalised(std::vector<double> w, std::vector<double> e, double negligible)
{
    Outcome outcome;
    const Bidiagonal B{.m_n = w.size(), .m_w = w.data(), .m_e = e.data(), .m_negligible = negligible};
    outcome.raised = raised_by([&] { native::diagonalise(B, outcome.counted); });
    outcome.w = w;
    return outcome;
}

TEST(BidiagonalQr, NothingToIterate)
{
    const Outcome outcome = diagonalised({3, -0.0, -2, 5}, {0, 1e-20, 0, -1e-20}, 1e-16);
    EXPECT_EQ(outcome.w, (std::vector<double>{3, 0, 2, 5})); // -0 is not below zero, and equals 0
    EXPECT_TRUE(std::signbit(outcome.w[1]));
    EXPECT_EQ(outcome.counted.m_sweeps + outcome.counted.m_cancellations, 0);
    EXPECT_EQ(outcome.counted.m_negated, 1);
}

TEST(BidiagonalQr, AnElementAtTheToleranceIsNegligible)
{
    EXPECT_EQ(diagonalised({1, 1}, {0, 0.25}, 0.25).counted.m_sweeps, 0);
    EXPECT_GT(diagonalised({1, 1}, {0, 0.25}, 0.2499).counted.m_sweeps, 0);
    // the diagonal element above is looked at after the superdiagonal one
    EXPECT_EQ(diagonalised({0.25, 1}, {0, 0.25}, 0.25).counted.m_cancellations, 0);
    EXPECT_EQ(diagonalised({0.25, 1}, {0, 0.5}, 0.25).counted.m_cancellations, 1);
}

TEST(BidiagonalQr, CancellationRotatesAlongTheRowUntilWhatIsLeftIsNegligible)
{
    // Row 0 has no diagonal element: 3 over 4 becomes 5, and -s * e(2) goes on to the next column.
    const Outcome outcome = diagonalised({0, 4, 12}, {0, 3, 0}, 1e-16);
    EXPECT_EQ(outcome.w, (std::vector<double>{0, 5, 12}));
    EXPECT_EQ(outcome.counted.m_cancellations, 1);
    EXPECT_EQ(outcome.counted.m_U, 1);
    EXPECT_EQ(outcome.counted.m_V, 0);
}

TEST(BidiagonalQr, SquaresThatOverflowAreRefusedInCancellationAndSweep)
{
    const Raised overflow{.message = "overflow", .index = -1};
    struct Case {
        const char* name;
        std::vector<double> w, e;
    };
    const Case cases[] = {
        {.name = "cancellation, the element rotated away", .w = {0, 1}, .e = {0, 1e160}},
        {.name = "cancellation, the diagonal", .w = {0, 1e160}, .e = {0, 1e150}},
        {.name = "sweep", .w = {1e160, 2e160}, .e = {0, 1e160}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(diagonalised(c.w, c.e, 1e100).raised, overflow) << c.name;
    // Both finite, their sum is not: that is a matter of flags.
    EXPECT_EQ(native::rotation_length(1.3e154, 1.3e154), std::numeric_limits<double>::infinity());
    EXPECT_EQ(native::rotation_length(3e153, 4e153), 5e153);
    EXPECT_EQ(raised_by([] { native::rotation_length(1.0, 1.4e154); }), overflow);
    EXPECT_EQ(raised_by([] { native::rotation_length(-1.4e154, 1.0); }), overflow);
}

TEST(BidiagonalQr, GivesUpAfter100SweepsForOneValue)
{
    const Outcome outcome = diagonalised({1, nan}, {0, 1}, 1e-16);
    EXPECT_EQ(outcome.raised, (Raised{.message = "too many iterations", .index = -1}));
    EXPECT_EQ(outcome.counted.m_sweeps, 100);
    EXPECT_EQ(outcome.counted.m_V, 100); // one rotation a sweep
    EXPECT_EQ(outcome.counted.m_U, 100);
}

TEST(BidiagonalQr, AToleranceThatIsNaNEndsTheSplittingSearchAtTheTop)
{
    std::vector<double> w{1, 2, 3};
    std::vector<double> e{0, 1, 1};
    const Bidiagonal B{.m_n = 3, .m_w = w.data(), .m_e = e.data(), .m_negligible = nan};
    const native::Split split = native::splitting_search(B, 2);
    EXPECT_EQ(split.m_l, 0U);
    EXPECT_FALSE(split.m_cancel);
    EXPECT_EQ(diagonalised(w, e, nan).raised, (Raised{.message = "too many iterations", .index = -1}));
    EXPECT_EQ(diagonalised({-7}, {0}, nan).w, (std::vector<double>{7}));
}

} // namespace
