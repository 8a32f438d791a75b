#include "bailuxsko/lapack/inverse.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

namespace {

using matrices::Dense;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

using Inverse = Handle (*)(EfiCallContext*, const Qud::MatVal&);

const Raised singularity{.message = "singularity", .index = -1, .detail = ""};

Handle inverse(Inverse driver, const Handle& A)
{
    EfiCallContext context;
    return driver(&context, *matrix_of(A));
}

TEST(Inverse, OfSmallMatrices)
{
    const Dense I(inverse(lapack::dinv, matrices::real({{2, 1}, {4, 4}}))); // 1/4 [4, -1; -4, 2]
    EXPECT_EQ((I - Dense(matrices::real({{1, -0.25}, {-1, 0.5}}))).norm1(), 0.0);
    const Dense S(inverse(lapack::dinv, matrices::real({{2, 1}, {1, 2}}))); // 1/3 [2, -1; -1, 2]
    EXPECT_LT((S - Dense(matrices::real({{2 / 3.0, -1 / 3.0}, {-1 / 3.0, 2 / 3.0}}))).norm1(), 1e-15);
    const Dense Z(inverse(lapack::zinv, matrices::complex({{{0, 1}, 0}, {0, {1, 1}}})));
    EXPECT_LT((Z - Dense(matrices::complex({{{0, -1}, 0}, {0, {0.5, -0.5}}}))).norm1(), 1e-15);
}

TEST(Inverse, Residuals)
{
    for (const std::uint32_t n : {1U, 2U, 5U, 31U, 32U, 33U, 64U, 100U, 150U}) {
        const Handle A = matrices::random_real(n, n, n);
        const Handle S = matrices::random_symmetric(n, n);
        const Handle Z = matrices::random_complex(n, n, n);
        EXPECT_LT(matrices::residual_inverse(A, inverse(lapack::dinv, A)), 30) << n;
        EXPECT_LT(matrices::residual_inverse(S, inverse(lapack::dinv, S)), 30) << n;
        EXPECT_LT(matrices::residual_inverse(S, inverse(lapack::dsinv, S)), 30) << n;
        EXPECT_LT(matrices::residual_inverse(Z, inverse(lapack::zinv, Z)), 30) << n;
    }
}

TEST(Inverse, OfASymmetricMatrixIsExactlySymmetric)
{
    for (const std::uint32_t n : {2U, 31U, 32U, 33U, 70U}) {
        const Handle Y = inverse(lapack::dinv, matrices::random_symmetric(n, n));
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < j; ++i)
                ASSERT_EQ(matrix_of(Y)->real(i, j), matrix_of(Y)->real(j, i));
    }
}

TEST(Inverse, OnlyAnExactlySymmetricMatrixTakesTheSymmetricWay)
{
    static int symmetric_calls = 0;
    const Replaced<&lapack::Routines::dsytrf> watched([](const char* uplo, const int* n, double* A, const int* lda,
                                                         int* ipiv, double* work, const int* lwork, int* info,
                                                         std::size_t length) {
        ++symmetric_calls;
        EXPECT_EQ(*uplo, 'U');
        EXPECT_EQ(*lwork, 64 * *n);
        lapack::fortran::dsytrf_(uplo, n, A, lda, ipiv, work, lwork, info, length);
    });
    inverse(lapack::dinv, matrices::real({{2, 1}, {1, 2}}));
    EXPECT_EQ(symmetric_calls, 1);
    inverse(lapack::dinv, matrices::real({{2, 1}, {1 + matrices::eps, 2}}));
    EXPECT_EQ(symmetric_calls, 1);
    inverse(lapack::zinv, matrices::complex({{2, {0, 1}}, {{0, -1}, 2}})); // Hermitian: still the general way
    EXPECT_EQ(symmetric_calls, 1);
}

TEST(Inverse, OfASymmetricMatrixReadsTheUpperTriangleOnly)
{
    const Dense whole(inverse(lapack::dsinv, matrices::real({{2, 1}, {1, 2}})));
    const Dense upper(inverse(lapack::dsinv, matrices::real({{2, 1}, {77, 2}})));
    EXPECT_EQ((whole - upper).norm1(), 0.0);
}

TEST(Inverse, TheWorkspaceOfTheGeneralWay)
{
    const Replaced<&lapack::Routines::dgetri> watched(
        [](const int* n, double* A, const int* lda, const int* ipiv, double* work, const int* lwork, int* info) {
            EXPECT_EQ(*lwork, 64 * *n);
            lapack::fortran::dgetri_(n, A, lda, ipiv, work, lwork, info);
        });
    const Replaced<&lapack::Routines::zgetri> watched_complex([](const int* n, lapack::MKL_Complex16* A, const int* lda,
                                                                 const int* ipiv, lapack::MKL_Complex16* work,
                                                                 const int* lwork, int* info) {
        EXPECT_EQ(*lwork, 64 * *n);
        lapack::fortran::zgetri_(n, A, lda, ipiv, work, lwork, info);
    });
    inverse(lapack::dinv, matrices::random_real(3, 3, 1));
    inverse(lapack::zinv, matrices::random_complex(3, 3, 1));
}

TEST(Inverse, OfASingularMatrixIsASingularity)
{
    EXPECT_EQ(host_raised_by([] { inverse(lapack::dinv, matrices::real({{1, 2}, {2, 4}})); }), singularity);
    EXPECT_EQ(host_raised_by([] { inverse(lapack::dinv, matrices::real({{1, 1}, {1, 1}})); }), singularity);
    EXPECT_EQ(host_raised_by([] { inverse(lapack::dinv, matrices::real({{1, 2}, {3, 6}})); }), singularity);
    EXPECT_EQ(host_raised_by([] { inverse(lapack::zinv, matrices::complex({{1, 2}, {2, 4}})); }), singularity);
    EXPECT_EQ(host_raised_by([] { inverse(lapack::dsinv, matrices::real({{0}})); }), singularity);
}

TEST(Inverse, RefusesWhatIsNotSquareOrEmpty)
{
    for (const Inverse driver : {lapack::dinv, lapack::dsinv, lapack::zinv}) {
        EXPECT_EQ(host_raised_by([&] { inverse(driver, Qud::MatVal::empty()); }),
                  (Raised{"invalid dimension", -1, ""}));
        EXPECT_EQ(host_raised_by([&] {
                      inverse(driver, matrices::real({{1, 2}}));
                  }),
                  (Raised{"must be square", -1, ""}));
    }
}

TEST(Inverse, TakesInfinitiesAndNaNAsTheyAre)
{
    using matrices::NaN;
    const Handle Y = inverse(lapack::dinv, matrices::real({{NaN, 1}, {2, 3}}));
    EXPECT_TRUE(std::isnan(matrix_of(Y)->real(0, 0)));
    const Handle Z = inverse(lapack::dinv, matrices::real({{matrices::inf, 0}, {1, 2}}));
    EXPECT_EQ(matrix_of(Z)->Rows(), 2U);
}

TEST(Inverse, OfAViewIsThatOfTheWholeMatrix)
{
    const Handle A = matrices::random_real(20, 20, 3);
    const Handle Z = matrices::random_complex(20, 20, 3);
    const Handle S = matrices::random_symmetric(20, 3);
    EXPECT_EQ((Dense(inverse(lapack::dinv, A)) - Dense(inverse(lapack::dinv, matrices::as_view(A)))).norm1(), 0.0);
    EXPECT_EQ((Dense(inverse(lapack::dinv, S)) - Dense(inverse(lapack::dinv, matrices::as_view(S)))).norm1(), 0.0);
    EXPECT_EQ((Dense(inverse(lapack::zinv, Z)) - Dense(inverse(lapack::zinv, matrices::as_view(Z)))).norm1(), 0.0);
}

} // namespace
