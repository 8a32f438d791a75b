// Residuals, orthogonality and order of the eigenvalue functions over the gallery of matrices, judged as LAPACK's own
// tests judge them.
#include "bailuxsko/eigenvalues.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/gallery_kinds.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>

namespace {

namespace IntelMKL = Efi::IntelMKL;
using matrices::Complex;
using matrices::Dense;
using Qud::Handle;
using Qud::matrix_of;

constexpr double usual_bound = 30.0;
/// LAPACK balances a general matrix first, and what is small beside the balanced one is less so beside a matrix whose
/// rows lie 2^40 apart. NumPy's eig leaves as much.
constexpr double bound_of_unlike_rows = 1000.0;
constexpr std::uint32_t largest = 65;

double bound_of(std::string_view kind)
{
    return kind.ends_with("badly scaled rows") ? bound_of_unlike_rows : usual_bound;
}

Handle host_matrix(support::Matrix A)
{
    if (A.is_complex())
        return matrices::generate(A.rows(), A.cols(), [&](auto i, auto j) { return Complex(A.re(i, j), A.im(i, j)); });
    return matrices::generate(A.rows(), A.cols(), [&](auto i, auto j) { return A.re(i, j); });
}

/// Column j of A as a matrix.
Dense column(const Dense& A, std::size_t j)
{
    Dense v(A.rows(), 1);
    for (std::size_t i = 0; i < A.rows(); ++i)
        v.at(i, 0) = A.at(i, j);
    return v;
}

Dense times(Dense A, Complex factor)
{
    for (std::size_t j = 0; j < A.cols(); ++j)
        for (std::size_t i = 0; i < A.rows(); ++i)
            A.at(i, j) *= factor;
    return A;
}

/// The largest norm1(A v - lambda B v) / (n eps (norm1(A) + |lambda| norm1(B)) norm1(v)) of all pairs; eigenvalues that
/// stand for infinite ones are judged by norm1(B v) / (n eps norm1(B) norm1(v)).
double worst_residual(const Dense& A, const Dense& B, const Dense& values, const Dense& vectors)
{
    const double unit = static_cast<double>(A.rows()) * matrices::eps;
    double worst = 0.0;
    for (std::size_t j = 0; j < A.cols(); ++j) {
        const Complex lambda = values.at(j, 0);
        const Dense v = column(vectors, j);
        const Dense Bv = B * v;
        const bool is_infinite = std::fabs(lambda.real()) == std::numeric_limits<double>::max();
        const Dense rest = is_infinite ? Bv : A * v - times(Bv, lambda);
        const double scale = is_infinite ? B.norm1() : A.norm1() + std::abs(lambda) * B.norm1();
        worst = std::max(worst, scale == 0.0 ? rest.norm1() : rest.norm1() / (unit * scale * v.norm1()));
    }
    return worst;
}

bool is_ordered(const Handle& values)
{
    const Qud::MatVal& w = *matrix_of(values);
    for (std::size_t i = 1; i < w.Rows(); ++i)
        if (!(w.real(i - 1, 0) >= w.real(i, 0)))
            return false;
    return true;
}

void expect_eigen(const char* kind, const Handle& M)
{
    const Dense A(M);
    const std::size_t n = A.rows();
    const Handle values = IntelMKL::eigenvals(M);
    const Dense V(IntelMKL::eigenvecs(M, nullptr));
    EXPECT_TRUE(is_ordered(values)) << kind << ", " << n;
    EXPECT_LT(worst_residual(A, Dense::identity(n), Dense(values), V), bound_of(kind)) << kind << ", " << n;
    if (matrix_of(values)->HasImag())
        return;
    // Symmetric or Hermitian: the columns are orthonormal.
    const double away = (V.conjugate_transpose() * V - Dense::identity(n)).norm1();
    EXPECT_LT(away / (static_cast<double>(n) * matrices::eps), usual_bound) << kind << ", " << n;
}

TEST(EigenGallery, OneMatrix)
{
    gen::for_all({gen::real_kinds, gen::complex_kinds, gen::hermitian_kinds, gen::positive_definite_kinds}, largest,
                 [](const gen::Kind& kind, std::uint32_t n, const support::Matrix& A) {
                     if (n > 1)
                         expect_eigen(kind.name, host_matrix(A));
                 });
}

TEST(EigenGallery, APairOfMatrices)
{
    gen::for_all({gen::real_kinds, gen::complex_kinds}, largest,
                 [](const gen::Kind& kind, std::uint32_t n, const support::Matrix& A) {
                     if (n == 1)
                         return;
                     const Handle M = host_matrix(A);
                     const Handle B = matrices::random_real(n, n, n);
                     const Handle values = IntelMKL::genvals(M, B);
                     EXPECT_TRUE(is_ordered(values)) << kind.name << ", " << n;
                     EXPECT_LT(
                         worst_residual(Dense(M), Dense(B), Dense(values), Dense(IntelMKL::genvecs(M, B, nullptr))),
                         usual_bound)
                         << kind.name << ", " << n;
                 });
}

} // namespace
