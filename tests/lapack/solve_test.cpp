#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/solve.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

namespace {

using matrices::as_view;
using matrices::Complex;
using matrices::Dense;
using matrices::inf;
using matrices::NaN;
using matrices::random_complex;
using matrices::random_real;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

const Raised not_converging{.message = "not converging", .index = -1, .detail = ""};
const Raised invalid_dimension{.message = "invalid dimension", .index = -1, .detail = ""};
const Raised nothing;

Handle solve(const Handle& A, const Handle& B)
{
    return Efi::IntelMKL::ScalarLsolve(*matrix_of(A), *matrix_of(B));
}

void expect_near(const Handle& X, matrices::ComplexRows expected, double tolerance = 1e-14)
{
    const Dense x(X);
    const Dense e(matrices::complex(expected));
    ASSERT_EQ(x.rows(), e.rows());
    ASSERT_EQ(x.cols(), e.cols());
    for (std::size_t j = 0; j < x.cols(); ++j)
        for (std::size_t i = 0; i < x.rows(); ++i)
            EXPECT_LT(std::abs(x.at(i, j) - e.at(i, j)), tolerance) << i << ", " << j;
}

TEST(Solve, SmallSystems)
{
    expect_near(solve(matrices::real({{2, 1}, {1, 3}}), matrices::real({{3}, {5}})), {{0.8}, {1.4}});
    expect_near(solve(matrices::real({{0, 1}, {1, 0}}), matrices::real({{3, 4}, {5, 6}})), {{5, 6}, {3, 4}});
    // (1 + i) x = 2 gives 1 - i
    expect_near(solve(matrices::complex({{{1, 1}}}), matrices::real({{2}})), {{{1, -1}}});
    expect_near(solve(matrices::real({{2}}), matrices::complex({{{0, 4}}})), {{{0, 2}}});
}

TEST(Solve, RealOrComplexByTheArguments)
{
    const Handle A = matrices::real({{2, 1}, {1, 3}});
    const Handle B = matrices::real({{3}, {5}});
    const Handle Ac = matrices::complex({{2, 1}, {1, 3}});
    const Handle Bc = matrices::complex({{3}, {5}});
    EXPECT_FALSE(matrix_of(solve(A, B))->HasImag());
    for (const Handle& X : {solve(Ac, B), solve(A, Bc), solve(Ac, Bc)}) {
        EXPECT_TRUE(matrix_of(X)->HasImag());
        expect_near(X, {{0.8}, {1.4}});
    }
}

TEST(Solve, ResidualsOfSquareSystems)
{
    for (const std::uint32_t n : {1U, 2U, 5U, 20U, 63U, 100U, 200U})
        for (const std::uint32_t nrhs : {1U, 3U}) {
            const Handle A = random_real(n, n, n);
            const Handle B = random_real(n, nrhs, n + 1);
            const Handle Ac = random_complex(n, n, n);
            const Handle Bc = random_complex(n, nrhs, n + 1);
            EXPECT_LT(matrices::residual_solve(A, solve(A, B), B), 30) << n;
            EXPECT_LT(matrices::residual_solve(Ac, solve(Ac, Bc), Bc), 30) << n;
            EXPECT_LT(matrices::residual_solve(A, solve(A, Bc), Bc), 30) << n;
            EXPECT_LT(matrices::residual_solve(Ac, solve(Ac, B), B), 30) << n;
        }
}

TEST(Solve, AViewGivesWhatTheWholeMatrixGives)
{
    const std::pair<Handle, Handle> systems[] = {
        {random_real(20, 20, 1), random_real(20, 3, 2)},
        {random_complex(20, 20, 1), random_complex(20, 3, 2)},
        {random_real(20, 12, 1), random_real(20, 3, 2)},
        {random_complex(12, 20, 1), random_complex(12, 3, 2)},
    };
    for (const auto& [A, B] : systems) {
        const Dense whole(solve(A, B));
        const Dense view(solve(as_view(A), as_view(B)));
        EXPECT_EQ((whole - view).norm1(), 0.0);
    }
}

TEST(Solve, ASingularSquareMatrixDoesNotConverge)
{
    const Handle A = matrices::real({{1, 2}, {2, 4}});
    const Handle B = matrices::real({{1}, {1}});
    const Raised raised = host_raised_by([&] { solve(A, B); });
    EXPECT_EQ(raised, not_converging);
    EXPECT_EQ(raised.detail, "the matrix is singular: its column 2 depends on those before it");
    EXPECT_EQ(host_raised_by([&] { solve(matrices::complex({{1, 2}, {2, 4}}), B); }), not_converging);
    EXPECT_EQ(host_raised_by([&] { solve(matrices::real({{0}}), matrices::real({{1}})); }), not_converging);
}

TEST(Solve, LeastSquares)
{
    // A line through (0, 1), (1, 2), (2, 4): the normal equations [3, 3; 3, 5] x = [7; 10].
    expect_near(solve(matrices::real({{1, 0}, {1, 1}, {1, 2}}), matrices::real({{1}, {2}, {4}})), {{5.0 / 6}, {1.5}});
    // A' (A A')^-1 b, the solution of minimum norm
    expect_near(solve(matrices::real({{1, 1, 0}, {0, 1, 1}}), matrices::real({{1}, {2}})), {{0}, {1}, {1}});
    expect_near(solve(matrices::complex({{1, 1, 0}, {0, 1, 1}}), matrices::complex({{{0, 1}}, {{0, 2}}})),
                {{0}, {{0, 1}}, {{0, 1}}});
    // dependent columns share the solution
    expect_near(solve(matrices::real({{1, 1}, {1, 1}, {1, 1}}), matrices::real({{2}, {2}, {2}})), {{1}, {1}});
    // a matrix of zeros
    expect_near(solve(matrices::real({{0, 0, 0}, {0, 0, 0}}), matrices::real({{1}, {1}})), {{0}, {0}, {0}});
}

TEST(Solve, AColumnBelowTheConditionThresholdIsDependent)
{
    const Handle B = matrices::real({{1}, {1}, {1}});
    expect_near(solve(matrices::real({{1, 0}, {0, 1e-14}, {0, 0}}), B), {{1}, {1e14}}, 1.0);
    expect_near(solve(matrices::real({{1, 0}, {0, 1e-16}, {0, 0}}), B), {{1}, {0}});
}

TEST(Solve, ALeastSquaresResultIsASharedViewOfTheSolvedArray)
{
    const Handle X = solve(random_real(7, 3, 1), random_real(7, 2, 2));
    EXPECT_EQ(matrix_of(X)->Rows(), 3U);
    EXPECT_EQ(matrix_of(X)->Cols(), 2U);
    EXPECT_EQ(matrix_of(X)->Anr(), 7U);
    EXPECT_EQ(matrix_of(solve(random_real(3, 7, 1), random_real(3, 2, 2)))->Anr(), 7U);
}

TEST(Solve, ResidualsOfLeastSquares)
{
    for (const std::uint32_t m : {1U, 2U, 3U, 10U, 40U, 120U})
        for (const std::uint32_t n : {1U, 2U, 4U, 11U, 39U, 121U}) {
            if (m == n)
                continue;
            const Handle A = random_real(m, n, m * 1000 + n);
            const Handle B = random_real(m, 3, n);
            const Handle Ac = random_complex(m, n, m * 1000 + n);
            const Handle Bc = random_complex(m, 3, n);
            EXPECT_LT(matrices::residual_least_squares(A, solve(A, B), B), 30) << m << " by " << n;
            EXPECT_LT(matrices::residual_least_squares(Ac, solve(Ac, Bc), Bc), 30) << m << " by " << n;
        }
}

TEST(Solve, TheWorkspaceIsEnoughForEveryShape)
{
    for (std::uint32_t m = 1; m <= 6; ++m)
        for (std::uint32_t n = 1; n <= 6; ++n)
            for (const std::uint32_t nrhs : {1U, 2U, 50U}) {
                if (m == n)
                    continue;
                EXPECT_EQ(host_raised_by([&] { solve(random_real(m, n, 1), random_real(m, nrhs, 2)); }), nothing)
                    << m << " by " << n << ", " << nrhs;
                EXPECT_EQ(host_raised_by([&] { solve(random_complex(m, n, 1), random_real(m, nrhs, 2)); }), nothing)
                    << m << " by " << n << ", " << nrhs;
            }
}

TEST(Solve, WhatTheLeastSquaresRoutineIsGiven)
{
    const Replaced<&lapack::Routines::dgelsy> watched(
        [](const int* m, const int* n, const int* nrhs, double* A, const int* lda, double* B, const int* ldb, int* jpvt,
           const double* rcond, int* rank, double* work, const int* lwork, int* info) {
            EXPECT_EQ(*lda, *m);
            EXPECT_EQ(*ldb, std::max(*m, *n));
            EXPECT_EQ(*rcond, 1e-15);
            EXPECT_EQ(*lwork, 16 * std::max(*m, *n) + *nrhs);
            EXPECT_EQ(std::count(jpvt, jpvt + *n, 0), *n);
            lapack::fortran::dgelsy_(m, n, nrhs, A, lda, B, ldb, jpvt, rcond, rank, work, lwork, info);
        });
    const Replaced<&lapack::Routines::zgelsy> watched_complex(
        [](const int* m, const int* n, const int* nrhs, Complex* A, const int* lda, Complex* B, const int* ldb,
           int* jpvt, const double* rcond, int* rank, Complex* work, const int* lwork, double* rwork, int* info) {
            EXPECT_EQ(*lda, *m);
            EXPECT_EQ(*ldb, std::max(*m, *n));
            EXPECT_EQ(*rcond, 1e-15);
            EXPECT_EQ(*lwork, 16 * std::max(*m, *n) + *nrhs);
            EXPECT_EQ(std::count(jpvt, jpvt + *n, 0), *n);
            std::fill_n(rwork, 5 * *n, 0.0);
            lapack::fortran::zgelsy_(m, n, nrhs, A, lda, B, ldb, jpvt, rcond, rank, work, lwork, rwork, info);
        });
    solve(random_real(9, 4, 1), random_real(9, 2, 2));
    solve(random_real(4, 9, 1), random_real(4, 2, 2));
    solve(random_complex(9, 4, 1), random_real(9, 2, 2));
    solve(random_complex(4, 9, 1), random_real(4, 2, 2));
}

TEST(Solve, AComplexLeastSquaresMatrixHasAColumnToSpare)
{
    // The routine may load elements of the column behind the last one; here it fills them, which must hurt nobody.
    const Replaced<&lapack::Routines::zgelsy> fills([](const int* m, const int* n, const int*, Complex* A, const int*,
                                                       Complex*, const int*, int*, const double*, int*, Complex*,
                                                       const int*, double*, int* info) {
        std::fill_n(A + std::ptrdiff_t{*m} * *n, *m, Complex(1, 1));
        *info = 0;
    });
    solve(random_complex(40, 60, 1), random_complex(40, 1, 2));
}

TEST(Solve, RefusesMatricesWithoutElements)
{
    const Handle empty = Qud::MatVal::empty();
    EXPECT_EQ(host_raised_by([&] { solve(empty, empty); }), invalid_dimension);
    const Handle no_columns = Qud::MatVal::make(3, 0, Qud::fresh_numbers(0));
    EXPECT_EQ(host_raised_by([&] { solve(no_columns, random_real(3, 1, 1)); }), invalid_dimension);
    EXPECT_EQ(host_raised_by([&] { solve(random_real(3, 3, 1), no_columns); }), invalid_dimension);
}

TEST(Solve, RefusesDimensionsBeyondThirtyTwoBits)
{
    // A row of 2^31 columns that all show the same number: nothing is read before the refusal.
    const Handle wide = Qud::MatVal::make({.rows = 1,
                                           .cols = 1U << 31,
                                           .anr = 1,
                                           .offset = 0,
                                           .real = Qud::fresh_numbers(1),
                                           .imaginary = nullptr,
                                           .units = {},
                                           .entries = nullptr});
    const Raised too_big{.message = "matrix too big", .index = 1, .detail = ""};
    EXPECT_EQ(host_raised_by([&] { solve(wide, random_real(1, 1, 1)); }), too_big);
    EXPECT_EQ(host_raised_by([&] { solve(random_real(1, 1, 1), wide); }), too_big);
}

TEST(Solve, TakesInfinitiesAndNaNAsTheyAre)
{
    for (const std::uint32_t m : {1U, 2U, 7U, 40U})
        for (const std::uint32_t n : {1U, 2U, 7U, 40U})
            for (const double odd : {NaN, inf, -inf})
                for (const bool everywhere : {false, true}) {
                    const Handle ordinary = random_real(m, n, 1);
                    const auto planted = [&](auto i, auto j) {
                        return everywhere || i + j == 0 ? odd : matrix_of(ordinary)->real(i, j);
                    };
                    const Handle A = matrices::generate(m, n, planted);
                    const Handle Ac =
                        matrices::generate(m, n, [&](auto i, auto j) { return Complex(planted(i, j), 1.0); });
                    const Handle B = random_real(m, 2, 3);
                    // A result or "not converging", but always an answer.
                    for (const Handle& matrix : {A, Ac}) {
                        const Raised raised = host_raised_by([&] { solve(matrix, B); });
                        EXPECT_TRUE(raised == nothing || raised == not_converging) << raised;
                    }
                }
}

} // namespace
