// What holds for the singular value decomposition, the generalised inverse and the rank of any matrix.
#include "bailuxsko/kernels/svd.hpp"

#include "bailuxsko/kernels/rank.hpp"
#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/raises.hpp"
#include "tests/support/residuals.hpp"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::judge;
using support::Matrix;
using support::Wide;

/// Square ones and tall ones, as the decomposition takes them; of those outside it, whose squares leave the range of
/// numbers, nothing is expected but an error.
template <class Check>
void for_square_and_tall(std::uint32_t largest, Check check)
{
    gen::for_all({gen::real_kinds}, largest, [&](const gen::Kind& kind, std::uint32_t m, const Matrix& A) {
        for (const std::uint32_t n : {m, m - m / 3, m / 2}) {
            Matrix part = gen::leading(A, m, n);
            aMatrix record = part.record();
            const Wide::Real norm = norm1(Wide::of(&record));
            if (n > 0 && norm < 1e100L && norm > 1e-100L)
                check(kind, part);
        }
    });
}

/// U, w and V; on a copy of A.
struct Decomposition {
    Decomposition(const Matrix& source) : copy(source), n(source.cols()), V(n, n), w(n, 1)
    {
        aMatrix U = copy.record();
        aMatrix V_record = V.record();
        aMatrix w_record = w.record();
        EfiCallContext ctx;
        native::svd_decompose(&ctx, &U, &V_record, &w_record);
    }
    std::vector<double> values()
    {
        const aMatrix record = w.record();
        return support::real(&record);
    }

    Matrix copy;
    std::uint32_t n;
    Matrix V;
    Matrix w;
};

std::vector<double> singular_values(Matrix A)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    native::svd_values(&ctx, &record);
    std::vector<double> values(A.cols());
    for (std::uint32_t k = 0; k < A.cols(); ++k)
        values[k] = A.re(k, k);
    return values;
}

void expect_descending(const std::vector<double>& values, const char* kind)
{
    EXPECT_TRUE(std::is_sorted(values.rbegin(), values.rend())) << kind;
    EXPECT_GE(values.back(), 0.0) << kind;
}

TEST(SvdProperty, UTimesWTimesVIsA)
{
    for_square_and_tall(300, [](const gen::Kind& kind, Matrix A) {
        const auto measured = [&](const char* function, const char* residual) {
            return support::Measured{.function = function, .residual = residual, .kind = kind.name, .n = A.cols()};
        };
        Decomposition svd(A);
        const std::vector<double> values = svd.values();
        expect_descending(values, kind.name);
        const aMatrix a = A.record();
        const aMatrix u = svd.copy.record();
        const aMatrix v = svd.V.record();
        const Wide U = Wide::of(&u);
        const Wide V = Wide::of(&v);
        Wide Uw = U;
        for (std::uint32_t j = 0; j < A.cols(); ++j)
            for (std::uint32_t i = 0; i < A.rows(); ++i)
                Uw.re(i, j) *= values[j];
        judge(measured("svd", "A - U*W*V'"), support::residual_product(Wide::of(&a), Uw, V.adjoint()));
        judge(measured("svd", "I - V'*V"), support::residual_orthogonal(V));
        judge(measured("svd", "I - U'*U"), support::residual_orthogonal(U));
        const std::vector<double> alone = singular_values(A);
        expect_descending(alone, kind.name);
        judge(measured("svd", "w - w without vectors"), support::residual_values(alone, values));
    });
}

/// Singular values that are known, with the rank they make.
struct Spectrum {
    const char* kind;
    std::vector<double> (*values)(std::size_t n);
    std::uint32_t (*rank)(std::uint32_t n);
};
constexpr auto full = [](std::uint32_t n) { return n; };
constexpr Spectrum spectra[] = {
    {.kind = "graded", .values = gen::graded_values, .rank = full},
    {.kind = "clustered", .values = gen::clustered_values, .rank = full},
    {.kind = "rank-deficient", .values = gen::deficient_values, .rank = [](std::uint32_t n) { return (n + 1) / 2; }},
};

TEST(SvdProperty, KnownSingularValuesAndRanksAreMet)
{
    for (const Spectrum& spectrum : spectra)
        for (const std::uint32_t n : gen::sizes)
            for (const std::uint32_t m : {n, n + 3, 2 * n}) {
                gen::Random random(n + m);
                const std::vector<double> expected = spectrum.values(n);
                Matrix A = gen::with_singular_values(m, n, expected, false, random);
                judge({.function = "rank", .residual = "w - known w", .kind = spectrum.kind, .n = n},
                      support::residual_values(singular_values(A), expected));
                Matrix wide = gen::with_singular_values(n, m, expected, false, random);
                for (Matrix* const matrix : {&A, &wide}) {
                    EfiCallContext ctx;
                    const aMatrix record = matrix->record();
                    EXPECT_EQ(native::rank(&ctx, &record), spectrum.rank(n)) << spectrum.kind << ' ' << m << ' ' << n;
                }
            }
}

TEST(SvdProperty, KnownRanksOfTheClassics)
{
    const auto rank = [](Matrix A) {
        EfiCallContext ctx;
        const aMatrix record = A.record();
        return native::rank(&ctx, &record);
    };
    EXPECT_EQ(rank(gen::rosser()), 7U);
    EXPECT_EQ(rank(gen::wilkinson(21)), 21U);
    EXPECT_EQ(rank(gen::second_difference(129)), 129U);
    EXPECT_EQ(rank(gen::frank(10)), 10U);
    EXPECT_EQ(rank(gen::hilbert(8)), 8U);
    EXPECT_EQ(rank(gen::from(50, 30, [](std::size_t, std::size_t) { return 0.1; })), 1U);
    EXPECT_EQ(rank(gen::from(30, 50, [](std::size_t, std::size_t) { return 0.0; })), 0U);
}

TEST(SvdProperty, KnownSingularValuesAreMetAtAnyScaleThatSquaresAllow)
{
    for (const double scale : {1e150, 1e-150, 1e-290})
        for (const std::uint32_t n : gen::sizes) {
            gen::Random random(n);
            std::vector<double> values(n);
            for (std::uint32_t k = 0; k < n; ++k)
                values[k] = 1.0 + 1.0 / (k + 1.0);
            const Matrix A = gen::scaled(gen::with_singular_values(n, n, values, false, random), scale);
            for (double& value : values)
                value *= scale;
            const char* const kind = scale > 1.0      ? "well-conditioned, times 1e150"
                                     : scale > 1e-200 ? "well-conditioned, times 1e-150"
                                                      : "well-conditioned, times 1e-290";
            judge({.function = "rank", .residual = "w - known w", .kind = kind, .n = n},
                  support::residual_values(singular_values(A), values));
        }
}

TEST(GeninvProperty, MeetsTheConditionsOfMooreAndPenrose)
{
    for_square_and_tall(129, [](const gen::Kind& kind, Matrix A) {
        aMatrix record = A.record();
        const std::vector<double> values = singular_values(A);
        const double negligible = 1e-13 * values.front();
        // A value that is hardly negligible or hardly not is as well kept as dropped, and left out.
        if (std::any_of(values.begin(), values.end(),
                        [&](double w) { return w > 1e-2 * negligible && w < 1e2 * negligible; }))
            return;
        EfiCallContext ctx;
        const aMatrix* const X = native::geninv(&ctx, &record, negligible);
        judge({.function = "geninv", .residual = "conditions of Moore and Penrose", .kind = kind.name, .n = A.cols()},
              support::residual_pseudoinverse(Wide::of(&record), Wide::of(X)));
    });
}

} // namespace
