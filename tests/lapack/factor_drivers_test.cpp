// The drivers of LU, QR and Cholesky work in the call's arena: what they ask of the provider, and what comes of its
// answers. (Those of the singular values keep to the services like all others: driver_test.cpp.)
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/cholesky.hpp"
#include "bailuxsko/lapack/lu.hpp"
#include "bailuxsko/lapack/qr.hpp"
#include "efiutl/throw.hpp"
#include "tests/lapack/factor_residuals.hpp"
#include "tests/lapack/refusal.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

namespace {

using lapack::Routines;
using lapack::Triangle;
using matrices::random_complex;
using matrices::random_real;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

using Run = Handle (*)(EfiCallContext*, const Qud::MatVal&);

template <auto Driver, Triangle Side>
Handle triangle(EfiCallContext* ctx, const Qud::MatVal& M)
{
    return Driver(ctx, M, Side);
}

struct Driver {
    const char* name;
    Run run;
    Handle M;

    Handle operator()() const
    {
        EfiCallContext context;
        return run(&context, *matrix_of(M));
    }
};

std::vector<Driver> drivers()
{
    const Handle A = random_real(7, 5, 1);
    const Handle Z = random_complex(7, 5, 1);
    const Handle S = matrices::positive_definite(random_real(6, 6, 1));
    const Handle H = matrices::positive_definite(random_complex(6, 6, 1));
    return {
        {"dlu", lapack::dlu, A},
        {"zlu", lapack::zlu, Z},
        {"dqr", lapack::dqr, A},
        {"zqr", lapack::zqr, Z},
        {"dqr_pvt", lapack::dqr_pvt, A},
        {"zqr_pvt", lapack::zqr_pvt, Z},
        {"dCholesky", triangle<lapack::dCholesky, Triangle::lower>, S},
        {"zCholesky", triangle<lapack::zCholesky, Triangle::upper>, H},
        {"dCholesky_pvt", triangle<lapack::dCholesky_pvt, Triangle::upper>, S},
        {"zCholesky_pvt", triangle<lapack::zCholesky_pvt, Triangle::lower>, H},
    };
}

TEST(FactorDrivers, CallNoServiceOfTheProvider)
{
    static int calls = 0;
    const Replaced<&Routines::free_buffers> free_buffers([]() noexcept { ++calls; });
    const Replaced<&Routines::set_num_threads> threads([](int) noexcept { ++calls; });
    const Replaced<&Routines::malloc> malloc([](std::size_t bytes, int alignment) noexcept {
        ++calls;
        return lapack::MKL_malloc(bytes, alignment);
    });
    for (const Driver& driver : drivers())
        driver();
    EXPECT_EQ(calls, 0);
}

TEST(FactorDrivers, NeverWriteToTheirArgument)
{
    for (Driver driver : drivers())
        for (const bool is_view : {false, true}) {
            if (is_view)
                driver.M = matrices::as_view(driver.M);
            const std::vector<double> before = matrices::stored(driver.M);
            driver();
            EXPECT_EQ(matrices::stored(driver.M), before) << driver.name;
        }
}

TEST(FactorDrivers, FailAtEveryRequestOfTheArenaAndLoseNothing)
{
    const Handle zero = Qud::NumVal::make(0.0);
    using Evl::Run::AppException;
    const auto requests = [](auto call) { return support::fails_at_every_request<AppException>(call); };
    for (const Handle& M : {random_real(70, 50, 1), random_complex(70, 50, 1)}) {
        EXPECT_EQ(requests([&] { Efi::IntelMKL::LU(M); }), 2U);
        EXPECT_EQ(requests([&] { Efi::IntelMKL::QR(M, zero); }), 3U);
        EXPECT_EQ(requests([&] { Efi::IntelMKL::QR(M); }), matrix_of(M)->HasImag() ? 2U : 4U);
        const Handle S = matrices::positive_definite(M);
        EXPECT_EQ(requests([&] { Efi::IntelMKL::Cholesky(S, zero); }), matrix_of(M)->HasImag() ? 1U : 0U);
        EXPECT_EQ(requests([&] { Efi::IntelMKL::Cholesky(S); }), matrix_of(M)->HasImag() ? 3U : 2U);
    }
}

/// How an error leaves a driver: as a native one or as the host's.
struct Failure {
    Raised raised;
    bool is_native = false;

    friend bool operator==(const Failure&, const Failure&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Failure& failure)
    {
        return out << failure.raised << (failure.is_native ? ", native" : ", the host's");
    }
};

template <class Call>
Failure failure_of(Call call)
{
    try {
        return {host_raised_by(call), false};
    } catch (const Efi::NativeError& error) {
        return {{error.what(), error.index()}, true};
    }
}

template <auto Member, int Verdict>
Failure refused(Run run, const Handle& M)
{
    const Replaced<Member> stub(&Refusal<Verdict, std::remove_cvref_t<decltype(lapack::routines().*Member)>>::routine);
    return failure_of([&] { Driver{"", run, M}(); });
}

template <auto Member>
void expect_refusal(Run run, const Handle& M, const Failure& expected)
{
    EXPECT_EQ((refused<Member, 1>(run, M)), expected);
    EXPECT_EQ((refused<Member, -3>(run, M)), expected);
}

TEST(FactorDrivers, TurnEveryInfoIntoAMessage)
{
    const Handle A = random_real(4, 4, 1);
    const Handle Z = random_complex(4, 4, 1);
    const Failure host{{"not converging", -1}, false};
    const Failure native{{"not converging", -1}, true};
    expect_refusal<&Routines::dgeqrf>(lapack::dqr, A, host);
    expect_refusal<&Routines::dorgqr>(lapack::dqr, A, host);
    expect_refusal<&Routines::zgeqrf>(lapack::zqr, Z, host);
    expect_refusal<&Routines::zungqr>(lapack::zqr, Z, host);
    expect_refusal<&Routines::dgeqpf>(lapack::dqr_pvt, A, native);
    expect_refusal<&Routines::dorgqr>(lapack::dqr_pvt, A, native);
    expect_refusal<&Routines::zgeqpf>(lapack::zqr_pvt, Z, native);
    expect_refusal<&Routines::zungqr>(lapack::zqr_pvt, Z, native);
}

TEST(FactorDrivers, TurnEveryInfoOfCholeskyIntoAMessage)
{
    const Handle S = matrices::positive_definite(random_real(4, 4, 1));
    const Handle H = matrices::positive_definite(random_complex(4, 4, 1));
    const Failure host{{"non-positive definite matrix", -1}, false};
    const Failure native{{"non-positive definite matrix", -1}, true};
    expect_refusal<&Routines::dpotrf>(triangle<lapack::dCholesky, Triangle::lower>, S, host);
    expect_refusal<&Routines::zpotrf>(triangle<lapack::zCholesky, Triangle::lower>, H, host);
    expect_refusal<&Routines::dpstrf>(triangle<lapack::dCholesky_pvt, Triangle::lower>, S, native);
    expect_refusal<&Routines::zpstrf>(triangle<lapack::zCholesky_pvt, Triangle::lower>, H, native);
}

TEST(FactorDrivers, CholeskySaysWhichPartIsNotPositiveDefinite)
{
    const std::string part = "the leading 2 by 2 part of the matrix is not positive definite";
    const Handle S = matrices::real({{1, 2, 0}, {2, 1, 0}, {0, 0, 1}});
    const Handle H = matrices::complex({{1, 2, 0}, {2, 1, 0}, {0, 0, 1}});
    const Handle zero = Qud::NumVal::make(0.0);
    for (const Handle& M : {S, H})
        EXPECT_EQ(host_raised_by([&] { Efi::IntelMKL::Cholesky(M, zero); }).detail, part);
}

TEST(FactorDrivers, LuDoesNotLookAtInfo)
{
    const Handle A = random_real(4, 4, 1);
    const Handle Z = random_complex(4, 4, 1);
    // The stub exchanges nothing and leaves the matrix as it was: P is the identity, U the upper triangle.
    const Replaced<&Routines::dgetrf> real(&Refusal<-3, decltype(Routines::dgetrf)>::routine);
    const Replaced<&Routines::zgetrf> complex(&Refusal<7, decltype(Routines::zgetrf)>::routine);
    for (const Driver& driver : {Driver{"dlu", lapack::dlu, A}, Driver{"zlu", lapack::zlu, Z}}) {
        const Handle lu = driver();
        EXPECT_EQ((matrices::Dense(matrices::factor(lu, 0)) - matrices::Dense::identity(4)).norm1(), 0.0);
        EXPECT_EQ(matrix_of(matrices::factor(lu, 2))->real(0, 3), matrix_of(driver.M)->real(0, 3));
    }
}

} // namespace
