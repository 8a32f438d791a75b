// What holds for the eigenvalues and eigenvectors that LAPACK finds, whole calls on host values.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/eigenvalues.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/eigen_residual.hpp"
#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/residuals.hpp"
#include "tests/support/values.hpp"
#include "tests/support/wide_values.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::judge;
using support::Matrix;
using support::Measured;
using support::value_of;
using support::Wide;
using support::wide;

constexpr std::uint32_t largest = 65;

void expect_descending(const Wide& values, const char* kind)
{
    for (std::size_t k = 1; k < values.rows(); ++k)
        EXPECT_GE(values.re(k - 1, 0), values.re(k, 0)) << kind;
}

/// A * v - z * B * v of every column v and its eigenvalue z, against the norms of all; the worst. B may be null, for
/// the identity. Of left vectors both matrices are the adjoint ones, and the eigenvalues the conjugates.
double worst_vector(const Wide& A, const Wide* B, const Wide& V, const Wide& values, bool left)
{
    const auto turned = [&](const Wide& M) { return left ? M.adjoint() : M; };
    const Wide AV = turned(A) * V;
    const Wide BV = B != nullptr ? turned(*B) * V : V;
    const Wide::Real norm_B = B != nullptr ? norm1(*B) : 1.0L;
    double worst = 0.0;
    for (std::size_t j = 0; j < V.cols(); ++j) {
        const Wide::Real z_re = values.re(j, 0);
        const Wide::Real z_im = left ? -values.im(j, 0) : values.im(j, 0);
        Wide off(V.rows(), 1, true);
        Wide v(V.rows(), 1, true);
        for (std::size_t i = 0; i < V.rows(); ++i) {
            v.re(i, 0) = V.re(i, j);
            v.im(i, 0) = V.im(i, j);
            off.re(i, 0) = AV.re(i, j) - (z_re * BV.re(i, j) - z_im * BV.im(i, j));
            off.im(i, 0) = AV.im(i, j) - (z_re * BV.im(i, j) + z_im * BV.re(i, j));
        }
        const Wide::Real size = norm1(A) + std::sqrt(z_re * z_re + z_im * z_im) * norm_B;
        worst = std::max(worst, support::ratio(norm1(off), A.rows(), size * norm1(v)));
    }
    return worst;
}

/// LAPACK's general routines balance a matrix first. Its vectors are exact for the balanced matrix, and scaling them
/// back enlarges what is left (Watkins, A case where balancing is harmful, ETNA 23, 2006).
constexpr double bound_of_badly_scaled = 1000.0;

TEST(EigenDriverProperty, VectorsAndValuesBelongTogether)
{
    const auto check = [](const gen::Kind& kind, std::uint32_t, const Matrix& A) {
        const std::uint32_t n = A.rows(); // some kinds have fewer than the size asks for
        if (n == 1)
            return; // refused
        const auto measured = [&](const char* function, const char* residual) {
            return Measured{.function = function, .residual = residual, .kind = kind.name, .n = n};
        };
        const Handle M = value_of(A);
        const Wide W = wide(M);
        const Wide values = wide(Efi::IntelMKL::eigenvals(M));
        expect_descending(values, kind.name);
        const support::EigenvalueResidual residual(W);
        for (std::size_t k = 0; k < n; k += 1 + n / 8)
            judge(measured("eigenvals", "A*v - z*v"), residual(values.re(k, 0), values.im(k, 0)));
        const Wide V = wide(Efi::IntelMKL::eigenvecs(M, nullptr));
        const double right = worst_vector(W, nullptr, V, values, false);
        const Wide L = wide(Efi::IntelMKL::eigenvecs(M, Qud::StrVal::make("L")));
        const double left = worst_vector(W, nullptr, L, values, true);
        if (kind.badly_scaled) {
            judge(measured("eigenvecs", "A*v - z*v, badly scaled"), std::max(left, right), bound_of_badly_scaled);
        } else {
            judge(measured("eigenvecs", "A*v - z*v"), right);
            judge(measured("eigenvecs", "left: v'*A - z*v'"), left);
        }
        if (!values.is_complex()) // symmetric or Hermitian
            judge(measured("eigenvecs", "I - V'*V"), support::residual_orthogonal(V));
    };
    gen::for_all({gen::real_kinds, gen::complex_kinds, gen::hermitian_kinds, gen::positive_definite_kinds}, largest,
                 check);
}

TEST(GeneralisedEigenDriverProperty, VectorsAndValuesBelongTogether)
{
    const auto check = [](const gen::Kind& kind, std::uint32_t n, const Matrix& A) {
        if (n == 1)
            return; // refused
        const auto measured = [&](const char* function, const char* residual) {
            return Measured{.function = function, .residual = residual, .kind = kind.name, .n = n};
        };
        const Handle M = value_of(A);
        const Handle definite = value_of(A.is_complex() ? gen::with_phases(gen::lehmer(n)) : gen::lehmer(n));
        for (const Handle& B : {definite, matrices::random_real(n, n, n)}) {
            const Wide W = wide(M);
            const Wide WB = wide(B);
            const Wide values = wide(Efi::IntelMKL::genvals(M, B));
            expect_descending(values, kind.name);
            const Wide V = wide(Efi::IntelMKL::genvecs(M, B, nullptr));
            judge(measured("genvecs", "A*v - z*B*v"), worst_vector(W, &WB, V, values, false));
            const Wide L = wide(Efi::IntelMKL::genvecs(M, B, Qud::StrVal::make("L")));
            judge(measured("genvecs", "left: v'*A - z*v'*B"), worst_vector(W, &WB, L, values, true));
        }
    };
    gen::for_all({gen::real_kinds, gen::complex_kinds}, largest, check);
}

} // namespace
