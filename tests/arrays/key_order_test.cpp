// Every permutation is held against the index heap sort done step by step.
#include "bailuxsko/arrays/key_order.hpp"

#include "tests/support/plain_heap_sort.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace {

using Keys = std::vector<double>;
using Random = std::mt19937_64;

std::vector<std::uint32_t> order_of(const Keys& keys)
{
    std::vector<std::uint32_t> p(keys.size());
    Efi::ascending_order(keys, p);
    return p;
}

std::uint64_t bits_of(double x)
{
    return std::bit_cast<std::uint64_t>(x);
}

void expect_plain_order(const Keys& keys, const char* kind)
{
    const std::vector<std::uint32_t> expected = support::plain_heap_sort(keys, support::ascends);
    ASSERT_EQ(order_of(keys), expected) << kind << ", " << keys.size();
    if (std::none_of(keys.begin(), keys.end(), [](double key) { return std::isnan(key); })) {
        std::vector<std::uint32_t> compared(keys.size());
        Efi::ascending_order([&](std::uint32_t a, std::uint32_t b) { return keys[a] <= keys[b]; }, compared);
        ASSERT_EQ(compared, expected) << kind << ", " << keys.size();
    }
    Keys sorted(keys.size());
    if (!Efi::ascending_keys(keys, sorted))
        return;
    for (std::size_t i = 0; i < keys.size(); ++i)
        ASSERT_EQ(bits_of(sorted[i]), bits_of(keys[expected[i]])) << kind << ", " << keys.size();
}

TEST(KeyOrder, AllSmallCasesAreThoseOfThePlainForm)
{
    for (std::size_t n = 0; n <= 6; ++n)
        support::for_all_keys(n, [](const Keys& keys) { expect_plain_order(keys, "small"); });
}

TEST(KeyOrder, KeysThatCanBeToldApartNeedThePermutation)
{
    const auto by_themselves = [](Keys keys) {
        Keys sorted(keys.size());
        return Efi::ascending_keys(keys, sorted);
    };
    EXPECT_TRUE(by_themselves({3, 1, 2, 1}));
    EXPECT_TRUE(by_themselves({0.0, 1, 0.0}));
    EXPECT_TRUE(by_themselves({-0.0, 1, -0.0}));
    EXPECT_FALSE(by_themselves({-0.0, 1, 0.0}));
    EXPECT_FALSE(by_themselves({1, std::nan("")}));
    EXPECT_FALSE(by_themselves({-std::nan(""), 1}));
}

double any_bits(Random& random)
{
    return std::bit_cast<double>(random());
}

struct Kind {
    const char* name;
    double (*key)(Random&);
};
const Kind kinds[] = {
    {.name = "distinct", .key = [](Random& r) { return std::uniform_real_distribution<double>(-1.0, 1.0)(r); }},
    {.name = "distinct, far apart",
     .key = [](Random& r) { return std::ldexp(static_cast<double>(r()), static_cast<int>(r() % 2000) - 1100); }},
    {.name = "some ties", .key = [](Random& r) { return static_cast<double>(r() % 5000); }},
    {.name = "many ties", .key = [](Random& r) { return static_cast<double>(r() % 7) - 3.0; }},
    {.name = "all equal", .key = [](Random&) { return 4.0; }},
    {.name = "signed zeros", .key = [](Random& r) { return r() % 2 == 0 ? 0.0 : -0.0; }},
    {.name = "two zeros among others",
     .key =
         [](Random& r) {
             const double zero = r() % 2 == 0 ? 0.0 : -0.0;
             return r() % 50 == 0 ? zero : std::uniform_real_distribution<double>(-1.0, 1.0)(r);
         }},
    {.name = "infinities",
     .key = [](Random& r) { return r() % 3 == 0 ? std::ldexp(r() % 2 == 0 ? 1.0 : -1.0, 1023) * 2 : 1.0; }},
    {.name = "different in their lowest bits only, and some far away",
     .key =
         [](Random& r) {
             const auto low = static_cast<double>(r() % (std::uint64_t{1} << 40));
             return r() % 100 == 0 ? -low : 1.0 + std::ldexp(low, -52);
         }},
    {.name = "different in few of their lowest bits, and some far away",
     .key =
         [](Random& r) {
             const auto low = static_cast<double>(r() % 512);
             return r() % 100 == 0 ? -low : 1.0 + std::ldexp(low, -52);
         }},
    {.name = "tiny", .key = [](Random& r) { return std::bit_cast<double>(r() % 100000); }},
    {.name = "a NaN here and there", .key = [](Random& r) { return r() % 61 == 0 ? std::nan("") : any_bits(r); }},
    {.name = "any bits", .key = any_bits},
};

TEST(KeyOrder, EveryKindOfKeysAroundTheSizesWhereTheMethodChanges)
{
    Random random(20);
    const std::size_t sizes[] = {7,   8,   15,  16,  31,   32,   33,   63,   64,   65,   127,  128,  129,  255,  256,
                                 257, 511, 512, 513, 1023, 1024, 1025, 2999, 3000, 3001, 4095, 4096, 4097, 20000};
    for (const Kind& kind : kinds)
        for (const std::size_t n : sizes) {
            Keys keys(n);
            for (double& key : keys)
                key = kind.key(random);
            expect_plain_order(keys, kind.name);
        }
}

TEST(KeyOrder, OneTieOrOneNaNAmongDistinctKeys)
{
    Random random(21);
    for (const std::size_t n : {std::size_t{40}, std::size_t{500}, std::size_t{5000}})
        for (int round = 0; round < 20; ++round) {
            Keys keys(n);
            for (double& key : keys)
                key = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
            keys[random() % n] = keys[random() % n];
            expect_plain_order(keys, "one tie");
            keys[random() % n] = round % 2 == 0 ? std::nan("") : -std::nan("");
            expect_plain_order(keys, "one NaN");
        }
}

TEST(KeyOrder, KeysInOrderAndInReverse)
{
    for (const std::size_t n : {std::size_t{100}, std::size_t{5000}}) {
        Keys keys(n);
        for (std::size_t i = 0; i < n; ++i)
            keys[i] = static_cast<double>(i);
        expect_plain_order(keys, "ascending");
        std::reverse(keys.begin(), keys.end());
        expect_plain_order(keys, "descending");
    }
}

} // namespace
