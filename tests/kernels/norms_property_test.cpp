// Norms against sums in extended precision and known singular values; eigenvalues of Hermitian matrices that are known.
#include "bailuxsko/kernels/norms.hpp"

#include "bailuxsko/kernels/hermitian.hpp"
#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/residuals.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::judge;
using support::Matrix;
using support::Wide;

TEST(NormsProperty, AreTheSumsOfExtendedPrecision)
{
    gen::for_all({gen::real_kinds, gen::complex_kinds}, 300, [&](const gen::Kind& kind, std::uint32_t n, Matrix A) {
        aMatrix record = A.record();
        EfiCallContext ctx;
        const Wide W = Wide::of(&record);
        const auto difference = [&](double found, Wide::Real exact) {
            return support::ratio(std::fabs(found - exact), n, exact);
        };
        const auto measured = [&](const char* function) {
            return support::Measured{.function = function, .residual = "relative error", .kind = kind.name, .n = n};
        };
        judge(measured("norm1"), difference(native::norm1(&ctx, &record), norm1(W)));
        judge(measured("normi"), difference(native::normi(&ctx, &record), norm1(W.adjoint())));
        Wide::Real square = 0.0L;
        for (std::size_t j = 0; j < n; ++j)
            for (std::size_t i = 0; i < n; ++i)
                square += W.re(i, j) * W.re(i, j) + W.im(i, j) * W.im(i, j);
        if (square < 1e300L && square > 1e-280L) // nothing is scaled
            judge(measured("norme"), difference(native::norme(&ctx, &record), std::sqrt(square)));
    });
}

/// Values that are known, at every size.
struct Spectrum {
    const char* kind;
    std::vector<double> (*values)(std::size_t n);
};
constexpr Spectrum spectra[] = {
    {.kind = "graded", .values = gen::graded_values},
    {.kind = "clustered", .values = gen::clustered_values},
    {.kind = "rank-deficient", .values = gen::deficient_values},
    {.kind = "both signs",
     .values =
         [](std::size_t n) {
             std::vector<double> values(n);
             for (std::size_t k = 0; k < n; ++k)
                 values[k] = (k % 2 == 0 ? 1.0 : -1.0) * static_cast<double>(k + 1);
             return values;
         }},
};

TEST(NormsProperty, SpectralNormIsTheLargestSingularValue)
{
    for (const Spectrum& spectrum : spectra)
        for (const std::uint32_t n : gen::sizes)
            for (const bool complex : {false, true}) {
                gen::Random random(n);
                const std::vector<double> values = spectrum.values(n);
                double largest = 0.0;
                for (const double value : values)
                    largest = std::max(largest, std::fabs(value));
                for (const double scale : {1.0, complex ? 1e70 : 1e120, complex ? 1e-70 : 1e-150}) {
                    Matrix A = gen::scaled(gen::with_singular_values(n, n, values, complex, random), scale);
                    aMatrix record = A.record();
                    EfiCallContext ctx;
                    const Wide::Real expected = Wide::Real{largest} * scale;
                    judge({.function = complex ? "norm2, complex" : "norm2",
                           .residual = "relative error",
                           .kind = spectrum.kind,
                           .n = n},
                          support::ratio(std::fabs(native::norm2(&ctx, &record) - expected), n, expected));
                }
            }
}

void judge_eigenvalues(const char* kind, Matrix A, std::vector<double> expected)
{
    std::sort(expected.begin(), expected.end());
    aMatrix record = A.record();
    EfiCallContext ctx;
    std::vector<double> found(A.rows());
    native::herm_eigenvalues(&ctx, &record, found.data());
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end())) << kind;
    judge({.function = "Hermitian eigenvalues", .residual = "error over the largest", .kind = kind, .n = A.rows()},
          support::residual_values(found, expected));
}

TEST(HermEigenvaluesProperty, MeetsKnownOnes)
{
    for (const Spectrum& spectrum : spectra)
        for (const std::uint32_t n : gen::sizes)
            for (const bool complex : {false, true}) {
                gen::Random random(n);
                judge_eigenvalues(spectrum.kind, gen::with_eigenvalues(spectrum.values(n), complex, random),
                                  spectrum.values(n));
            }
    judge_eigenvalues("Rosser", gen::rosser(), gen::eigenvalues_of_rosser());
    judge_eigenvalues("Rosser with phases", gen::with_phases(gen::rosser()), gen::eigenvalues_of_rosser());
}

TEST(HermEigenvaluesProperty, MeetsThoseOfTheSecondDifferenceAtAnyScale)
{
    for (const std::uint32_t n : gen::sizes)
        for (const double scale : {1.0, 1e140, 1e-140}) {
            std::vector<double> expected(n);
            for (std::uint32_t k = 0; k < n; ++k) {
                const long double s = std::sin((k + 1.0L) * std::numbers::pi_v<long double> / (2.0L * n + 2.0L));
                expected[k] = static_cast<double>(4.0L * s * s * scale);
            }
            judge_eigenvalues(scale == 1.0 ? "second difference" : "second difference, times 1e140 or 1e-140",
                              gen::scaled(gen::second_difference(n), scale), expected);
        }
}

} // namespace
