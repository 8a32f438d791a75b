#include "bailuxhost/text_order.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace {

using Evl::text_order;

int sign(int x)
{
    return (x > 0) - (x < 0);
}

/// Texts in ascending order; every pair is compared in both directions.
void expect_ascending(const std::vector<std::string_view>& texts)
{
    for (std::size_t i = 0; i < texts.size(); ++i)
        for (std::size_t j = 0; j < texts.size(); ++j)
            EXPECT_EQ(sign(text_order(texts[i], texts[j])), (i > j) - (i < j)) << texts[i] << " and " << texts[j];
}

TEST(TextOrder, LettersThenAccentsThenCase)
{
    expect_ascending({"cote", "coté", "côte", "côté"});
    expect_ascending({"a", "A", "á", "Á", "ab", "aB", "Ab", "AB", "b", "B"});
    expect_ascending({"ss", "ß", "st"});
    expect_ascending({"o", "ö", "oe", "p", "z", "\xCE\xB1"}); // Greek after Latin
    expect_ascending({"résumé", "resumés", "Résumés"});
}

TEST(TextOrder, TheBeginningGoesFirst)
{
    expect_ascending({"", " ", "a", "aa", "ab", "abc"});
    EXPECT_EQ(text_order("", std::string_view()), 0);
}

TEST(TextOrder, SignsThenDigitsThenLetters)
{
    expect_ascending({"a b", "a-b", "a1b", "ab"});
    expect_ascending({"1", "10", "2", "9", "a"});                         // digit by digit, not as numbers
    expect_ascending({"\xF0\x9F\x98\x80", "0", "z", "\xF0\x90\x90\x80"}); // an emoji is a sign, U+10400 a letter
}

TEST(TextOrder, CanonicallyEqualTextsAreEqual)
{
    EXPECT_EQ(text_order("\xC3\xA9", "e\xCC\x81"), 0); // one character, or a letter and its accent
}

TEST(TextOrder, ControlCharactersDoNotCount)
{
    const std::string zero(1, '\0');
    EXPECT_EQ(text_order("a" + zero + "b", "ab"), 0);
    EXPECT_EQ(text_order("a" + zero, "a"), 0);
    EXPECT_LT(text_order("a" + zero + "b", "a" + zero + "c"), 0); // what follows them does
}

TEST(TextOrder, BytesThatAreNoUtf8CountAsReplacements)
{
    EXPECT_EQ(text_order("a\xFF", "a\xEF\xBF\xBD"), 0);
    EXPECT_EQ(text_order("\xC3", "\xEF\xBF\xBD"), 0);
    EXPECT_GT(text_order("a\xFF", "az"), 0);
}

TEST(TextOrder, TheEnvironmentDoesNotMatter)
{
    const char* const before = std::getenv("LC_ALL");
    const std::string kept = before ? before : "";
    setenv("LC_ALL", "sv_SE.UTF-8", 1); // where o with a diaeresis comes after z
    std::thread([] { EXPECT_LT(text_order("\xC3\xB6", "z"), 0); }).join();
    before ? setenv("LC_ALL", kept.c_str(), 1) : unsetenv("LC_ALL");
}

RC_GTEST_PROP(TextOrderLaws, IsATotalPreorderOnAnyBytes,
              (const std::string& a, const std::string& b, const std::string& c))
{
    RC_ASSERT(text_order(a, a) == 0);
    RC_ASSERT(sign(text_order(a, b)) == -sign(text_order(b, a)));
    if (text_order(a, b) <= 0 && text_order(b, c) <= 0)
        RC_ASSERT(text_order(a, c) <= 0);
}

TEST(TextOrderThreads, EachThreadHasItsCollator)
{
    const std::vector<std::string> texts = {"1", "a", "A", "ab", "\xC3\xA4", "b", "Z"};
    std::vector<std::string> sorted = texts;
    std::sort(sorted.begin(), sorted.end(), [](const auto& a, const auto& b) { return text_order(a, b) < 0; });
    std::array<std::thread, 8> threads;
    for (std::size_t t = 0; t < threads.size(); ++t)
        threads[t] = std::thread([&, t] {
            std::vector<std::string> mixed = texts;
            std::shuffle(mixed.begin(), mixed.end(), std::mt19937(static_cast<unsigned>(t)));
            std::sort(mixed.begin(), mixed.end(), [](const auto& a, const auto& b) { return text_order(a, b) < 0; });
            EXPECT_EQ(mixed, sorted);
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
