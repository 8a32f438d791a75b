// What holds for the eigenvalues of any matrix, and for the eigenvectors that inverse iteration finds to them.
#include "bailuxsko/kernels/comeval.hpp"

#include "bailuxsko/kernels/inverse_iteration.hpp"
#include "tests/support/eigen_residual.hpp"
#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/residuals.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::judge;
using support::Matrix;
using support::Wide;

using Eigenvalues = std::vector<std::complex<double>>;

/// In the order of the routine, which overwrites the copy that it gets.
Eigenvalues eigenvalues_of(Matrix A)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    aVector* result = nullptr;
    native::comeval(&ctx, &record, &result);
    Eigenvalues values(A.rows());
    for (std::uint32_t k = 0; k < A.rows(); ++k)
        values[k] = {result->m_rv[k], result->m_iv[k]};
    return values;
}

/// A few of many stand for all.
std::size_t stride(std::size_t n)
{
    return 1 + n / 8;
}

TEST(EigenvalueProperty, EachIsThatOfANearbyMatrix)
{
    gen::for_all(
        {gen::real_kinds, gen::complex_kinds, gen::hermitian_kinds}, 129,
        [](const gen::Kind& kind, std::uint32_t n, Matrix A) {
            const auto measured = [&](const char* function, const char* residual) {
                return support::Measured{.function = function, .residual = residual, .kind = kind.name, .n = n};
            };
            aMatrix record = A.record();
            const Wide W = Wide::of(&record);
            const Eigenvalues values = eigenvalues_of(A);
            const support::EigenvalueResidual residual(W);
            for (std::size_t k = 0; k < n; k += stride(n))
                judge(measured("comeval", "A*v - z*v"), residual(values[k].real(), values[k].imag()));
            Wide trace(1, 1, true);
            for (std::uint32_t k = 0; k < n; ++k) {
                trace.re(0, 0) += W.re(k, k) - values[k].real();
                trace.im(0, 0) += W.im(k, k) - values[k].imag();
            }
            judge(measured("comeval", "trace - sum of the eigenvalues"), support::ratio(norm1(trace), n, norm1(W)));
        });
}

/// v^H * A * v for a vector of length 1: the number whose eigenvector v is nearest to being.
Wide rayleigh_quotient(const Wide& A, const Wide& v)
{
    Wide quotient(1, 1, true);
    const Wide product = v.adjoint() * (A * v);
    quotient.re(0, 0) = product.re(0, 0);
    quotient.im(0, 0) = product.im(0, 0);
    return quotient;
}

// The diagonal is shifted by 1e-12 and a solution has to grow a hundredfold, whatever the size of A: so A must not be
// small beside 1e-12, nor its rounding beside 1/100. An eigenvalue may be as far off as A's are ill-conditioned: a
// vector is judged by the number that it belongs to best. Where eigenvectors nearly agree, refinement after the first
// solution moves away from them (Peters and Wilkinson, Inverse iteration, ill-conditioned equations and Newton's
// method, SIAM Review 21, 1979).
TEST(EigenvecProperty, IsAnEigenvectorOfLengthOne)
{
    const auto check = [](const gen::Kind& kind, std::uint32_t n, Matrix A) {
        aMatrix record = A.record();
        const Wide W = Wide::of(&record);
        if (norm1(W) < 1e-2L || norm1(W) > 1e10L || kind.nearly_defective)
            return;
        const Eigenvalues values = eigenvalues_of(A);
        for (std::size_t k = 0; k < n; k += stride(n)) {
            aComplex z{.m_re = values[k].real(), .m_im = values[k].imag()};
            EfiCallContext ctx;
            const Wide v = Wide::of(native::eigenvec(&ctx, &record, &z));
            const Wide::Real length = std::sqrt((v.adjoint() * v).re(0, 0));
            EXPECT_NEAR(static_cast<double>(length), 1.0, 1e-14) << kind.name << ", n = " << n;
            const Wide quotient = rayleigh_quotient(W, v);
            judge({.function = "eigenvec", .residual = "A*v - r*v, r = v'*A*v", .kind = kind.name, .n = n},
                  support::residual_eigenvector(W, v, quotient.re(0, 0), quotient.im(0, 0)));
        }
    };
    gen::for_all({gen::real_kinds, gen::complex_kinds, gen::hermitian_kinds}, 65, check);
}

/// The real parts of the eigenvalues, ascending.
std::vector<double> real_parts(const Eigenvalues& values)
{
    std::vector<double> parts;
    for (const std::complex<double>& value : values)
        parts.push_back(value.real());
    std::sort(parts.begin(), parts.end());
    return parts;
}

TEST(EigenvalueProperty, KnownOnesAreMet)
{
    const auto judge_known = [](const char* kind, const Matrix& A, std::vector<double> expected) {
        std::sort(expected.begin(), expected.end());
        judge({.function = "comeval", .residual = "error over the largest", .kind = kind, .n = A.rows()},
              support::residual_values(real_parts(eigenvalues_of(A)), expected));
    };
    judge_known("Rosser", gen::rosser(), gen::eigenvalues_of_rosser());
    judge_known("Rosser with phases", gen::with_phases(gen::rosser()), gen::eigenvalues_of_rosser());
    for (const std::uint32_t n : gen::sizes) {
        if (n > 129)
            continue;
        for (const bool complex : {false, true}) {
            gen::Random random(n);
            judge_known("graded", gen::with_eigenvalues(gen::graded_values(n), complex, random), gen::graded_values(n));
            judge_known("clustered", gen::with_eigenvalues(gen::clustered_values(n), complex, random),
                        gen::clustered_values(n));
        }
    }
}

} // namespace
