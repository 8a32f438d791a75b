// What the routines of the factorisations are given: workspaces, pivot lists, room to spare, nothing too large; and
// that an element written beyond an end does not go unnoticed.
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/guard_zone.hpp"
#include "bailuxsko/lapack/pivoting.hpp"
#include "efiutl/context.hpp"
#include "tests/lapack/factor_residuals.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace {

using lapack::Routines;
using matrices::Complex;
using matrices::random_complex;
using matrices::random_real;
using Qud::Handle;
using support::host_raised_by;
using support::Raised;

namespace IntelMKL = Efi::IntelMKL;

const Handle zero = Qud::NumVal::make(0.0);
const Handle one = Qud::NumVal::make(1.0);

/// Shapes whose workspace is decided by 16 n or by m.
const std::pair<std::uint32_t, std::uint32_t> work_shapes[] = {{5, 5}, {40, 3}, {100, 3}, {3, 40}, {1, 1}, {17, 1}};

TEST(FactorRoutines, WorkspacesOfQrAreGivenAndNeverAskedFor)
{
    const Replaced<&Routines::dgeqrf> dgeqrf([](const int* m, const int* n, double* A, const int* lda, double* tau,
                                                double* work, const int* lwork, int* info) {
        EXPECT_EQ(*lda, *m);
        EXPECT_EQ(*lwork, std::max(16 * *n, *m));
        lapack::fortran::dgeqrf_(m, n, A, lda, tau, work, lwork, info);
    });
    const Replaced<&Routines::zgeqrf> zgeqrf([](const int* m, const int* n, Complex* A, const int* lda, Complex* tau,
                                                Complex* work, const int* lwork, int* info) {
        EXPECT_EQ(*lda, *m);
        EXPECT_EQ(*lwork, std::max(16 * *n, *m));
        lapack::fortran::zgeqrf_(m, n, A, lda, tau, work, lwork, info);
    });
    const Replaced<&Routines::dorgqr> dorgqr([](const int* m, const int* n, const int* k, double* A, const int* lda,
                                                const double* tau, double* work, const int* lwork, int* info) {
        EXPECT_EQ(*n, *m);
        EXPECT_GE(*lwork, *m);
        std::fill_n(A + std::ptrdiff_t{*m} * (*m - 1), *m, 0.0); // room for the whole square
        lapack::fortran::dorgqr_(m, n, k, A, lda, tau, work, lwork, info);
    });
    for (const auto& [m, n] : work_shapes)
        for (const Handle& M : {random_real(m, n, 1), random_complex(m, n, 1)}) {
            EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(M); }), Raised{}) << m << " by " << n;
            EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(M, zero); }), Raised{}) << m << " by " << n;
        }
}

TEST(FactorRoutines, EveryColumnIsFreeToBeAPivot)
{
    // The memory that an earlier call leaves behind is not zero.
    const auto dirty = [] {
        EfiCallContext context;
        std::fill_n(static_cast<int*>(context.m_arena->allocate_array(200000)), 50000, 7);
    };
    const Replaced<&Routines::dgeqpf> real(
        [](const int* m, const int* n, double* A, const int* lda, int* jpvt, double* tau, double* work, int* info) {
            EXPECT_EQ(std::count(jpvt, jpvt + *n, 0), *n);
            std::fill_n(work, lapack::pivoting_work(*n), 1.0);
            lapack::dgeqpf_of_provider(m, n, A, lda, jpvt, tau, work, info);
        });
    const Replaced<&Routines::zgeqpf> complex([](const int* m, const int* n, Complex* A, const int* lda, int* jpvt,
                                                 Complex* tau, Complex* work, double* rwork, int* info) {
        EXPECT_EQ(std::count(jpvt, jpvt + *n, 0), *n);
        std::fill_n(work, lapack::pivoting_work(*n), 1.0);
        std::fill_n(rwork, 2 * *n, 1.0);
        lapack::zgeqpf_of_provider(m, n, A, lda, jpvt, tau, work, rwork, info);
    });
    for (const std::uint32_t n : {3U, 40U, 90U}) {
        dirty();
        IntelMKL::QR(random_real(n, n, 1));
        dirty();
        IntelMKL::QR(random_complex(n, n, 1));
    }
}

TEST(FactorRoutines, WhatPivotedCholeskyIsGiven)
{
    const Replaced<&Routines::dpstrf> real([](const char* uplo, const int* n, double* A, const int* lda, int* piv,
                                              int* rank, const double* tol, double* work, int* info,
                                              std::size_t length) {
        EXPECT_EQ(*lda, *n);
        EXPECT_EQ(*tol, -1.0);
        EXPECT_EQ(*uplo, 'U');
        EXPECT_EQ(length, 1U);
        std::fill_n(work, 2 * *n, 1.0);
        lapack::fortran::dpstrf_(uplo, n, A, lda, piv, rank, tol, work, info, length);
    });
    IntelMKL::Cholesky(matrices::positive_definite(random_real(9, 9, 1)), one, one);
}

TEST(FactorRoutines, ComplexMatricesHaveAColumnToSpare)
{
    // The routines may load what lies behind the last column; here they fill it, which must hurt nobody.
    const Replaced<&Routines::zgeqpf> qr(
        [](const int* m, const int* n, Complex* A, const int*, int*, Complex*, Complex* work, double*, int* info) {
            std::fill_n(A + std::ptrdiff_t{*m} * std::max(*m, *n), *m, Complex(1, 1));
            std::fill_n(work, 17 * *n, Complex(1, 1));
            *info = 0;
        });
    const Replaced<&Routines::zpstrf> cholesky([](const char*, const int* n, Complex* A, const int*, int*, int*,
                                                  const double*, double*, int* info, std::size_t) {
        std::fill_n(A + std::ptrdiff_t{*n} * *n, *n, Complex(1, 1));
        *info = 0;
    });
    const Replaced<&Routines::zgesvd> svd([](const char*, const char*, const int* m, const int* n, Complex* A,
                                             const int*, double*, Complex*, const int*, Complex* VT, const int*,
                                             Complex*, const int*, double*, int* info, std::size_t, std::size_t) {
        std::fill_n(A + std::ptrdiff_t{*m} * *n, *m, Complex(1, 1));
        std::fill_n(VT + std::ptrdiff_t{*n} * *n, *n, Complex(1, 1));
        *info = 0;
    });
    IntelMKL::QR(random_complex(50, 30, 1));
    IntelMKL::QR(random_complex(30, 50, 1));
    IntelMKL::Cholesky(random_complex(50, 50, 1));
    IntelMKL::svd(random_complex(50, 30, 1));
}

TEST(FactorRoutines, RefuseMatricesWithoutElements)
{
    const Raised invalid_dimension{"invalid dimension", -1};
    const Handle empty = Qud::MatVal::empty();
    EXPECT_EQ(host_raised_by([&] { IntelMKL::svds(empty); }), invalid_dimension);
    EXPECT_EQ(host_raised_by([&] { IntelMKL::svd(empty); }), invalid_dimension);
    EXPECT_EQ(host_raised_by([&] { IntelMKL::LU(empty); }), invalid_dimension);
    for (const Handle& pivot : {zero, one}) {
        EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(empty, pivot); }), invalid_dimension);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::Cholesky(empty, pivot); }), invalid_dimension);
    }
}

/// A matrix of which only the shape is there: nothing must be read or written before the refusal.
Handle only_a_shape(std::uint32_t rows, std::uint32_t cols, bool is_complex)
{
    return Qud::MatVal::make({.rows = rows,
                              .cols = cols,
                              .anr = rows,
                              .offset = 0,
                              .real = Qud::fresh_numbers(1),
                              .imaginary = is_complex ? Qud::fresh_numbers(1) : nullptr,
                              .units = {},
                              .entries = nullptr});
}

TEST(FactorRoutines, RefuseDimensionsBeyondThirtyTwoBits)
{
    const Raised too_big{"matrix too big", 1};
    for (const bool is_complex : {false, true}) {
        const Handle wide = only_a_shape(1, 1U << 31, is_complex);
        const Handle tall = only_a_shape(1U << 31, 1, is_complex);
        for (const Handle& M : {wide, tall}) {
            EXPECT_EQ(host_raised_by([&] { IntelMKL::LU(M); }), too_big);
            EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(M); }), too_big);
            EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(M, zero); }), too_big);
        }
        EXPECT_EQ(host_raised_by([&] { IntelMKL::svds(tall); }), too_big);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::svd(tall); }), too_big);
        const Handle square = only_a_shape(1U << 31, 1U << 31, is_complex);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::Cholesky(square); }), too_big);
    }
}

TEST(FactorRoutines, BuffersOfTwoGibibytesAreOutOfMemory)
{
    const Raised out_of_memory{"out of memory", -1};
    for (const bool is_complex : {false, true}) {
        const std::uint32_t side = is_complex ? 11586 : 16384; // the first whose square passes 2 GiB
        const Handle square = only_a_shape(side, side, is_complex);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::svds(square); }), out_of_memory);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::svd(square); }), out_of_memory);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::LU(square); }), out_of_memory);
        for (const Handle& pivot : {zero, one}) {
            EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(square, pivot); }), out_of_memory);
            EXPECT_EQ(host_raised_by([&] { IntelMKL::Cholesky(square, pivot); }), out_of_memory);
        }
        // The results that are square pass the limit, the matrix does not.
        const Handle tall = only_a_shape(20000, 2, is_complex);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::LU(tall); }), out_of_memory);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(tall); }), out_of_memory);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(tall, zero); }), out_of_memory);
        EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(only_a_shape(2, 20000, is_complex)); }), out_of_memory);
    }
}

class FactorRoutinesDeathTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (lapack::guard_zone::bytes() == 0)
            GTEST_SKIP() << "a build without guard zones";
        GTEST_FLAG_SET(death_test_style, "threadsafe");
    }
};

TEST_F(FactorRoutinesDeathTest, OneElementTooManyIsCaughtInAnIntegerArray)
{
    const Replaced<&Routines::dgetrf> writes(
        [](const int* m, const int*, double*, const int*, int* ipiv, int*) { ipiv[2 * *m] = 1; });
    EXPECT_DEATH(IntelMKL::LU(random_real(4, 4, 1)), "LAPACK wrote beyond an array of 32 bytes");
}

TEST_F(FactorRoutinesDeathTest, OneElementTooManyIsCaughtInTheArena)
{
    const Replaced<&Routines::dgeqrf> writes(
        [](const int*, const int* n, double*, const int*, double* tau, double*, const int*, int* info) {
            tau[*n] = 1.0;
            *info = 1;
        });
    EXPECT_DEATH(IntelMKL::QR(random_real(4, 4, 1), zero), "LAPACK wrote beyond an array of 32 bytes");
}

TEST_F(FactorRoutinesDeathTest, OneElementTooManyIsCaughtOnTheHeap)
{
    const Replaced<&Routines::zgeqpf> writes(
        [](const int*, const int* n, Complex*, const int*, int*, Complex*, Complex*, double* rwork, int* info) {
            rwork[2 * *n] = 1.0;
            *info = 1;
        });
    EXPECT_DEATH(IntelMKL::QR(random_complex(4, 4, 1)), "LAPACK wrote beyond an array of 64 bytes");
}

TEST_F(FactorRoutinesDeathTest, OneElementTooManyIsCaughtInAResult)
{
    const Replaced<&Routines::dpotrf> factor(
        [](const char*, const int* n, double* A, const int*, int*, std::size_t) { A[*n * *n] = 1.0; });
    EXPECT_DEATH(IntelMKL::Cholesky(random_real(4, 4, 1), zero), "LAPACK wrote beyond an array of 128 bytes");
    const Replaced<&Routines::dgesvd> values([](const char*, const char*, const int*, const int* n, double*, const int*,
                                                double* S, double*, const int*, double*, const int*, double*,
                                                const int*, int*, std::size_t, std::size_t) { S[*n] = 1.0; });
    EXPECT_DEATH(IntelMKL::svds(random_real(4, 4, 1)), "LAPACK wrote beyond an array of 32 bytes");
}

} // namespace
