// Eigenvalues of Hermitian matrices on records: known ones, their order, refusals, the limit of steps.
#include "bailuxsko/kernels/hermitian.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;

std::vector<double> eigenvalues(Matrix A)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    std::vector<double> values(A.rows());
    native::herm_eigenvalues(&ctx, &record, values.data());
    return values;
}

Raised refusal(const aMatrix& A)
{
    return support::raised_by([&] {
        EfiCallContext ctx;
        aMatrix record = A;
        std::vector<double> values(A.m_rows + std::size_t{1});
        native::herm_eigenvalues(&ctx, &record, values.data());
    });
}

void expect_near(const std::vector<double>& found, const std::vector<double>& expected, double bound, const char* name)
{
    ASSERT_EQ(found.size(), expected.size()) << name;
    for (std::size_t i = 0; i < found.size(); ++i)
        EXPECT_NEAR(found[i], expected[i], bound) << name << ", eigenvalue " << i;
}

TEST(HermEigenvalues, ByHand)
{
    struct Case {
        const char* name;
        Matrix A;
        std::vector<double> eigenvalues;
    };
    const Case cases[] = {
        {.name = "one element", .A = Matrix::complex({{-3}}, {{0}}), .eigenvalues = {-3}},
        {.name = "2 by 2", .A = Matrix::complex({{2, 0}, {0, 2}}, {{0, 1}, {-1, 0}}), .eigenvalues = {1, 3}},
        {.name = "diagonal, put in order",
         .A = Matrix::complex({{5, 0, 0}, {0, -1, 0}, {0, 0, 2}}, {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}),
         .eigenvalues = {-1, 2, 5}},
        {.name = "symmetric, without an imaginary array",
         .A = {{2, -1, 0}, {-1, 2, -1}, {0, -1, 2}},
         .eigenvalues = {2 - std::numbers::sqrt2, 2, 2 + std::numbers::sqrt2}},
        {.name = "i times a skew-symmetric matrix: 0 and the length of (1, 2, 2)",
         .A = Matrix::complex({{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}, {{0, -2, 2}, {2, 0, -1}, {-2, 1, 0}}),
         .eigenvalues = {-3, 0, 3}},
        {.name = "zero", .A = {{0, 0}, {0, 0}}, .eigenvalues = {0, 0}},
        {.name = "all ones", .A = {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, .eigenvalues = {0, 0, 3}},
    };
    for (const Case& c : cases)
        expect_near(eigenvalues(c.A), c.eigenvalues, 1e-15 * 10, c.name);
}

/// The second difference with phases: 2 on the diagonal, -e^(i * angle) above it. Its eigenvalues are
/// 4 sin^2(k * pi / (2 n + 2)), whatever the angle.
Matrix second_difference(std::uint32_t n, double angle)
{
    Matrix A(n, n, n + 1);
    A.make_complex();
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i) {
            const bool beside = i + 1 == j || j + 1 == i;
            A.re(i, j) = i == j ? 2.0 : beside ? -std::cos(angle) : 0.0;
            A.im(i, j) = !beside ? 0.0 : i < j ? -std::sin(angle) : std::sin(angle);
        }
    return A;
}

TEST(HermEigenvalues, OfTheSecondDifferenceWithPhases)
{
    for (const std::uint32_t n : {1U, 2U, 3U, 8U, 50U, 129U})
        for (const double angle : {0.0, 0.7, 2.0}) {
            std::vector<double> expected(n);
            for (std::uint32_t k = 1; k <= n; ++k) {
                const double s = std::sin(k * std::numbers::pi / (2.0 * n + 2.0));
                expected[k - 1] = 4.0 * s * s;
            }
            expect_near(eigenvalues(second_difference(n, angle)), expected, 4.0 * n * 2.2e-16, "second difference");
        }
}

Matrix hermitian(std::uint32_t n, std::uint32_t ld, support::Random& random)
{
    Matrix A = support::draw(support::kinds[0], n, ld, true, random);
    for (std::uint32_t j = 0; j < n; ++j) {
        A.im(j, j) = 0.0;
        for (std::uint32_t i = 0; i < j; ++i) {
            A.re(j, i) = A.re(i, j);
            A.im(j, i) = -A.im(i, j);
        }
    }
    return A;
}

TEST(HermEigenvalues, AscendWithTheTraceAsTheirSum)
{
    support::Random random(5);
    for (const std::uint32_t n : {2U, 7U, 33U, 100U}) {
        Matrix A = hermitian(n, n + 2, random);
        double trace = 0.0;
        for (std::uint32_t i = 0; i < n; ++i)
            trace += A.re(i, i);
        const std::vector<double> values = eigenvalues(A);
        EXPECT_TRUE(std::is_sorted(values.begin(), values.end())) << n;
        EXPECT_LT(values.front(), 0.0) << "the smallest, not the one of least magnitude";
        double sum = 0.0;
        for (const double value : values)
            sum += value;
        EXPECT_NEAR(sum, trace, 1e-15 * n * n) << n;
    }
}

class HermEigenvaluesBits : public support::AtLevel {};

TEST_P(HermEigenvaluesBits, AreThoseOfTheBaseline)
{
    support::Random random(6);
    for (const std::uint32_t n : {2U, 5U, 31U, 64U, 90U}) {
        const Matrix A = hermitian(n, n, random);
        const std::vector<double> here = eigenvalues(A);
        native::kernel_level = native::Level::baseline;
        EXPECT_EQ(here, eigenvalues(A)) << n;
        native::kernel_level = GetParam();
    }
}

INSTANTIATE_TEST_SUITE_P(Levels, HermEigenvaluesBits, support::every_level(), support::level_name);

TEST(HermEigenvalues, Refusals)
{
    double element = 1.0;
    const auto record = [&](std::uint32_t rows, std::uint32_t cols, double* real) {
        return aMatrix{
            .m_anr = rows, .m_tag = aMatrix::tag, .m_rows = rows, .m_cols = cols, .m_rv = real, .m_iv = nullptr};
    };
    EXPECT_EQ(refusal(record(0, 0, &element)), (Raised{"invalid dimension", -1}));
    EXPECT_EQ(refusal(record(0, 3, &element)), (Raised{"invalid dimension", -1}));
    EXPECT_EQ(refusal(record(3, 0, &element)), (Raised{"invalid dimension", -1}));
    EXPECT_EQ(refusal(record(1, 2, &element)), (Raised{"must be square", -1}));
    EXPECT_EQ(refusal(record(2, 1, &element)), (Raised{"must be square", -1}));
    EXPECT_EQ(refusal(record(1, 1, nullptr)), (Raised{"unknown error", -1}));
}

// Nothing converges where there is a NaN: the 31st step for one eigenvalue is refused, and the search for a negligible
// element stays inside the matrix.
TEST(HermEigenvalues, TheThirtyFirstStepIsRefused)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double x : {nan, std::numeric_limits<double>::infinity()})
        for (Matrix A : {Matrix{{1, x}, {x, 1}}, Matrix{{1, x, 0}, {x, 1, 2}, {0, 2, 1}},
                         Matrix::complex({{1, 0, 3}, {0, 1, 0}, {3, 0, 1}}, {{0, x, 0}, {-x, 0, 0}, {0, 0, 0}})}) {
            const Raised raised = refusal(A.record());
            EXPECT_TRUE(raised.message.empty() || raised == (Raised{"too many iterations", -1})) << raised;
            if (std::isnan(x)) {
                EXPECT_EQ(raised, (Raised{"too many iterations", -1}));
            }
        }
}

TEST(HermEigenvalues, RunOutOfMemoryCleanly)
{
    support::Random random(9);
    const Matrix source = hermitian(40, 40, random);
    const std::size_t requests =
        support::fails_at_every_request<Efi::NativeError>([&] { EXPECT_EQ(eigenvalues(source).size(), 40U); });
    EXPECT_GE(requests, 5U);
}

} // namespace
