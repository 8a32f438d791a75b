// svds, SVD, LU, QR and Cholesky: residuals, orthogonality and order over kinds and shapes of matrices.
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/finite.hpp"
#include "bailuxsko/lapack/pivoting.hpp"
#include "tests/lapack/factor_residuals.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/kinds.hpp"

#include <gtest/gtest.h>

namespace {

using matrices::as_view;
using matrices::Complex;
using matrices::Dense;
using matrices::factor;
using matrices::random_complex;
using matrices::random_real;
using matrices::shape;
using Qud::Handle;
using Qud::matrix_of;

namespace IntelMKL = Efi::IntelMKL;

constexpr double good = 30.0;
const Handle zero = Qud::NumVal::make(0.0);
const Handle one = Qud::NumVal::make(1.0);

Dense scaled_columns(const Dense& U, const Handle& values)
{
    Dense scaled = U;
    for (std::size_t j = 0; j < U.cols(); ++j)
        for (std::size_t i = 0; i < U.rows(); ++i)
            scaled.at(i, j) *= matrix_of(values)->real(j, 0);
    return scaled;
}

void expect_falling(const Handle& values)
{
    const Qud::MatVal& S = *matrix_of(values);
    for (std::size_t k = 0; k < S.Rows(); ++k)
        EXPECT_TRUE(S.real(k, 0) >= 0.0 && (k == 0 || S.real(k, 0) <= S.real(k - 1, 0))) << k;
}

void expect_singular_values_agree(const Handle& M, const Handle& values)
{
    const Handle alone = IntelMKL::svds(M);
    ASSERT_EQ(shape(alone), shape(values));
    const double largest = matrix_of(values)->real(0, 0);
    for (std::size_t k = 0; k < matrix_of(values)->Rows(); ++k)
        EXPECT_LE(std::fabs(matrix_of(alone)->real(k, 0) - matrix_of(values)->real(k, 0)),
                  good * matrices::eps * matrix_of(M)->Rows() * largest);
}

void expect_svd(const Handle& M)
{
    const std::uint32_t m = matrix_of(M)->Rows();
    const std::uint32_t n = matrix_of(M)->Cols();
    const std::string kind = matrix_of(M)->HasImag() ? ", complex" : ", real";
    const Handle svd = IntelMKL::svd(M);
    EXPECT_EQ(shape(svd), "3 by 1, real");
    const Handle S = factor(svd, 0);
    EXPECT_EQ(shape(S), std::to_string(n) + " by 1, real");
    EXPECT_EQ(shape(factor(svd, 1)), std::to_string(m) + " by " + std::to_string(n) + kind);
    EXPECT_EQ(shape(factor(svd, 2)), std::to_string(n) + " by " + std::to_string(n) + kind);
    const Dense U(factor(svd, 1));
    const Dense Vt(factor(svd, 2));
    expect_falling(S);
    EXPECT_LT(matrices::residual_factors(Dense(M), scaled_columns(U, S), Vt), good);
    EXPECT_LT(matrices::residual_orthogonal(U), good);
    EXPECT_LT(matrices::residual_orthogonal(Vt.conjugate_transpose()), good);
    expect_singular_values_agree(M, S);
}

void expect_lu(const Handle& M)
{
    const std::uint32_t m = matrix_of(M)->Rows();
    const std::uint32_t n = matrix_of(M)->Cols();
    const std::uint32_t k = std::min(m, n);
    const std::string kind = matrix_of(M)->HasImag() ? ", complex" : ", real";
    const Handle lu = IntelMKL::LU(M);
    EXPECT_EQ(shape(lu), "3 by 1, real");
    const Handle L = factor(lu, 1);
    const Handle U = factor(lu, 2);
    EXPECT_EQ(shape(L), std::to_string(m) + " by " + std::to_string(k) + kind);
    EXPECT_EQ(shape(U), std::to_string(k) + " by " + std::to_string(n) + kind);
    matrices::expect_permutation(factor(lu, 0), m);
    matrices::expect_zeros(L, matrices::above_diagonal);
    matrices::expect_zeros(U, matrices::below_diagonal);
    for (std::size_t j = 0; j < k; ++j) {
        EXPECT_EQ(matrix_of(L)->real(j, j), 1.0);
        EXPECT_EQ(matrix_of(L)->imag(j, j), 0.0);
        for (std::size_t i = j; i < m; ++i) // complex pivots are compared by |re| + |im|
            EXPECT_LE(std::abs(Dense(L).at(i, j)), matrix_of(M)->HasImag() ? std::sqrt(2.0) * (1 + 1e-15) : 1.0);
    }
    EXPECT_LT(matrices::residual_factors(Dense(factor(lu, 0)) * Dense(M), Dense(L), Dense(U)), good);
}

void expect_qr(const Handle& M, bool is_pivoted)
{
    const std::uint32_t m = matrix_of(M)->Rows();
    const std::uint32_t n = matrix_of(M)->Cols();
    const std::string kind = matrix_of(M)->HasImag() ? ", complex" : ", real";
    const Handle qr = is_pivoted ? IntelMKL::QR(M) : IntelMKL::QR(M, zero);
    EXPECT_EQ(shape(qr), is_pivoted ? "3 by 1, real" : "2 by 1, real");
    const Handle Q = factor(qr, is_pivoted ? 1 : 0);
    const Handle R = factor(qr, is_pivoted ? 2 : 1);
    EXPECT_EQ(shape(Q), std::to_string(m) + " by " + std::to_string(m) + kind);
    EXPECT_EQ(shape(R), std::to_string(m) + " by " + std::to_string(n) + kind);
    matrices::expect_zeros(R, matrices::below_diagonal);
    EXPECT_LT(matrices::residual_orthogonal(Dense(Q)), good);
    Dense permuted(M);
    if (is_pivoted) {
        matrices::expect_permutation(factor(qr, 0), n);
        permuted = permuted * Dense(factor(qr, 0));
        const Dense r(R);
        for (std::size_t j = 1; j < std::min(m, n); ++j)
            EXPECT_LE(std::abs(r.at(j, j)), std::abs(r.at(j - 1, j - 1)) * (1 + 1e-9)) << j;
    }
    EXPECT_LT(matrices::residual_factors(permuted, Dense(Q), Dense(R)), good);
}

/// M = T T' or T' T, whichever T is asked for.
double residual_cholesky(const Dense& M, const Dense& T, bool is_upper)
{
    return is_upper ? matrices::residual_factors(M, T.conjugate_transpose(), T)
                    : matrices::residual_factors(M, T, T.conjugate_transpose());
}

void expect_cholesky(const Handle& M)
{
    for (const bool is_upper : {false, true}) {
        const auto is_zero = is_upper ? matrices::below_diagonal : matrices::above_diagonal;
        const Handle side = is_upper ? one : zero;
        const Handle T = IntelMKL::Cholesky(M, zero, side);
        EXPECT_EQ(shape(T), shape(M));
        matrices::expect_zeros(T, is_zero);
        EXPECT_LT(residual_cholesky(Dense(M), Dense(T), is_upper), good);

        const Handle pivoted = IntelMKL::Cholesky(M, one, side);
        EXPECT_EQ(shape(pivoted), "2 by 1, real");
        EXPECT_EQ(shape(factor(pivoted, 1)), shape(M));
        matrices::expect_permutation(factor(pivoted, 0), matrix_of(M)->Rows());
        matrices::expect_zeros(factor(pivoted, 1), is_zero);
        const Dense P(factor(pivoted, 0));
        EXPECT_LT(residual_cholesky(P.conjugate_transpose() * Dense(M) * P, Dense(factor(pivoted, 1)), is_upper), good);
    }
}

/// Shapes around the edges of LAPACK's blocks and of the paths for very tall matrices.
struct Shape {
    std::uint32_t m;
    std::uint32_t n;
};
constexpr Shape shapes[] = {{1, 1},   {2, 1},   {1, 2},   {2, 2},     {3, 2},    {2, 3},    {5, 5},   {17, 1},
                            {1, 17},  {33, 2},  {2, 33},  {31, 31},   {32, 32},  {33, 33},  {64, 40}, {40, 64},
                            {65, 65}, {100, 7}, {7, 100}, {100, 100}, {300, 10}, {10, 300}, {129, 70}};

void expect_all(const Handle& M)
{
    if (matrix_of(M)->Rows() >= matrix_of(M)->Cols())
        expect_svd(M);
    expect_lu(M);
    expect_qr(M, false);
    expect_qr(M, true);
}

TEST(Decompositions, OfAllShapes)
{
    for (const auto& [m, n] : shapes) {
        SCOPED_TRACE(std::to_string(m) + " by " + std::to_string(n));
        expect_all(random_real(m, n, m + n));
        expect_all(random_complex(m, n, m + n));
    }
}

TEST(Decompositions, CholeskyOfAllSizes)
{
    for (const std::uint32_t n : {1U, 2U, 3U, 5U, 31U, 32U, 33U, 64U, 65U, 130U}) {
        SCOPED_TRACE(n);
        expect_cholesky(matrices::positive_definite(random_real(n, n, n)));
        expect_cholesky(matrices::positive_definite(random_complex(n, n, n)));
    }
}

Handle host_value(const support::Matrix& source)
{
    support::Matrix A = source;
    if (A.is_complex())
        return matrices::generate(A.rows(), A.cols(), [&](auto i, auto j) { return Complex(A.re(i, j), A.im(i, j)); });
    return matrices::generate(A.rows(), A.cols(), [&](auto i, auto j) { return A.re(i, j); });
}

TEST(Decompositions, OfKindsOfMatrices)
{
    support::Random random(1);
    for (const support::Kind& kind : support::kinds)
        for (const std::uint32_t n : {1U, 2U, 3U, 12U, 40U})
            for (const bool is_complex : {false, true}) {
                const Handle M = host_value(support::draw(kind, n, n, is_complex, random));
                const double norm = Dense(M).norm1();
                if (!lapack::is_finite(*matrix_of(M)) || norm > 1e300 || (norm < 1e-280 && norm != 0.0))
                    continue; // the residual itself would not be finite, or full of denormals
                SCOPED_TRACE(std::string(kind.name) + ", n = " + std::to_string(n));
                expect_all(M);
            }
}

TEST(Decompositions, OfRankDeficientMatrices)
{
    for (const std::uint32_t rank : {0U, 1U, 3U}) {
        const Dense left(random_real(20, std::max(rank, 1U), 1));
        const Dense right(random_real(std::max(rank, 1U), 12, 2));
        const Dense product = left * right;
        SCOPED_TRACE(rank);
        expect_all(
            matrices::generate(20, 12, [&](auto i, auto j) { return rank == 0 ? 0.0 : product.at(i, j).real(); }));
        expect_all(matrices::generate(
            20, 12, [&](auto i, auto j) { return rank == 0 ? Complex() : product.at(i, j) * Complex(0.6, 0.8); }));
    }
}

TEST(Decompositions, OfHilbertMatrices)
{
    for (const std::uint32_t n : {2U, 5U, 12U}) {
        const Handle H = matrices::generate(n, n, [](auto i, auto j) { return 1.0 / (i + j + 1.0); });
        expect_all(H);
    }
    expect_cholesky(matrices::generate(6, 6, [](auto i, auto j) { return 1.0 / (i + j + 1.0); }));
}

TEST(Decompositions, AViewGivesWhatTheWholeMatrixGives)
{
    for (const Handle& M : {random_real(20, 12, 1), random_complex(20, 12, 1)})
        for (const auto operation : {IntelMKL::svd, IntelMKL::LU, +[](const Handle& A) { return IntelMKL::QR(A); },
                                     +[](const Handle& A) { return IntelMKL::QR(A, zero); }}) {
            const Handle whole = operation(M);
            const Handle view = operation(as_view(M));
            for (std::size_t k = 0; k < matrix_of(whole)->Rows(); ++k)
                EXPECT_EQ((Dense(factor(whole, k)) - Dense(factor(view, k))).norm1(), 0.0) << k;
        }
    for (const Handle& B : {random_real(20, 20, 1), random_complex(20, 20, 1)}) {
        const Handle M = matrices::positive_definite(B);
        for (const Handle& side : {zero, one}) {
            EXPECT_EQ(
                (Dense(IntelMKL::Cholesky(M, zero, side)) - Dense(IntelMKL::Cholesky(as_view(M), zero, side))).norm1(),
                0.0);
            EXPECT_EQ((Dense(factor(IntelMKL::Cholesky(M, one, side), 1)) -
                       Dense(factor(IntelMKL::Cholesky(as_view(M), one, side), 1)))
                          .norm1(),
                      0.0);
        }
    }
}

TEST(Decompositions, TheSuccessorsOfTheDeprecatedRoutinesPivotQrToo)
{
    const Replaced<&lapack::Routines::dgeqpf> real(&lapack::dgeqpf_by_dgeqp3);
    const Replaced<&lapack::Routines::zgeqpf> complex(&lapack::zgeqpf_by_zgeqp3);
    for (const auto& [m, n] : shapes) {
        SCOPED_TRACE(std::to_string(m) + " by " + std::to_string(n));
        expect_qr(random_real(m, n, m + n), true);
        expect_qr(random_complex(m, n, m + n), true);
    }
}

TEST(Decompositions, PivotingRoutinesAgree)
{
    const Handle M = random_real(30, 20, 5);
    const Handle Z = random_complex(30, 20, 5);
    const Handle P = factor(IntelMKL::QR(M), 0);
    const Handle Pz = factor(IntelMKL::QR(Z), 0);
    const Replaced<&lapack::Routines::dgeqpf> real(&lapack::dgeqpf_by_dgeqp3);
    const Replaced<&lapack::Routines::zgeqpf> complex(&lapack::zgeqpf_by_zgeqp3);
    EXPECT_EQ((Dense(P) - Dense(factor(IntelMKL::QR(M), 0))).norm1(), 0.0);
    EXPECT_EQ((Dense(Pz) - Dense(factor(IntelMKL::QR(Z), 0))).norm1(), 0.0);
}

TEST(Decompositions, PivotedQrPutsTheLongestColumnFirst)
{
    // The columns have lengths 1, 3, 2; their order is 2, 3, 1.
    const Handle qr = IntelMKL::QR(matrices::real({{1, 0, 0}, {0, 3, 0}, {0, 0, 2}}));
    EXPECT_EQ((Dense(factor(qr, 0)) - Dense(matrices::real({{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}))).norm1(), 0.0);
    const Handle cholesky = IntelMKL::Cholesky(matrices::real({{1, 0, 0}, {0, 9, 0}, {0, 0, 4}}));
    EXPECT_EQ((Dense(factor(cholesky, 0)) - Dense(matrices::real({{0, 0, 1}, {1, 0, 0}, {0, 1, 0}}))).norm1(), 0.0);
    EXPECT_EQ((Dense(factor(cholesky, 1)) - Dense(matrices::real({{3, 0, 0}, {0, 2, 0}, {0, 0, 1}}))).norm1(), 0.0);
}

} // namespace
