// What all drivers have in common: services in order, no buffer lost, arguments untouched, info turned into messages.
#include "bailuxsko/lapack/determinant.hpp"
#include "bailuxsko/lapack/eigenvalues.hpp"
#include "bailuxsko/lapack/inverse.hpp"
#include "bailuxsko/lapack/product.hpp"
#include "bailuxsko/lapack/solve.hpp"
#include "bailuxsko/lapack/svd.hpp"
#include "efiutl/thread_count.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/lapack/refusal.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

using lapack::Routines;
using Qud::Handle;
using support::host_raised_by;
using support::Raised;

using OneMatrix = Handle (*)(EfiCallContext*, const Qud::MatVal&);
using TwoMatrices = Handle (*)(EfiCallContext*, const Qud::MatVal&, const Qud::MatVal&);

template <auto Driver, lapack::Vectors Wanted>
Handle svd(EfiCallContext* ctx, const Qud::MatVal& M)
{
    return Driver(ctx, M, Wanted);
}
constexpr OneMatrix dgesvd_values = svd<lapack::dgesvd, lapack::Vectors::none>;
constexpr OneMatrix dgesvd_vectors = svd<lapack::dgesvd, lapack::Vectors::both>;
constexpr OneMatrix zgesvd_values = svd<lapack::zgesvd, lapack::Vectors::none>;
constexpr OneMatrix zgesvd_vectors = svd<lapack::zgesvd, lapack::Vectors::both>;

/// A driver with arguments that it takes.
struct Driver {
    const char* name;
    OneMatrix one;
    TwoMatrices two;
    Handle A;
    Handle B;

    void run() const
    {
        EfiCallContext context;
        if (one)
            one(&context, *Qud::matrix_of(A));
        else
            two(&context, *Qud::matrix_of(A), *Qud::matrix_of(B));
    }
};

/// An eigenvalue driver in one of its modes, the letter of which stands behind its name.
template <Handle (*driver)(EfiCallContext*, const Qud::MatVal&, std::string_view), char mode>
Handle eigen(EfiCallContext* ctx, const Qud::MatVal& A)
{
    constexpr char letter[] = {mode};
    return driver(ctx, A, {letter, 1});
}
template <Handle (*driver)(EfiCallContext*, const Qud::MatVal&, const Qud::MatVal&, std::string_view), char mode>
Handle eigen_of_pair(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B)
{
    constexpr char letter[] = {mode};
    return driver(ctx, A, B, {letter, 1});
}

std::vector<Driver> drivers()
{
    const Handle A = matrices::random_real(5, 5, 1);
    const Handle S = matrices::random_symmetric(5, 1);
    const Handle Z = matrices::random_complex(5, 5, 1);
    const Handle B = matrices::random_real(5, 2, 2);
    const Handle tall = matrices::random_real(5, 3, 1);
    const Handle tall_complex = matrices::random_complex(5, 3, 1);
    const Handle column = matrices::random_complex(5, 1, 1);
    return {
        {"dgesv", nullptr, lapack::dgesv, A, B},
        {"zgesv", nullptr, lapack::zgesv, Z, B},
        {"dgelss", nullptr, lapack::dgelss, tall, B},
        {"zgelss", nullptr, lapack::zgelss, tall_complex, B},
        {"dinv", lapack::dinv, nullptr, A, nullptr},
        {"dinv of a symmetric matrix", lapack::dinv, nullptr, S, nullptr},
        {"dsinv", lapack::dsinv, nullptr, S, nullptr},
        {"zinv", lapack::zinv, nullptr, Z, nullptr},
        {"_determinant", lapack::_determinant, nullptr, A, nullptr},
        {"_determinant, complex", lapack::_determinant, nullptr, Z, nullptr},
        {"_gemm", nullptr, lapack::_gemm, A, B},
        {"_gemm, complex", nullptr, lapack::_gemm, Z, B},
        {"_gemm of columns", nullptr, lapack::_gemm, column, column},
        {"dgesvd, values", dgesvd_values, nullptr, tall, nullptr},
        {"dgesvd", dgesvd_vectors, nullptr, tall, nullptr},
        {"zgesvd, values", zgesvd_values, nullptr, tall_complex, nullptr},
        {"zgesvd", zgesvd_vectors, nullptr, tall_complex, nullptr},
        {"dsyev E", eigen<lapack::dsyev, 'E'>, nullptr, S, nullptr},
        {"dsyev R", eigen<lapack::dsyev, 'R'>, nullptr, S, nullptr},
        {"zheev E", eigen<lapack::zheev, 'E'>, nullptr, Z, nullptr},
        {"zheev L", eigen<lapack::zheev, 'L'>, nullptr, Z, nullptr},
        {"dgeev E", eigen<lapack::dgeev, 'E'>, nullptr, A, nullptr},
        {"dgeev R", eigen<lapack::dgeev, 'R'>, nullptr, A, nullptr},
        {"dgeev L", eigen<lapack::dgeev, 'L'>, nullptr, A, nullptr},
        {"zgeev E", eigen<lapack::zgeev, 'E'>, nullptr, Z, nullptr},
        {"zgeev R", eigen<lapack::zgeev, 'R'>, nullptr, Z, nullptr},
        {"zgeev L", eigen<lapack::zgeev, 'L'>, nullptr, Z, nullptr},
        {"dggev E", nullptr, eigen_of_pair<lapack::dggev, 'E'>, A, S},
        {"dggev R", nullptr, eigen_of_pair<lapack::dggev, 'R'>, A, S},
        {"dggev L", nullptr, eigen_of_pair<lapack::dggev, 'L'>, A, S},
        {"zggev E", nullptr, eigen_of_pair<lapack::zggev, 'E'>, Z, S},
        {"zggev R", nullptr, eigen_of_pair<lapack::zggev, 'R'>, Z, S},
        {"zggev L", nullptr, eigen_of_pair<lapack::zggev, 'L'>, Z, S},
    };
}

/// The services as they are called, a letter each: F frees the provider's buffers, T sets the thread count, + takes a
/// buffer, - gives one back.
struct Log {
    static inline std::string calls;
    static inline int threads = 0;
    static inline int requests_until_failure = -1;
};

void* logged_malloc(std::size_t bytes, int alignment) noexcept
{
    if (Log::requests_until_failure == 0)
        return nullptr;
    --Log::requests_until_failure;
    Log::calls += '+';
    return lapack::MKL_malloc(bytes, alignment);
}

void logged_free(void* block) noexcept
{
    if (block)
        Log::calls += '-';
    lapack::MKL_free(block);
}

class Drivers : public testing::Test {
protected:
    void SetUp() override
    {
        Log::calls.clear();
        Log::requests_until_failure = -1;
    }

    static std::ptrdiff_t count(char call) { return std::count(Log::calls.begin(), Log::calls.end(), call); }

private:
    Replaced<&Routines::free_buffers> m_free_buffers{[]() noexcept { Log::calls += 'F'; }};
    Replaced<&Routines::set_num_threads> m_set_num_threads{[](int threads) noexcept {
        Log::calls += 'T';
        Log::threads = threads;
        lapack::MKL_Set_Num_Threads(threads);
    }};
    Replaced<&Routines::malloc> m_malloc{logged_malloc};
    Replaced<&Routines::free> m_free{logged_free};
};

/// Free_Buffers, then the thread count, then buffers; at the end the buffers, then Free_Buffers.
void expect_services_in_order(const char* name)
{
    EXPECT_TRUE(Log::calls.starts_with("FT")) << name << ": " << Log::calls;
    EXPECT_TRUE(Log::calls.ends_with("F")) << name << ": " << Log::calls;
    EXPECT_EQ(std::count(Log::calls.begin(), Log::calls.end(), 'F'), 2) << name << ": " << Log::calls;
    EXPECT_EQ(std::count(Log::calls.begin(), Log::calls.end(), 'T'), 1) << name << ": " << Log::calls;
    EXPECT_EQ(std::count(Log::calls.begin(), Log::calls.end(), '+'),
              std::count(Log::calls.begin(), Log::calls.end(), '-'))
        << name << ": " << Log::calls;
}

TEST_F(Drivers, CallTheServicesInOrder)
{
    for (const Driver& driver : drivers()) {
        Log::calls.clear();
        driver.run();
        expect_services_in_order(driver.name);
    }
}

TEST_F(Drivers, SetTheThreadCountThatWasSetFromOutside)
{
    const std::uint32_t before = Efi::MKL_NUM_THREADS;
    for (const Driver& driver : drivers())
        for (const std::uint32_t threads : {1U, 3U, 2U}) {
            Efi::MKL_NUM_THREADS = threads;
            driver.run();
            EXPECT_EQ(Log::threads, static_cast<int>(threads)) << driver.name;
            EXPECT_EQ(lapack::MKL_Get_Max_Threads(), static_cast<int>(threads)) << driver.name;
        }
    Efi::MKL_NUM_THREADS = before;
}

TEST_F(Drivers, FailAtEveryRequestForMemoryAndLoseNothing)
{
    for (const Driver& driver : drivers()) {
        int request = 0;
        for (;; ++request) {
            ASSERT_LT(request, 100);
            Log::calls.clear();
            Log::requests_until_failure = request;
            const Raised raised = host_raised_by([&] { driver.run(); });
            expect_services_in_order(driver.name);
            if (raised.message.empty())
                break;
            EXPECT_EQ(raised, (Raised{"out of memory", -1, ""})) << driver.name << ", request " << request;
            EXPECT_EQ(count('+'), request) << driver.name;
        }
        EXPECT_EQ(count('+'), request) << driver.name;
    }
}

TEST_F(Drivers, NeverWriteToTheirArguments)
{
    for (Driver driver : drivers())
        for (const bool views : {false, true}) {
            if (views) {
                driver.A = matrices::as_view(driver.A);
                driver.B = driver.B ? matrices::as_view(driver.B) : nullptr;
            }
            const std::vector<double> A = matrices::stored(driver.A);
            const std::vector<double> B = driver.B ? matrices::stored(driver.B) : std::vector<double>();
            driver.run();
            EXPECT_EQ(matrices::stored(driver.A), A) << driver.name;
            EXPECT_EQ(driver.B ? matrices::stored(driver.B) : B, B) << driver.name;
        }
}

/// The error of a driver while one routine answers with a verdict other than 0.
template <auto Member, int Verdict>
Raised refused(TwoMatrices two, OneMatrix one, const Handle& A, const Handle& B = nullptr)
{
    using Pointer = std::remove_cvref_t<decltype(std::declval<Routines&>().*Member)>;
    const Replaced<Member> stub(&Refusal<Verdict, Pointer>::routine);
    Log::calls.clear();
    Raised raised = host_raised_by([&] { Driver{"", one, two, A, B}.run(); });
    expect_services_in_order("refused");
    return raised;
}

template <auto Member>
void expect_refusal(TwoMatrices two, OneMatrix one, const Handle& A, const Handle& B, const Raised& expected)
{
    EXPECT_EQ((refused<Member, 1>(two, one, A, B)), expected);
    EXPECT_EQ((refused<Member, -3>(two, one, A, B)), expected);
}

TEST_F(Drivers, TurnEveryInfoIntoAMessage)
{
    const Raised not_converging{"not converging", -1, ""};
    const Raised singularity{"singularity", -1, ""};
    const Raised nothing;
    const Handle A = matrices::random_real(4, 4, 1);
    const Handle S = matrices::random_symmetric(4, 1);
    const Handle Z = matrices::random_complex(4, 4, 1);
    const Handle B = matrices::random_real(4, 1, 1);
    expect_refusal<&Routines::dgesv>(lapack::dgesv, nullptr, A, B, not_converging);
    expect_refusal<&Routines::zgesv>(lapack::zgesv, nullptr, Z, B, not_converging);
    expect_refusal<&Routines::dgelsy>(lapack::dgelss, nullptr, A, B, not_converging);
    expect_refusal<&Routines::zgelsy>(lapack::zgelss, nullptr, Z, B, not_converging);
    expect_refusal<&Routines::dgetrf>(nullptr, lapack::dinv, A, nullptr, singularity);
    expect_refusal<&Routines::dgetri>(nullptr, lapack::dinv, A, nullptr, singularity);
    expect_refusal<&Routines::dsytrf>(nullptr, lapack::dinv, S, nullptr, singularity);
    expect_refusal<&Routines::dsytri>(nullptr, lapack::dinv, S, nullptr, singularity);
    expect_refusal<&Routines::zgetrf>(nullptr, lapack::zinv, Z, nullptr, singularity);
    expect_refusal<&Routines::zgetri>(nullptr, lapack::zinv, Z, nullptr, singularity);
    expect_refusal<&Routines::dgesvd>(nullptr, dgesvd_values, A, nullptr, not_converging);
    expect_refusal<&Routines::dgesvd>(nullptr, dgesvd_vectors, A, nullptr, not_converging);
    expect_refusal<&Routines::zgesvd>(nullptr, zgesvd_values, Z, nullptr, not_converging);
    expect_refusal<&Routines::zgesvd>(nullptr, zgesvd_vectors, Z, nullptr, not_converging);
    expect_refusal<&Routines::dsyev>(nullptr, eigen<lapack::dsyev, 'E'>, S, nullptr, not_converging);
    expect_refusal<&Routines::dsyev>(nullptr, eigen<lapack::dsyev, 'R'>, S, nullptr, not_converging);
    expect_refusal<&Routines::zheev>(nullptr, eigen<lapack::zheev, 'E'>, Z, nullptr, not_converging);
    expect_refusal<&Routines::zheev>(nullptr, eigen<lapack::zheev, 'R'>, Z, nullptr, not_converging);
    expect_refusal<&Routines::dgeev>(nullptr, eigen<lapack::dgeev, 'E'>, A, nullptr, not_converging);
    expect_refusal<&Routines::dgeev>(nullptr, eigen<lapack::dgeev, 'L'>, A, nullptr, not_converging);
    expect_refusal<&Routines::zgeev>(nullptr, eigen<lapack::zgeev, 'E'>, Z, nullptr, not_converging);
    expect_refusal<&Routines::zgeev>(nullptr, eigen<lapack::zgeev, 'R'>, Z, nullptr, not_converging);
    expect_refusal<&Routines::dggev>(eigen_of_pair<lapack::dggev, 'E'>, nullptr, A, S, not_converging);
    expect_refusal<&Routines::dggev>(eigen_of_pair<lapack::dggev, 'R'>, nullptr, A, S, not_converging);
    expect_refusal<&Routines::zggev>(eigen_of_pair<lapack::zggev, 'E'>, nullptr, Z, S, not_converging);
    expect_refusal<&Routines::zggev>(eigen_of_pair<lapack::zggev, 'L'>, nullptr, Z, S, not_converging);
    expect_refusal<&Routines::dgetrf>(nullptr, lapack::_determinant, A, nullptr, nothing);
    expect_refusal<&Routines::zgetrf>(nullptr, lapack::_determinant, Z, nullptr, nothing);
}

TEST_F(Drivers, ARefusedFactorisationGivesTheDeterminantZero)
{
    const Replaced<&Routines::dgetrf> refuses(&Refusal<-1, decltype(Routines::dgetrf)>::routine);
    EfiCallContext context;
    const Handle d = lapack::_determinant(&context, *Qud::matrix_of(matrices::real({{5}})));
    EXPECT_EQ(Qud::as_number(d)->re(), 0.0);
    EXPECT_EQ(Qud::as_number(d)->im(), 0.0);
}

} // namespace
