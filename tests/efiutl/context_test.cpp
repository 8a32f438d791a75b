#include "efiutl/context.hpp"

#include "efiutl/arena_testing.hpp"
#include "efiutl/block_pool.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/throw.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/raises.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <malloc.h>

namespace {

using support::Raised;
using support::raised_by;

const Raised out_of_memory{.message = "out of memory", .index = -1};

bool within(const void* p, const void* object, std::size_t bytes)
{
    const auto address = reinterpret_cast<std::uintptr_t>(p);
    const auto begin = reinterpret_cast<std::uintptr_t>(object);
    return begin <= address && address < begin + bytes;
}

bool all_zero(const void* p, std::size_t bytes)
{
    const auto* const begin = static_cast<const unsigned char*>(p);
    return std::all_of(begin, begin + bytes, [](unsigned char byte) { return byte == 0; });
}

TEST(Context, ReachesItsOwnArenaThroughThePointer)
{
    const EfiCallContext ctx;
    EXPECT_EQ(ctx.m_arena, &ctx.m_allocator);
    EXPECT_EQ(ctx.m_reserved, nullptr);
}

TEST(Context, SmallCallsStayInsideTheContext)
{
    EfiCallContext ctx;
    double* const a = Efi::doubles(&ctx, 300);
    const aMatrix* const A = aMatrix::mk(ctx.m_arena, 10, 10, a, nullptr);
    EXPECT_TRUE(within(a, &ctx, sizeof ctx));
    EXPECT_TRUE(within(A, &ctx, sizeof ctx));
    EXPECT_EQ(Efi::live_arenas().m_blocks, 0);
}

TEST(Arena, RecordsGoDownwardsAndArraysUpwards)
{
    EfiCallContext ctx;
    const auto* const first = static_cast<std::byte*>(ctx.m_arena->carve(32));
    const auto* const array = static_cast<std::byte*>(ctx.m_arena->allocate_array(16));
    const auto* const second = static_cast<std::byte*>(ctx.m_arena->carve(16));
    EXPECT_EQ(first - second, 16);
    EXPECT_GT(ctx.m_arena->allocate_array(8), array);
    EXPECT_LT(array, second);
}

TEST(Arena, ArraysAreZeroWhateverTheMemoryHeldBefore)
{
    for (const std::size_t bytes : {1UL, 8UL, 1000UL, 8000UL, 40000UL, 300000UL, 5000000UL})
        for (int round = 0; round < 3; ++round) { // from the second on the blocks are those of the round before
            EfiCallContext ctx;
            for (int i = 0; i < 3; ++i) {
                void* const array = ctx.m_arena->allocate_array(bytes);
                EXPECT_TRUE(all_zero(array, bytes)) << bytes;
                std::memset(array, 0xFF, bytes);
            }
        }
}

TEST(Arena, EverythingIsAlignedAndApart)
{
    struct Piece {
        unsigned char* begin;
        std::size_t bytes;
    };
    EfiCallContext ctx;
    std::vector<Piece> pieces;
    std::size_t bytes = 1;
    for (int i = 0; i < 400; ++i) {
        bytes = bytes * 7 % 9001;
        pieces.push_back({static_cast<unsigned char*>(ctx.m_arena->allocate_array(bytes)), bytes});
        pieces.push_back({static_cast<unsigned char*>(ctx.m_arena->carve(i % 2 == 0 ? 16 : 32)), 16});
    }
    for (std::size_t i = 0; i < pieces.size(); ++i)
        std::memset(pieces[i].begin, static_cast<int>(i % 251), pieces[i].bytes);
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece& piece = pieces[i];
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(piece.begin) % alignof(std::max_align_t), 0U);
        EXPECT_TRUE(
            std::all_of(piece.begin, piece.begin + piece.bytes, [i](unsigned char byte) { return byte == i % 251; }));
    }
}

TEST(Arena, TwoArraysOfNoBytesAreTwoArrays)
{
    EfiCallContext ctx;
    void* const first = ctx.m_arena->allocate_array(0);
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, ctx.m_arena->allocate_array(0));
}

TEST(Arena, NewBufLeavesTheCursorAtAFreeSlotOfAFreshBlock)
{
    EfiCallContext ctx;
    for (long blocks = 1; blocks <= 3; ++blocks) {
        ctx.m_arena->NewBuf(64);
        auto* const next = static_cast<std::byte*>(ctx.m_arena->carve(32));
        EXPECT_FALSE(within(next, &ctx, sizeof ctx));
        std::memset(next + 32, 0xFF, 64); // the slot that NewBuf left, right above the one carved since
        EXPECT_EQ(Efi::live_arenas().m_blocks, blocks);
    }
    ctx.m_arena->NewBuf(1000000); // more than a block usually has
    EXPECT_EQ(Efi::live_arenas().m_blocks, 4);
}

TEST(Arena, ManyRecordsSpillIntoFurtherBlocks)
{
    {
        EfiCallContext ctx;
        std::vector<aMatrix*> records;
        for (std::uint32_t i = 0; i < 5000; ++i)
            records.push_back(aMatrix::mk(ctx.m_arena, i, 1, nullptr, nullptr));
        for (std::uint32_t i = 0; i < 5000; ++i)
            EXPECT_EQ(records[i]->m_rows, i);
        EXPECT_GT(Efi::live_arenas().m_blocks, 0);
    }
    EXPECT_EQ(Efi::live_arenas(), (Efi::LiveArenas{.m_arenas = 0, .m_blocks = 0}));
}

TEST(Arena, CountsOfDoublesSaturate)
{
    EXPECT_EQ(Efi::bytes_of_doubles(3), 24U);
    EXPECT_EQ(Efi::bytes_of_doubles((std::uint64_t{1} << 61) - 1), ~std::size_t{7});
    EXPECT_EQ(Efi::bytes_of_doubles(std::uint64_t{1} << 61), ~std::size_t{0});
    EXPECT_EQ(Efi::bytes_of_doubles(~std::uint64_t{0}), ~std::size_t{0});
}

TEST(Arena, WhatCannotBeHadIsOutOfMemory)
{
    constexpr std::size_t all_bits = ~std::size_t{0};
    EfiCallContext ctx;
    for (const std::size_t bytes : {all_bits, all_bits - 15, all_bits / 2, all_bits / 2 + 1, std::size_t{1} << 50}) {
        EXPECT_EQ(raised_by([&] { ctx.m_arena->allocate_array(bytes); }), out_of_memory) << bytes;
        EXPECT_EQ(raised_by([&] { ctx.m_arena->allocate_uncleared(bytes); }), out_of_memory) << bytes;
        EXPECT_EQ(raised_by([&] { ctx.m_arena->carve(bytes); }), out_of_memory) << bytes;
        EXPECT_EQ(raised_by([&] { ctx.m_arena->NewBuf(bytes); }), out_of_memory) << bytes;
    }
    EXPECT_EQ(raised_by([&] { Efi::doubles(&ctx, std::uint64_t{1} << 61); }), out_of_memory);
    EXPECT_NE(Efi::doubles(&ctx, 1), nullptr) << "the arena goes on";
}

TEST(Arena, ACopiedNumberIsTheNumber)
{
    EfiCallContext ctx;
    Anyval number{};
    number.m_number = {.m_re = 1.5, .m_im = -0.0};
    Anyval* copy = nullptr;
    ctx.m_arena->cp(&number, &copy, true, false);
    ASSERT_NE(copy, nullptr);
    EXPECT_NE(copy, &number);
    EXPECT_EQ(std::memcmp(&copy->m_number, &number.m_number, sizeof(aComplex)), 0);
}

/// A 2 by 3 block with leading dimension 4; what lies between the columns is a trap.
struct Block {
    static constexpr double trap = 1e300;
    std::array<double, 12> re = {1, 2, trap, trap, 3, 4, trap, trap, 5, 6, trap, trap};
    std::array<double, 12> im = {-1, -2, trap, trap, -3, -4, trap, trap, -5, -6, trap, trap};
    aMatrix record = {.m_anr = 4, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 3, .m_rv = re.data(), .m_iv = nullptr};
};

const aMatrix* copied(EfiCallContext& ctx, const aMatrix& source, bool with_data)
{
    Anyval* copy = nullptr;
    ctx.m_arena->cp(reinterpret_cast<const Anyval*>(&source), &copy, with_data, false);
    return &copy->m_matrix;
}

TEST(Arena, ACopiedBlockIsPackedAndReal)
{
    EfiCallContext ctx;
    const Block block;
    const aMatrix* const copy = copied(ctx, block.record, true);
    EXPECT_EQ(copy->m_anr, 2U);
    EXPECT_EQ(copy->m_tag, aMatrix::tag);
    EXPECT_EQ(copy->m_rows, 2U);
    EXPECT_EQ(copy->m_cols, 3U);
    EXPECT_EQ(copy->m_iv, nullptr);
    EXPECT_EQ(std::vector<double>(copy->m_rv, copy->m_rv + 6), (std::vector<double>{1, 2, 3, 4, 5, 6}));
}

TEST(Arena, ACopiedComplexBlockKeepsItsImaginaryParts)
{
    EfiCallContext ctx;
    Block block;
    block.record.m_iv = block.im.data();
    const aMatrix* const copy = copied(ctx, block.record, true);
    EXPECT_EQ(std::vector<double>(copy->m_rv, copy->m_rv + 6), (std::vector<double>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(std::vector<double>(copy->m_iv, copy->m_iv + 6), (std::vector<double>{-1, -2, -3, -4, -5, -6}));
}

TEST(Arena, ACopyKeepsTheBitsOfSlotsWithoutANumber)
{
    EfiCallContext ctx;
    double slots[2] = {Efi::ptr_nan(), std::numeric_limits<double>::signaling_NaN()};
    const aMatrix source = {
        .m_anr = 1, .m_tag = aMatrix::tag, .m_rows = 1, .m_cols = 2, .m_rv = slots, .m_iv = nullptr};
    EXPECT_EQ(std::memcmp(copied(ctx, source, true)->m_rv, slots, sizeof slots), 0);
}

TEST(Arena, ACopyWithoutDataIsZero)
{
    EfiCallContext ctx;
    Block block;
    block.record.m_iv = block.im.data();
    const aMatrix* const copy = copied(ctx, block.record, false);
    EXPECT_TRUE(all_zero(copy->m_rv, 48));
    EXPECT_TRUE(all_zero(copy->m_iv, 48));
}

TEST(Arena, AnAbsentRealArrayStaysAbsentUnlessThereIsNoElement)
{
    EfiCallContext ctx;
    aMatrix source = {.m_anr = 2, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 2, .m_rv = nullptr, .m_iv = nullptr};
    EXPECT_EQ(copied(ctx, source, true)->m_rv, nullptr);
    source.m_rows = source.m_anr = 0;
    EXPECT_NE(copied(ctx, source, true)->m_rv, nullptr);
}

TEST(Arena, FailsAtEveryRequestAndLeavesNothing)
{
    Block block;
    block.record.m_iv = block.im.data();
    const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
        EfiCallContext ctx;
        ctx.m_arena->allocate_array(8);
        ctx.m_arena->allocate_uncleared(100000);
        ctx.m_arena->carve(16);
        ctx.m_arena->NewBuf(64);
        aMatrix::mk(ctx.m_arena, 1, 1, nullptr, nullptr);
        copied(ctx, block.record, true);
    });
    EXPECT_EQ(requests, 8U); // the copy asks for two arrays and a record
}

/// An array of 80,000 bytes has a block of its own, which is hardly larger.
constexpr std::size_t large_count = 10000;
constexpr std::size_t large_bytes = large_count * sizeof(double);

double* ascending(EfiCallContext& ctx, double first)
{
    double* const array = Efi::uncleared_doubles(&ctx, large_count);
    std::iota(array, array + large_count, first);
    return array;
}

bool is_ascending(const double* array, double first)
{
    return std::all_of(array, array + large_count, [&first](double x) { return x == first++; });
}

TEST(Arena, ALargeArrayMayLeaveItAndIsGivenBackOnce)
{
    Efi::block_pool::release();
    std::array<const double*, 3> arrays{};
    std::array<IquAllocator::Adopted, 3> adopted;
    {
        EfiCallContext ctx;
        const double* const stays = ascending(ctx, 0.0);
        for (std::size_t i = 0; i < 3; ++i)
            arrays[i] = ascending(ctx, static_cast<double>(i));
        for (const std::size_t i : {1U, 2U, 0U}) { // from between others, the newest of all, the oldest but one
            adopted[i] = ctx.m_arena->adopt(arrays[i], large_bytes);
            ASSERT_NE(adopted[i].m_block, nullptr);
            EXPECT_EQ(ctx.m_arena->adopt(arrays[i], large_bytes).m_block, nullptr) << "it has gone";
        }
        EXPECT_EQ(Efi::live_arenas().m_blocks, 1);
        EXPECT_TRUE(is_ascending(stays, 0.0));
        EXPECT_NE(Efi::doubles(&ctx, large_count), nullptr) << "the arena goes on";
    }
    EXPECT_EQ(Efi::live_arenas(), Efi::LiveArenas{});
    const std::size_t block = Efi::block_pool::capacity(adopted[0].m_bytes);
    EXPECT_EQ(Efi::block_pool::kept_bytes(), 2 * block) << "the arena gives back what is still its own";
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(is_ascending(arrays[i], static_cast<double>(i)));
        Efi::block_pool::give(adopted[i].m_block, adopted[i].m_bytes);
        EXPECT_EQ(Efi::block_pool::kept_bytes(), (3 + i) * block);
    }
    Efi::block_pool::release();
}

TEST(Arena, WhatHasNoBlockOfItsOwnStays)
{
    EfiCallContext other;
    EfiCallContext ctx;
    double* const inside = Efi::doubles(&ctx, 100);
    double* const shares_a_block = Efi::doubles(&ctx, 1000);
    ctx.m_arena->NewBuf(large_bytes);
    const void* const slot = ctx.m_arena->carve(large_bytes);
    double* const large = ascending(ctx, 1.0);
    const long blocks = Efi::live_arenas().m_blocks;
    const struct {
        const char* name;
        const void* array;
        std::size_t bytes;
    } cases[] = {
        {.name = "in the context", .array = inside, .bytes = 800},
        {.name = "in the context, said to be large", .array = inside, .bytes = large_bytes},
        {.name = "beside others", .array = shares_a_block, .bytes = 8000},
        {.name = "beside others, said to be large", .array = shares_a_block, .bytes = 30000},
        {.name = "in a block for records", .array = slot, .bytes = large_bytes},
        {.name = "not at the beginning", .array = large + 1, .bytes = large_bytes - 8},
        {.name = "half of its block", .array = large, .bytes = large_bytes / 2},
        {.name = "none", .array = nullptr, .bytes = large_bytes},
        {.name = "of no size", .array = large, .bytes = 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ctx.m_arena->adopt(c.array, c.bytes).m_block, nullptr) << c.name;
    EXPECT_EQ(other.m_arena->adopt(large, large_bytes).m_block, nullptr) << "another arena's";
    EXPECT_EQ(Efi::live_arenas().m_blocks, blocks);
    EXPECT_TRUE(is_ascending(large, 1.0));
}

TEST(Arena, AFailureIsForArenasMadeUnderTheGuardOnly)
{
    EfiCallContext before;
    const Efi::FailArenaAt failure(1);
    EXPECT_NE(Efi::doubles(&before, 1), nullptr);
    EfiCallContext during;
    EXPECT_EQ(raised_by([&] { Efi::doubles(&during, 1); }), out_of_memory);
    EXPECT_NE(Efi::doubles(&during, 1), nullptr) << "only that one request fails";
}

TEST(Arena, ASmallCallTakesNothingFromTheHeap)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizer's heap does not count";
#else
    const std::size_t before = mallinfo2().uordblks;
    EfiCallContext ctx;
    for (int i = 0; i < 10; ++i)
        aMatrix::mk(ctx.m_arena, 3, 3, Efi::doubles(&ctx, 9), Efi::doubles(&ctx, 9));
    EXPECT_EQ(mallinfo2().uordblks, before);
#endif
}

TEST(ArenaThreads, EachThreadHasItsOwnFailuresAndCounts)
{
    const Efi::FailArenaAt failure(1);
    EfiCallContext ctx;
    std::thread([] {
        EXPECT_EQ(Efi::live_arenas(), Efi::LiveArenas{});
        EfiCallContext other;
        EXPECT_NE(Efi::doubles(&other, 100000), nullptr);
        EXPECT_EQ(Efi::live_arenas(), (Efi::LiveArenas{.m_arenas = 1, .m_blocks = 1}));
    }).join();
}

TEST(ArenaThreads, AnArrayThatHasLeftMayBeGivenBackOnAnotherThread)
{
    Efi::block_pool::release();
    for (int round = 0; round < 20; ++round) {
        EfiCallContext ctx;
        const double* const array = ascending(ctx, 0.0);
        const IquAllocator::Adopted adopted = ctx.m_arena->adopt(array, large_bytes);
        std::thread([array, adopted] {
            EXPECT_TRUE(is_ascending(array, 0.0));
            Efi::block_pool::give(adopted.m_block, adopted.m_bytes);
            EXPECT_EQ(Efi::block_pool::kept_bytes(), Efi::block_pool::capacity(adopted.m_bytes));
            EXPECT_EQ(Efi::live_arenas(), Efi::LiveArenas{});
        }).join(); // the thread's pool goes with it
        EXPECT_EQ(Efi::block_pool::kept_bytes(), 0U);
    }
}

} // namespace
