#include "efiutl/block_pool.hpp"

#include "efiutl/context.hpp"

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#endif

namespace {

namespace pool = Efi::block_pool;

constexpr std::size_t KiB = 1024;
constexpr std::size_t MiB = 1024 * KiB;

class BlockPool : public testing::Test {
protected:
    BlockPool() { pool::release(); }
    ~BlockPool() override { pool::release(); }
};

TEST_F(BlockPool, HandsOutTheBlockGivenBackLast)
{
    for (const std::size_t bytes : {32 * KiB, 100 * KiB, 3 * MiB, 8 * MiB}) {
        void* const block = pool::take(bytes);
        std::memset(block, 0xFF, bytes);
        pool::give(block, bytes);
        EXPECT_EQ(pool::take(bytes), block);
        EXPECT_EQ(pool::kept_bytes(), 0U);
        pool::give(block, bytes);
        pool::release();
    }
}

TEST_F(BlockPool, RoundsToEightSizesADoubling)
{
    EXPECT_EQ(pool::capacity(100), 100U);
    EXPECT_EQ(pool::capacity(32 * KiB), 32 * KiB);
    EXPECT_EQ(pool::capacity(32 * KiB + 1), 36 * KiB);
    EXPECT_EQ(pool::capacity(36 * KiB), 36 * KiB);
    EXPECT_EQ(pool::capacity(64 * KiB - 1), 64 * KiB);
    for (std::size_t bytes = 32 * KiB; bytes < 40 * MiB; bytes += bytes / 7) {
        EXPECT_GE(pool::capacity(bytes), bytes);
        EXPECT_LE(pool::capacity(bytes), bytes + bytes / 8 + 1);
        EXPECT_EQ(pool::capacity(pool::capacity(bytes)), pool::capacity(bytes));
    }
}

TEST_F(BlockPool, ASizeOfTheSameStepReusesTheBlock)
{
    void* const block = pool::take(100 * KiB);
    pool::give(block, 100 * KiB);
    EXPECT_EQ(pool::take(101 * KiB), block);
    pool::give(block, 101 * KiB);
}

TEST_F(BlockPool, SmallBlocksAreNotKept)
{
    pool::give(pool::take(32 * KiB - 1), 32 * KiB - 1);
    pool::give(pool::take(0), 0);
    pool::give(nullptr, 0);
    EXPECT_EQ(pool::kept_bytes(), 0U);
}

TEST_F(BlockPool, KeepsNoMoreThanItsBoundAndTheNewest)
{
    const std::size_t size = pool::kept_bytes_per_thread / 4;
    std::vector<void*> blocks;
    for (int i = 0; i < 6; ++i)
        blocks.push_back(pool::take(size));
    for (void* const block : blocks) {
        pool::give(block, size);
        EXPECT_LE(pool::kept_bytes(), pool::kept_bytes_per_thread);
    }
    EXPECT_EQ(pool::kept_bytes(), pool::kept_bytes_per_thread);
    for (std::size_t i = 6; i-- > 2;)
        EXPECT_EQ(pool::take(size), blocks[i]);
    EXPECT_EQ(pool::kept_bytes(), 0U);
    for (std::size_t i = 2; i < 6; ++i)
        pool::give(blocks[i], size);
}

TEST_F(BlockPool, KeepsABoundedNumberOfBlocks)
{
    std::vector<void*> blocks(pool::kept_blocks_per_thread + 5);
    for (void*& block : blocks)
        block = pool::take(32 * KiB);
    for (void* const block : blocks)
        pool::give(block, 32 * KiB);
    EXPECT_EQ(pool::kept_bytes(), pool::kept_blocks_per_thread * 32 * KiB);
}

TEST_F(BlockPool, ABlockLargerThanTheBoundIsNotKept)
{
    const std::size_t bytes = pool::kept_bytes_per_thread + 1;
    pool::give(pool::take(bytes), bytes);
    EXPECT_EQ(pool::kept_bytes(), 0U);
}

TEST_F(BlockPool, BlocksAreAlignedToCacheLinesAndLargeOnesToHugePages)
{
    for (const std::size_t bytes : {1 * KiB, 33 * KiB, 1 * MiB, 4 * MiB, 9 * MiB}) {
        void* const block = pool::take(bytes);
        const std::size_t alignment = bytes >= pool::huge_page_threshold   ? pool::huge_page
                                      : bytes >= pool::smallest_kept_block ? 64
                                                                           : alignof(std::max_align_t);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0U) << bytes;
        pool::give(block, bytes);
    }
}

TEST_F(BlockPool, AbsurdSizesAreRefused)
{
    for (const std::size_t bytes :
         {std::numeric_limits<std::size_t>::max(), std::numeric_limits<std::size_t>::max() / 2, std::size_t{1} << 50})
        EXPECT_THROW(pool::take(bytes), std::bad_alloc) << bytes;
    EXPECT_THROW(Efi::pool_allocator<double>{}.allocate(std::size_t{1} << 61), std::bad_alloc);
}

TEST_F(BlockPool, LargeBlocksTogetherStayBelowTheMachinesMemory)
{
    const std::size_t third =
        static_cast<std::size_t>(sysconf(_SC_PHYS_PAGES)) / 3 * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* const first = pool::take(third); // never touched, so nothing is really used
    void* const second = pool::take(third);
    EXPECT_THROW(pool::take(third), std::bad_alloc);
    EXPECT_THROW(pool::take(third), std::bad_alloc); // a refusal reserves nothing
    pool::give(second, third);
    void* const again = pool::take(third);
    pool::give(again, third);
    pool::give(first, third);
}

TEST_F(BlockPool, SharedArraysOfTheHostAreRecycled)
{
    const auto array = [] {
        return std::allocate_shared_for_overwrite<double[]>(Efi::pool_allocator<double>{}, 100000);
    };
    const double* const first = array().get();
    EXPECT_GT(pool::kept_bytes(), 800000U);
    EXPECT_EQ(array().get(), first);
}

TEST_F(BlockPool, AnArenasBlocksServeTheNextArena)
{
    const void* blocks[2];
    for (const void*& block : blocks) {
        EfiCallContext ctx;
        block = ctx.m_arena->allocate_uncleared(1 * MiB);
    }
    EXPECT_EQ(blocks[0], blocks[1]);
}

TEST_F(BlockPool, KeptMemoryIsOutOfBoundsUnderTheAddressSanitizer)
{
#if defined(__SANITIZE_ADDRESS__)
    auto* const block = static_cast<char*>(pool::take(100 * KiB));
    EXPECT_EQ(__asan_region_is_poisoned(block, 100 * KiB), nullptr);
    EXPECT_TRUE(__asan_address_is_poisoned(block + 100 * KiB));
    pool::give(block, 100 * KiB);
    EXPECT_TRUE(__asan_address_is_poisoned(block));
    EXPECT_TRUE(__asan_address_is_poisoned(block + 100 * KiB - 1));

    EfiCallContext ctx;
    ctx.m_arena->allocate_array(8);
    const char* const array = static_cast<char*>(ctx.m_arena->allocate_array(24));
    EXPECT_EQ(__asan_region_is_poisoned(const_cast<char*>(array), 24), nullptr);
    EXPECT_TRUE(__asan_address_is_poisoned(array + 24));
    EXPECT_TRUE(__asan_address_is_poisoned(array - 1));
#else
    GTEST_SKIP() << "needs the address sanitizer";
#endif
}

TEST(BlockPoolThreads, ABlockMayBeGivenBackOnAnotherThread)
{
    constexpr std::size_t bytes = 200 * KiB;
    std::array<std::thread, 8> threads;
    for (std::thread& thread : threads)
        thread = std::thread([] {
            for (int round = 0; round < 50; ++round) {
                void* const mine = pool::take(bytes);
                std::memset(mine, 1, bytes);
                std::thread([mine] {
                    pool::give(mine, bytes);
                    EXPECT_EQ(pool::kept_bytes(), pool::capacity(bytes));
                }).join(); // the thread's pool goes with it
                EXPECT_EQ(pool::kept_bytes(), 0U);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

/// Made before the thread's pool has kept anything, and so destroyed after it is closed.
struct LatecomerOfAThread {
    void* m_block = nullptr;

    LatecomerOfAThread() noexcept = default;
    LatecomerOfAThread(const LatecomerOfAThread&) = delete;
    LatecomerOfAThread& operator=(const LatecomerOfAThread&) = delete;
    ~LatecomerOfAThread()
    {
        pool::give(m_block, 1 * MiB);
        EXPECT_EQ(pool::kept_bytes(), 0U) << "nobody would empty the pool again";
        void* const block = pool::take(1 * MiB);
        std::memset(block, 1, 1 * MiB);
        pool::give(block, 1 * MiB);
    }
};

TEST(BlockPoolThreads, ServesAThreadsLastDestructorsFromTheHeap)
{
    std::thread([] {
        thread_local LatecomerOfAThread latecomer;
        latecomer.m_block = pool::take(1 * MiB);
        pool::give(pool::take(1 * MiB), 1 * MiB);
    }).join();
}

// The same at the end of the process: a static object outlives the main thread's pool.
const std::shared_ptr<double[]> given_back_after_main =
    std::allocate_shared_for_overwrite<double[]>(Efi::pool_allocator<double>{}, 100000);

} // namespace
