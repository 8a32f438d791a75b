#include "efiutl/index_heap_sort.hpp"

#include "tests/support/plain_heap_sort.hpp"

#include <gtest/gtest.h>

namespace {

std::vector<std::uint32_t> order_of(const std::vector<double>& key, bool (*may_precede)(double, double))
{
    std::vector<std::uint32_t> p(key.size());
    Efi::index_heap_sort(p, [&](std::uint32_t a, std::uint32_t b) { return may_precede(key[a], key[b]); });
    return p;
}

// Worked out by hand.
TEST(IndexHeapSort, EqualKeysStandInTheOrderThatTheHeapLeaves)
{
    using Order = std::vector<std::uint32_t>;
    EXPECT_EQ(order_of({}, support::ascends), Order{});
    EXPECT_EQ(order_of({5}, support::ascends), Order{0});
    EXPECT_EQ(order_of({2, 1}, support::ascends), (Order{1, 0}));
    EXPECT_EQ(order_of({1, 1}, support::ascends), (Order{0, 1}));
    EXPECT_EQ(order_of({0.0, -0.0}, support::descends), (Order{0, 1}));
    EXPECT_EQ(order_of({1, 1, 1}, support::ascends), (Order{0, 1, 2}));
    EXPECT_EQ(order_of({1, 1, 1, 1}, support::ascends), (Order{1, 3, 0, 2}));
    EXPECT_EQ(order_of({3, 1, 2}, support::ascends), (Order{1, 2, 0}));
    EXPECT_EQ(order_of({3, 1, 2}, support::descends), (Order{0, 2, 1}));
}

TEST(IndexHeapSort, AllSmallCasesAreThoseOfThePlainForm)
{
    for (std::size_t n = 0; n <= 6; ++n)
        support::for_all_keys(n, [](const std::vector<double>& key) {
            ASSERT_EQ(order_of(key, support::ascends), support::plain_heap_sort(key, support::ascends));
            ASSERT_EQ(order_of(key, support::descends), support::plain_heap_sort(key, support::descends));
        });
}

} // namespace
