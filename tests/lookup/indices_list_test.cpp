#include "bailuxsko/lookup/indices_list.hpp"

#include "efiutl/arena_testing.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/raises.hpp"

#include <array>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Efi::indicesList;

std::vector<std::int32_t> rows_of(const indicesList& hits)
{
    std::vector<std::int32_t> rows;
    for (std::uint32_t k = 0; k < hits.count(); ++k)
        rows.push_back(hits.row(k));
    return rows;
}

std::vector<std::int32_t> cols_of(const indicesList& hits)
{
    std::vector<std::int32_t> cols;
    for (std::uint32_t k = 0; k < hits.count(); ++k)
        cols.push_back(hits.col(k));
    return cols;
}

TEST(IndicesList, BeginsEmptyWithRoomForTwelve)
{
    EfiCallContext context;
    indicesList hits(&context);
    hits.clear();
    EXPECT_EQ(hits.count(), 0U);
    EXPECT_EQ(hits.capacity(), 12U);
    for (std::int32_t k = 0; k < 12; ++k)
        hits.insert(k, -k);
    EXPECT_EQ(hits.count(), 12U);
    EXPECT_EQ(hits.capacity(), 12U);
}

TEST(IndicesList, BothArraysLieInOneBlock)
{
    EfiCallContext context;
    indicesList hits(&context);
    for (const std::uint32_t capacity : {12U, 24U, 100000U}) {
        const indicesList::Arrays* const arrays = hits.createArray(capacity);
        EXPECT_EQ(arrays->m_cols - arrays->m_rows, static_cast<std::ptrdiff_t>(capacity));
        for (std::uint32_t k = 0; k < capacity; ++k)
            arrays->m_rows[k] = arrays->m_cols[k] = -1;
        // One pair more than is used belongs to the block.
        arrays->m_cols[capacity] = arrays->m_cols[capacity + 1] = -1;
    }
}

TEST(IndicesList, TheThirteenthHitDoublesIt)
{
    EfiCallContext context;
    indicesList hits(&context);
    hits.clear();
    std::vector<std::int32_t> rows;
    std::vector<std::int32_t> cols;
    std::uint32_t capacity = 12;
    for (std::int32_t k = 0; k < 1000; ++k) {
        if (hits.count() == capacity)
            capacity *= 2;
        hits.insert(7 * k, 1000 - k);
        rows.push_back(7 * k);
        cols.push_back(1000 - k);
        ASSERT_EQ(hits.capacity(), capacity) << k;
    }
    EXPECT_EQ(capacity, 1536U);
    EXPECT_EQ(rows_of(hits), rows);
    EXPECT_EQ(cols_of(hits), cols);
}

TEST(IndicesList, ArraysThatItGrewOutOfStay)
{
    EfiCallContext context;
    indicesList hits(&context);
    hits.clear();
    hits.insert(5, 6);
    const indicesList before = hits; // looks at the first arrays
    for (std::int32_t k = 0; k < 100; ++k)
        hits.insert(k, k);
    ASSERT_GT(hits.capacity(), before.capacity());
    EXPECT_EQ(before.row(0), 5);
    EXPECT_EQ(before.col(0), 6);
}

TEST(IndicesList, SeveralHitsAtOnceAreTheSameAsOneByOne)
{
    std::array<std::uint16_t, 64> offsets{};
    for (std::size_t k = 0; k < offsets.size(); ++k)
        offsets[k] = static_cast<std::uint16_t>(k);
    for (std::size_t size = 1; size <= offsets.size(); ++size) {
        EfiCallContext context;
        indicesList at_once(&context);
        indicesList one_by_one(&context);
        at_once.clear();
        one_by_one.clear();
        for (std::int32_t col = 0; col < 5; ++col) {
            at_once.insert(1000 * col, {offsets.data(), size}, col);
            for (std::size_t k = 0; k < size; ++k)
                one_by_one.insert(1000 * col + offsets[k], col);
        }
        ASSERT_EQ(rows_of(at_once), rows_of(one_by_one)) << size;
        ASSERT_EQ(cols_of(at_once), cols_of(one_by_one)) << size;
        ASSERT_EQ(at_once.capacity(), one_by_one.capacity()) << size;
    }
}

TEST(IndicesList, StartsAnew)
{
    EfiCallContext context;
    indicesList hits(&context);
    hits.clear();
    for (std::int32_t k = 0; k < 50; ++k)
        hits.insert(k, k);
    hits.clear();
    EXPECT_EQ(hits.count(), 0U);
    EXPECT_EQ(hits.capacity(), 12U);
    hits.insert(8, 9);
    EXPECT_EQ(rows_of(hits), std::vector<std::int32_t>{8});
}

TEST(IndicesList, AnArenaThatFailsLeavesNothingBehind)
{
    const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([] {
        EfiCallContext context;
        indicesList hits(&context);
        hits.clear();
        for (std::int32_t k = 0; k < 30; ++k)
            hits.insert(k, k);
    });
    EXPECT_GE(requests, 6U) << "a record and a block for 12, 24 and 48 hits";
}

} // namespace
