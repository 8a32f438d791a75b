#include "bailuxsko/eigenvalues.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/determinant.hpp"
#include "bailuxsko/lapack/inverse.hpp"
#include "bailuxsko/lapack/lock.hpp"
#include "bailuxsko/lapack/product.hpp"
#include "bailuxsko/lapack/provider.hpp"
#include "efiutl/thread_count.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <thread>

namespace {

using Efi::IntelMKL::getMaxThreads;
using Efi::IntelMKL::setNumThreads;
using matrices::Dense;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

double number(const Handle& value)
{
    const Qud::NumVal* const n = Qud::as_number(value);
    EXPECT_TRUE(n && n->im() == 0.0 && n->m_dim == Qud::Dim::identity);
    return n ? n->re() : matrices::NaN;
}

/// No thread holds the lock: another one gets in.
bool is_lock_free()
{
    bool entered = false;
    std::thread([&] {
        entered = lapack::g_MKL_mutex.try_enter();
        if (entered)
            lapack::g_MKL_mutex.leave();
    }).join();
    return entered;
}

class ThreadCount : public testing::Test {
protected:
    void TearDown() override
    {
        Efi::MKL_NUM_THREADS = m_before;
        lapack::MKL_Set_Num_Threads(static_cast<int>(m_before));
    }

private:
    std::uint32_t m_before = Efi::MKL_NUM_THREADS;
};

TEST_F(ThreadCount, SetGivesTheCountUntilThen)
{
    EXPECT_EQ(number(setNumThreads(Qud::NumVal::make(4.0))), utl::GetNumberOfProcessors());
    EXPECT_EQ(number(setNumThreads(Qud::NumVal::make(1.0))), 4.0);
    EXPECT_EQ(Efi::MKL_NUM_THREADS, 1U);
    EXPECT_EQ(number(getMaxThreads()), 1.0);
    EXPECT_TRUE(is_lock_free());
}

TEST_F(ThreadCount, ACountFromOutsideIsThePreviousOneAsUnsigned)
{
    Efi::MKL_NUM_THREADS = 4000000000U;
    EXPECT_EQ(number(setNumThreads(Qud::NumVal::make(2.0))), 4e9);
}

TEST_F(ThreadCount, TheUnitIsNotLookedAt)
{
    setNumThreads(Qud::NumVal::make(3.0, 0.0, Qud::Dim(Qud::Dim::Base::length)));
    EXPECT_EQ(Efi::MKL_NUM_THREADS, 3U);
}

TEST_F(ThreadCount, WhatIsNoPositiveIntegerIsRefusedAndTheLockReleased)
{
    setNumThreads(Qud::NumVal::make(2.0));
    const Handle refused[] = {
        nullptr,
        Qud::NumVal::make(0.0),
        Qud::NumVal::make(-0.0),
        Qud::NumVal::make(-1.0),
        Qud::NumVal::make(1.5),
        Qud::NumVal::make(2.0, 1.0),
        Qud::NumVal::make(matrices::NaN),
        Qud::NumVal::make(matrices::inf),
        Qud::NumVal::make(2147483648.0),
        Qud::NumVal::make(4294967297.0),
        Qud::NumVal::make(1e300),
        Qud::StrVal::make("2"),
        matrices::real({{2}}),
    };
    for (const Handle& count : refused) {
        EXPECT_EQ(host_raised_by([&] { setNumThreads(count); }), (Raised{"must be positive integer", 1, ""}));
        EXPECT_EQ(Efi::MKL_NUM_THREADS, 2U);
        EXPECT_TRUE(is_lock_free());
    }
    EXPECT_EQ(number(getMaxThreads()), 2.0);
}

TEST_F(ThreadCount, TheLargestCountIsTakenAndLapackStillWorks)
{
    constexpr double largest = std::numeric_limits<int>::max();
    setNumThreads(Qud::NumVal::make(largest));
    EXPECT_EQ(number(getMaxThreads()), largest);
    const Handle A = matrices::random_real(200, 200, 1);
    const Handle B = matrices::random_real(200, 1, 2);
    EXPECT_LT(matrices::residual_solve(A, Efi::IntelMKL::lsolve(A, B), B), 30);
}

TEST_F(ThreadCount, TheLockLetsItsHolderInAgain)
{
    const lapack::Lock outer(lapack::g_MKL_mutex);
    setNumThreads(Qud::NumVal::make(2.0));
    EXPECT_FALSE(is_lock_free());
}

/// Runs the body on eight threads at once.
template <class Body>
void on_eight_threads(Body body)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&, i] { body(i); });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(LapackThreads, SharedValuesGiveWhatOneThreadGets)
{
    const Handle A = matrices::random_real(60, 60, 1);
    const Handle Z = matrices::random_complex(60, 60, 1);
    const Handle B = matrices::random_real(60, 2, 2);
    const Handle tall = matrices::random_real(60, 20, 3);
    // Small ones: the provider's own threads wait for each other often in these.
    const Handle S = matrices::random_symmetric(20, 4);
    const Handle H = matrices::random_hermitian(20, 5);
    const Handle R = matrices::random_real(20, 20, 6);
    const Handle C = matrices::random_complex(20, 20, 7);
    const Handle left = Qud::StrVal::make("L");
    const auto results = [&] {
        EfiCallContext context;
        return std::vector<Handle>{
            Efi::IntelMKL::lsolve(A, B),           Efi::IntelMKL::lsolve(Z, B),
            Efi::IntelMKL::lsolve(tall, B),        lapack::dinv(&context, *matrix_of(A)),
            lapack::zinv(&context, *matrix_of(Z)), lapack::_gemm(&context, *matrix_of(A), *matrix_of(B)),
            Efi::IntelMKL::eigenvals(S),           Efi::IntelMKL::eigenvals(H),
            Efi::IntelMKL::eigenvals(R),           Efi::IntelMKL::eigenvals(C),
            Efi::IntelMKL::eigenvecs(S, nullptr),  Efi::IntelMKL::eigenvecs(C, left),
            Efi::IntelMKL::genvals(R, S),          Efi::IntelMKL::genvecs(C, R, nullptr),
        };
    };
    const std::vector<Handle> alone = results();
    std::vector<Handle> together[8];
    on_eight_threads([&](int i) {
        for (int round = 0; round < 3; ++round)
            together[i] = results();
    });
    for (const std::vector<Handle>& values : together)
        for (std::size_t k = 0; k < alone.size(); ++k) {
            const Dense expected(alone[k]);
            EXPECT_LE((Dense(values[k]) - expected).norm1(), 1e-9 * expected.norm1()) << k;
        }
}

TEST(LapackThreads, CountsSetOnManyThreadsAreEachReturnedOnce)
{
    // Every set hands out the count before it: over all calls the counts handed out are those handed in, but for the
    // first one before and the last one after.
    const std::uint32_t before = Efi::MKL_NUM_THREADS;
    constexpr int rounds = 50;
    std::vector<double> returned[8];
    on_eight_threads([&](int i) {
        for (int round = 0; round < rounds; ++round)
            returned[i].push_back(number(setNumThreads(Qud::NumVal::make(1000.0 + i * rounds + round))));
    });
    std::vector<double> seen{static_cast<double>(Efi::MKL_NUM_THREADS.load())};
    for (const std::vector<double>& values : returned)
        seen.insert(seen.end(), values.begin(), values.end());
    std::sort(seen.begin(), seen.end());
    std::vector<double> expected{static_cast<double>(before)};
    for (int k = 0; k < 8 * rounds; ++k)
        expected.push_back(1000.0 + k);
    EXPECT_EQ(seen, expected);
    Efi::MKL_NUM_THREADS = before;
    lapack::MKL_Set_Num_Threads(static_cast<int>(before));
}

} // namespace
