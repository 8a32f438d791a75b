#include "bailuxsko/arrays/index_sort.hpp"

#include <bit>
#include <cstring>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::uint64_t>;

/// Words that must not change on their way: the mark of a text's slot, NaN of all kinds, both zeros, denormals.
const Words strange = {~std::uint64_t{0},   0x7FF8000000000123U, 0xFFF8000000000456U,
                       0x7FF0000000000001U, 0xFFF4000000ABCDEFU, 0x8000000000000000U,
                       0x0000000000000001U, 0x7FF4000000000000U, 0x3FF0000000000000U};

Words moved(const Words& source, std::size_t rows, std::size_t stride, std::size_t cols,
            const std::vector<std::uint32_t>& p, int d)
{
    std::vector<double> from(source.size());
    std::memcpy(from.data(), source.data(), source.size() * sizeof(double));
    std::vector<double> to(source.size(), 1e300);
    Efi::indexSort(rows, stride, cols, from.data(), to.data(), p.data(), d);
    EXPECT_EQ(std::memcmp(from.data(), source.data(), source.size() * sizeof(double)), 0);
    Words words(to.size());
    std::memcpy(words.data(), to.data(), to.size() * sizeof(double));
    return words;
}

TEST(IndexSort, RowsAreMovedWordByWord)
{
    for (std::size_t rows = 1; rows <= strange.size(); ++rows) {
        const Words source(strange.begin(), strange.begin() + static_cast<std::ptrdiff_t>(rows));
        std::vector<std::uint32_t> p;
        Words expected;
        for (std::size_t i = 0; i < rows; ++i) {
            p.push_back(static_cast<std::uint32_t>(rows - 1 - i));
            expected.push_back(source[rows - 1 - i]);
        }
        EXPECT_EQ(moved(source, rows, rows, 1, p, 1), expected) << rows;
        EXPECT_EQ(moved(source, rows, rows, 1, p, -1), expected) << rows;
        EXPECT_EQ(moved(source, 1, 1, rows, p, 0), expected) << rows;
    }
}

TEST(IndexSort, EveryColumnGetsTheSameRows)
{
    const Words source = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(moved(source, 3, 3, 2, {2, 0, 1}, 1), (Words{3, 1, 2, 6, 4, 5}));
}

TEST(IndexSort, ColumnsMoveWhole)
{
    const Words source = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(moved(source, 2, 2, 3, {2, 0, 1}, 0), (Words{5, 6, 1, 2, 3, 4}));
}

TEST(IndexSort, WhatStandsBetweenColumnsStays)
{
    const std::uint64_t gap = std::bit_cast<std::uint64_t>(1e300);
    const Words source = {1, 2, 99, 3, 4, 99};
    EXPECT_EQ(moved(source, 2, 3, 2, {1, 0}, 1), (Words{2, 1, gap, 4, 3, gap}));
    EXPECT_EQ(moved(source, 2, 3, 2, {1, 0}, 0), (Words{3, 4, gap, 1, 2, gap}));
}

} // namespace
