// Eigenvalues and eigenvectors by every driver: which routine with which flags and work, residuals and orthogonality,
// views, elements that are not finite, sizes beyond the buffers.
#include "bailuxsko/eigenvalues.hpp"
#include "bailuxsko/lapack/eigenvalues.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <string>
#include <type_traits>
#include <utility>

namespace {

namespace IntelMKL = Efi::IntelMKL;
using lapack::Routines;
using matrices::Complex;
using matrices::Dense;
using matrices::random_hermitian;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

const Handle left = Qud::StrVal::make("L");
const Handle right = Qud::StrVal::make("R");

/// What the routines were called with: job letters, n, lwork.
struct Seen {
    static inline std::string flags;
    static inline int lwork = 0;

    static void note(std::string letters, const int* work)
    {
        EXPECT_EQ(flags, "") << "one call of LAPACK a call of the driver";
        flags = std::move(letters);
        lwork = *work;
    }
};

void watched_dsyev(const char* jobz, const char* uplo, const int* n, double* A, const int* lda, double* w, double* work,
                   const int* lwork, int* info, std::size_t a, std::size_t b)
{
    Seen::note({*jobz, *uplo}, lwork);
    lapack::fortran::dsyev_(jobz, uplo, n, A, lda, w, work, lwork, info, a, b);
}
void watched_zheev(const char* jobz, const char* uplo, const int* n, lapack::MKL_Complex16* A, const int* lda,
                   double* w, lapack::MKL_Complex16* work, const int* lwork, double* rwork, int* info, std::size_t a,
                   std::size_t b)
{
    Seen::note({*jobz, *uplo}, lwork);
    lapack::fortran::zheev_(jobz, uplo, n, A, lda, w, work, lwork, rwork, info, a, b);
}
void watched_dgeev(const char* jobvl, const char* jobvr, const int* n, double* A, const int* lda, double* wr,
                   double* wi, double* vl, const int* ldvl, double* vr, const int* ldvr, double* work, const int* lwork,
                   int* info, std::size_t a, std::size_t b)
{
    Seen::note({*jobvl, *jobvr}, lwork);
    EXPECT_EQ(*ldvl, *jobvl == 'V' ? *n : 1);
    EXPECT_EQ(*ldvr, *jobvr == 'V' ? *n : 1);
    lapack::fortran::dgeev_(jobvl, jobvr, n, A, lda, wr, wi, vl, ldvl, vr, ldvr, work, lwork, info, a, b);
}
void watched_zgeev(const char* jobvl, const char* jobvr, const int* n, lapack::MKL_Complex16* A, const int* lda,
                   lapack::MKL_Complex16* w, lapack::MKL_Complex16* vl, const int* ldvl, lapack::MKL_Complex16* vr,
                   const int* ldvr, lapack::MKL_Complex16* work, const int* lwork, double* rwork, int* info,
                   std::size_t a, std::size_t b)
{
    Seen::note({*jobvl, *jobvr}, lwork);
    lapack::fortran::zgeev_(jobvl, jobvr, n, A, lda, w, vl, ldvl, vr, ldvr, work, lwork, rwork, info, a, b);
}
void watched_dggev(const char* jobvl, const char* jobvr, const int* n, double* A, const int* lda, double* B,
                   const int* ldb, double* alphar, double* alphai, double* beta, double* vl, const int* ldvl,
                   double* vr, const int* ldvr, double* work, const int* lwork, int* info, std::size_t a, std::size_t b)
{
    Seen::note({*jobvl, *jobvr}, lwork);
    lapack::fortran::dggev_(jobvl, jobvr, n, A, lda, B, ldb, alphar, alphai, beta, vl, ldvl, vr, ldvr, work, lwork,
                            info, a, b);
}
void watched_zggev(const char* jobvl, const char* jobvr, const int* n, lapack::MKL_Complex16* A, const int* lda,
                   lapack::MKL_Complex16* B, const int* ldb, lapack::MKL_Complex16* alpha, lapack::MKL_Complex16* beta,
                   lapack::MKL_Complex16* vl, const int* ldvl, lapack::MKL_Complex16* vr, const int* ldvr,
                   lapack::MKL_Complex16* work, const int* lwork, double* rwork, int* info, std::size_t a,
                   std::size_t b)
{
    Seen::note({*jobvl, *jobvr}, lwork);
    lapack::fortran::zggev_(jobvl, jobvr, n, A, lda, B, ldb, alpha, beta, vl, ldvl, vr, ldvr, work, lwork, rwork, info,
                            a, b);
}

/// Runs a call of which one routine is watched, and answers its flags and lwork.
template <auto Member, class Call>
std::string watched(std::remove_cvref_t<decltype(std::declval<Routines&>().*Member)> routine, Call call)
{
    const Replaced<Member> watch(routine);
    Seen::flags.clear();
    call();
    return Seen::flags + " " + std::to_string(Seen::lwork);
}

TEST(EigenDrivers, AreChosenByTheExactStructureAndAskedForWhatIsWanted)
{
    const std::uint32_t n = 5; // lwork is 16 n, for a real pair 16 (n + 1); nobody asks for the best size first
    const Handle S = matrices::random_symmetric(n, 1);
    const Handle H = random_hermitian(n, 2);
    const Handle A = matrices::random_real(n, n, 3);
    const Handle Z = matrices::random_complex(n, n, 4);
    EXPECT_EQ(watched<&Routines::dsyev>(watched_dsyev, [&] { IntelMKL::eigenvals(S); }), "NU 80");
    EXPECT_EQ(watched<&Routines::dsyev>(watched_dsyev, [&] { IntelMKL::eigenvecs(S, nullptr); }), "VU 80");
    EXPECT_EQ(watched<&Routines::dsyev>(watched_dsyev, [&] { IntelMKL::eigenvecs(S, left); }), "VU 80");
    EXPECT_EQ(watched<&Routines::zheev>(watched_zheev, [&] { IntelMKL::eigenvals(H); }), "NU 80");
    EXPECT_EQ(watched<&Routines::zheev>(watched_zheev, [&] { IntelMKL::eigenvecs(H, right); }), "VU 80");
    EXPECT_EQ(watched<&Routines::dgeev>(watched_dgeev, [&] { IntelMKL::eigenvals(A); }), "NN 80");
    EXPECT_EQ(watched<&Routines::dgeev>(watched_dgeev, [&] { IntelMKL::eigenvecs(A, nullptr); }), "NV 80");
    EXPECT_EQ(watched<&Routines::dgeev>(watched_dgeev, [&] { IntelMKL::eigenvecs(A, left); }), "VN 80");
    EXPECT_EQ(watched<&Routines::zgeev>(watched_zgeev, [&] { IntelMKL::eigenvals(Z); }), "NN 80");
    EXPECT_EQ(watched<&Routines::zgeev>(watched_zgeev, [&] { IntelMKL::eigenvecs(Z, left); }), "VN 80");
    EXPECT_EQ(watched<&Routines::dggev>(watched_dggev, [&] { IntelMKL::genvals(A, S); }), "NN 96");
    EXPECT_EQ(watched<&Routines::dggev>(watched_dggev, [&] { IntelMKL::genvals(A, Z); }), "NN 96");
    EXPECT_EQ(watched<&Routines::dggev>(watched_dggev, [&] { IntelMKL::genvecs(S, S, nullptr); }), "NV 96");
    EXPECT_EQ(watched<&Routines::zggev>(watched_zggev, [&] { IntelMKL::genvals(Z, A); }), "NN 80");
    EXPECT_EQ(watched<&Routines::zggev>(watched_zggev, [&] { IntelMKL::genvecs(Z, Z, left); }), "VN 80");
}

/// norm1(A V - B V Lambda) / (n eps norm1(A) norm1(V)), B being the identity where there is none.
double residual(const Handle& a, const Handle& b, const Handle& values, const Handle& vectors)
{
    const Dense A(a), B = b ? Dense(b) : Dense::identity(A.rows()), V(vectors), w(values);
    Dense scaled = B * V;
    for (std::size_t j = 0; j < V.cols(); ++j)
        for (std::size_t i = 0; i < V.rows(); ++i)
            scaled.at(i, j) *= w.at(j, 0);
    return (A * V - scaled).norm1() / (static_cast<double>(A.rows()) * matrices::eps * A.norm1() * V.norm1());
}

/// The same for left vectors: norm1(V^H A - Lambda V^H B), by the conjugate transposes.
double residual_left(const Handle& a, const Handle& values, const Handle& vectors)
{
    const Dense A(a), V(vectors), w(values);
    Dense scaled = V.conjugate_transpose();
    for (std::size_t j = 0; j < V.cols(); ++j)
        for (std::size_t i = 0; i < V.rows(); ++i)
            scaled.at(j, i) *= w.at(j, 0);
    return (V.conjugate_transpose() * A - scaled).norm1() /
           (static_cast<double>(A.rows()) * matrices::eps * A.norm1() * V.norm1());
}

double orthogonality(const Handle& vectors)
{
    const Dense V(vectors);
    return (V.conjugate_transpose() * V - Dense::identity(V.rows())).norm1() /
           (static_cast<double>(V.rows()) * matrices::eps);
}

void expect_ordered(const Handle& values)
{
    const Qud::MatVal& w = *matrix_of(values);
    for (std::size_t i = 1; i < w.Rows(); ++i)
        EXPECT_GE(w.real(i - 1, 0), w.real(i, 0)) << i;
}

TEST(EigenDrivers, ResidualsOrthogonalityAndOrder)
{
    for (const std::uint32_t n : {2U, 3U, 5U, 10U, 31U, 33U, 64U, 65U, 100U}) {
        const Handle S = matrices::random_symmetric(n, n);
        const Handle H = random_hermitian(n, n);
        const Handle A = matrices::random_real(n, n, n);
        const Handle Z = matrices::random_complex(n, n, n);
        for (const Handle& M : {S, H, A, Z}) {
            const Handle values = IntelMKL::eigenvals(M);
            expect_ordered(values);
            EXPECT_LT(residual(M, nullptr, values, IntelMKL::eigenvecs(M, right)), 30) << n;
            EXPECT_LT(residual_left(M, values, IntelMKL::eigenvecs(M, left)), 30) << n;
        }
        EXPECT_LT(orthogonality(IntelMKL::eigenvecs(S, nullptr)), 30) << n;
        EXPECT_LT(orthogonality(IntelMKL::eigenvecs(H, nullptr)), 30) << n;
        const Handle B = matrices::random_real(n, n, n + 1);
        for (const Handle& M : {A, Z}) {
            const Handle values = IntelMKL::genvals(M, B);
            expect_ordered(values);
            EXPECT_LT(residual(M, B, values, IntelMKL::genvecs(M, B, nullptr)), 300) << n; // B is no unit matrix
        }
    }
}

TEST(EigenDrivers, RealAndComplexResults)
{
    const Handle S = matrices::random_symmetric(4, 1);
    const Handle H = random_hermitian(4, 1);
    const Handle A = matrices::random_real(4, 4, 1);
    EXPECT_FALSE(matrix_of(IntelMKL::eigenvals(S))->HasImag());
    EXPECT_FALSE(matrix_of(IntelMKL::eigenvecs(S, nullptr))->HasImag());
    EXPECT_FALSE(matrix_of(IntelMKL::eigenvals(H))->HasImag());
    EXPECT_TRUE(matrix_of(IntelMKL::eigenvecs(H, nullptr))->HasImag());
    for (const Handle& M : {A, matrices::random_complex(4, 4, 1)}) {
        EXPECT_TRUE(matrix_of(IntelMKL::eigenvals(M))->HasImag());
        EXPECT_TRUE(matrix_of(IntelMKL::eigenvecs(M, nullptr))->HasImag());
        EXPECT_TRUE(matrix_of(IntelMKL::genvals(M, S))->HasImag());
        EXPECT_TRUE(matrix_of(IntelMKL::genvecs(M, S, nullptr))->HasImag());
    }
}

/// Finds 7 and an infinite pair of which the numerators are +-5i, and the vectors 1 ... 9.
void dggev_with_an_infinite_pair(const char*, const char*, const int* n, double*, const int*, double*, const int*,
                                 double* alphar, double* alphai, double* beta, double*, const int*, double* vr,
                                 const int*, double*, const int*, int* info, std::size_t, std::size_t)
{
    ASSERT_EQ(*n, 3);
    std::copy_n(std::array{0.0, 0.0, 7.0}.data(), 3, alphar);
    std::copy_n(std::array{5.0, -5.0, 0.0}.data(), 3, alphai);
    std::copy_n(std::array{0.0, 0.0, 1.0}.data(), 3, beta);
    if (vr)
        std::iota(vr, vr + 9, 1.0);
    *info = 0;
}

TEST(EigenDrivers, TheAdjustedImaginaryPartsDecideWhichVectorsArePairs)
{
    const Replaced<&Routines::dggev> infinite_pair(dggev_with_an_infinite_pair);
    const Handle A = matrices::random_real(3, 3, 1);
    // Without a real part the imaginary one becomes 0, and no column is half of a pair. The heap leaves 2, 0, 1.
    EXPECT_EQ(matrices::stored(IntelMKL::genvals(A, A)), (std::vector<double>{7, 0, 0, 0, 0, 0}));
    EXPECT_EQ(matrices::stored(IntelMKL::genvecs(A, A, nullptr)),
              (std::vector<double>{7, 8, 9, 1, 2, 3, 4, 5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(EigenDrivers, AViewGivesWhatTheWholeMatrixGives)
{
    for (const Handle& M : {matrices::random_symmetric(6, 1), random_hermitian(6, 1), matrices::random_real(6, 6, 1),
                            matrices::random_complex(6, 6, 1)}) {
        const Handle view = matrices::as_view(M);
        EXPECT_EQ(matrices::stored(IntelMKL::eigenvals(view)), matrices::stored(IntelMKL::eigenvals(M)));
        EXPECT_EQ(matrices::stored(IntelMKL::eigenvecs(view, left)), matrices::stored(IntelMKL::eigenvecs(M, left)));
        EXPECT_EQ(matrices::stored(IntelMKL::genvals(view, view)), matrices::stored(IntelMKL::genvals(M, M)));
    }
}

// The driver looks before LAPACK does: with NaN the routines may print or end the process. Under CTest's time limit.
TEST(EigenDrivers, RefuseInfinitiesAndNaNInEveryPosition)
{
    const Raised expected{"not converging", -1};
    const Handle B = matrices::random_real(3, 3, 9);
    for (std::uint32_t place = 0; place < 9; ++place)
        for (const double odd : {matrices::NaN, matrices::inf, -matrices::inf}) {
            const auto at = [&](auto i, auto j) { return i + 3 * j == place ? odd : double(i * j + 1); };
            for (const Handle& M : {matrices::generate(3, 3, at),
                                    matrices::generate(3, 3, [&](auto i, auto j) { return Complex(at(i, j), 0.0); }),
                                    matrices::generate(3, 3, [&](auto i, auto j) { return Complex(1.0, at(i, j)); })}) {
                EXPECT_EQ(host_raised_by([&] { IntelMKL::eigenvals(M); }), expected);
                EXPECT_EQ(host_raised_by([&] { IntelMKL::eigenvecs(M, left); }), expected);
                EXPECT_EQ(host_raised_by([&] { IntelMKL::genvals(M, B); }), expected);
                EXPECT_EQ(host_raised_by([&] { IntelMKL::genvals(B, M); }), expected);
                EXPECT_EQ(host_raised_by([&] { IntelMKL::genvecs(M, B, nullptr); }), expected);
            }
        }
}

/// A square matrix that has no elements: its size is refused before any is read.
Handle of_size_only(std::uint32_t n, bool with_imaginary)
{
    const Qud::FreshNumbers none = Qud::fresh_numbers(1);
    none[0] = 1.0;
    return Qud::MatVal::make({.rows = n,
                              .cols = n,
                              .anr = n,
                              .offset = 0,
                              .real = none,
                              .imaginary = with_imaginary ? none : nullptr,
                              .units = {},
                              .entries = nullptr});
}

TEST(EigenDrivers, BuffersOfTwoGigabytesAreOutOfMemory)
{
    const Raised expected{"out of memory", -1};
    using OfOne = Handle (*)(EfiCallContext*, const Qud::MatVal&, std::string_view);
    using OfTwo = Handle (*)(EfiCallContext*, const Qud::MatVal&, const Qud::MatVal&, std::string_view);
    EfiCallContext context;
    const Handle real = of_size_only(16384, false);          // 16384^2 doubles are 2 GiB
    const Handle with_imaginary = of_size_only(11586, true); // and 11586^2 complex ones more than that
    for (const OfOne driver : {OfOne{lapack::dsyev}, OfOne{lapack::dgeev}})
        EXPECT_EQ(host_raised_by([&] { driver(&context, *matrix_of(real), "E"); }), expected);
    for (const OfOne driver : {OfOne{lapack::zheev}, OfOne{lapack::zgeev}})
        EXPECT_EQ(host_raised_by([&] { driver(&context, *matrix_of(with_imaginary), "E"); }), expected);
    const OfTwo of_real = lapack::dggev;
    const OfTwo of_complex = lapack::zggev;
    EXPECT_EQ(host_raised_by([&] { of_real(&context, *matrix_of(real), *matrix_of(real), "R"); }), expected);
    EXPECT_EQ(host_raised_by([&] { of_complex(&context, *matrix_of(with_imaginary), *matrix_of(real), "R"); }),
              expected);
    const Handle beyond = of_size_only(std::uint32_t{1} << 28, false); // 16 n passes 32-bit integers
    EXPECT_EQ(host_raised_by([&] { lapack::dsyev(&context, *matrix_of(beyond), "E"); }), (Raised{"matrix too big", 1}));
}

} // namespace
