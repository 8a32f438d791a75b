#include "efiutl/thread_count.hpp"

#include <array>
#include <thread>

#include <gtest/gtest.h>
#include <sched.h>

namespace {

TEST(ThreadCount, BeginsAsTheNumberOfProcessors)
{
    static_assert(std::atomic<std::uint32_t>::is_always_lock_free);
    EXPECT_GE(utl::GetNumberOfProcessors(), 1U);
    EXPECT_EQ(Efi::MKL_NUM_THREADS.load(), utl::GetNumberOfProcessors());
}

TEST(ThreadCountThreads, AnAffinityMaskCounts)
{
    std::thread([] {
        cpu_set_t allowed;
        ASSERT_EQ(sched_getaffinity(0, sizeof allowed, &allowed), 0);
        std::size_t first = 0;
        while (!CPU_ISSET(first, &allowed))
            ++first;
        CPU_ZERO(&allowed);
        CPU_SET(first, &allowed);
        ASSERT_EQ(sched_setaffinity(0, sizeof allowed, &allowed), 0);
        EXPECT_EQ(utl::GetNumberOfProcessors(), 1U);
    }).join();
}

TEST(ThreadCountThreads, MayBeReadAndWrittenFromManyThreads)
{
    const std::uint32_t before = Efi::MKL_NUM_THREADS.load();
    std::array<std::thread, 8> threads;
    for (std::uint32_t i = 0; i < threads.size(); ++i)
        threads[i] = std::thread([i] {
            for (int round = 0; round < 1000; ++round) {
                Efi::MKL_NUM_THREADS.store(i + 1, std::memory_order_relaxed);
                const std::uint32_t seen = Efi::MKL_NUM_THREADS.load(std::memory_order_relaxed);
                EXPECT_TRUE(1 <= seen && seen <= 8);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    Efi::MKL_NUM_THREADS = before;
}

} // namespace
