#include "bailuxsko/scalar/pattern.hpp"

#include "bailuxhost/value.hpp"
#include "bailuxsko/affine.hpp"
#include "tests/support/host_raises.hpp"

#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Efi::Affine::Match;
using Efi::Affine::parse;
using Efi::Affine::Pattern;
using support::host_raised_by;
using support::Raised;

const Pattern number_of_things(R"re((?<b>[+-])?(?<i>\d+)(\.(?<f>\d+))?\s*(?<what>[a-z]+)?)re");

TEST(Pattern, GroupsPointIntoTheText)
{
    const std::string text = "-12.5 ft";
    const std::optional<Match> match = number_of_things.covers(text);
    ASSERT_TRUE(match);
    EXPECT_EQ(match->group("b"), "-");
    EXPECT_EQ(match->group("i"), "12");
    EXPECT_EQ(match->group("f"), "5");
    EXPECT_EQ(match->group("what"), "ft");
    EXPECT_EQ(match->group("what")->data(), text.data() + 6);
    EXPECT_EQ(match->group("no such group"), std::nullopt);
}

TEST(Pattern, GroupsThatTookNoPartAreNone)
{
    const std::optional<Match> match = number_of_things.covers("12");
    ASSERT_TRUE(match);
    EXPECT_EQ(match->group("b"), std::nullopt);
    EXPECT_EQ(match->group("f"), std::nullopt);
    EXPECT_EQ(match->group("what"), std::nullopt);
}

TEST(Pattern, TheFirstMatchMustBeTheWholeText)
{
    EXPECT_FALSE(number_of_things.covers("12 ft!"));
    EXPECT_FALSE(number_of_things.covers(" 12"));
    EXPECT_FALSE(number_of_things.covers(""));
    EXPECT_FALSE(Pattern("a|ab").covers("ab")); // the first way to match is taken, not the longest
    EXPECT_TRUE(Pattern("a?").covers(""));
}

TEST(Pattern, BytesBeyondAsciiAreNoDigitsAndNoBlanks)
{
    const Pattern digits(R"re(\d+)re");
    const Pattern blanks(R"re(\s+)re");
    EXPECT_TRUE(digits.covers("0123456789"));
    EXPECT_TRUE(blanks.covers(" \t\n\v\f\r"));
    for (int c = 128; c < 256; ++c) {
        const std::string text(1, static_cast<char>(c));
        EXPECT_FALSE(digits.covers(text)) << c;
        EXPECT_FALSE(blanks.covers(text)) << c;
    }
}

TEST(Parse, SetsWhatTookPartAndLeavesTheRest)
{
    const std::optional<Match> match = number_of_things.covers("-12 ft");
    ASSERT_TRUE(match);
    double i = 7.0;
    double f = 7.0;
    bool is_negative = false;
    parse(*match, "i", i);
    parse(*match, "f", f);
    parse(*match, "b", is_negative);
    EXPECT_EQ(i, 12.0);
    EXPECT_EQ(f, 7.0);
    EXPECT_TRUE(is_negative);
    parse(*number_of_things.covers("+1"), "b", is_negative);
    EXPECT_FALSE(is_negative);
    is_negative = true;
    parse(*number_of_things.covers("1"), "b", is_negative);
    EXPECT_TRUE(is_negative);
}

TEST(Parse, NumbersThatNoDoubleHolds)
{
    const Pattern digits(R"re((?<x>\d+(\.\d+)?))re");
    const auto read = [&](const std::string& text) {
        double x = 7.0;
        parse(*digits.covers(text), "x", x);
        return x;
    };
    constexpr double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(read("0012.50"), 12.5);
    EXPECT_EQ(read(std::string(400, '9')), inf);
    EXPECT_EQ(read(std::string(400, '0') + "1"), 1.0);
    EXPECT_EQ(read("1" + std::string(400, '0') + ".5"), inf);
    EXPECT_EQ(read("0." + std::string(400, '0') + "1"), 0.0);
    EXPECT_EQ(read("0." + std::string(309, '0') + "1"), 1e-310);
    EXPECT_EQ(read(std::string(1'000'000, '9')), inf);
    EXPECT_EQ(read("9007199254740993"), 9007199254740992.0); // halfway, to even
}

std::string times(std::size_t count, const std::string& piece)
{
    std::string text;
    for (std::size_t k = 0; k < count; ++k)
        text += piece;
    return text;
}

/// What FIF or HMS does with a text: the value, NaN for its own refusal.
double value_or_refusal(Qud::Handle (*function)(const Qud::Handle&, const Qud::Handle&, const Qud::Handle&),
                        const std::string& text, const char* refusal)
{
    double value = NAN;
    const Raised raised =
        host_raised_by([&] { value = Qud::as_number(function(Qud::StrVal::make(text), nullptr, nullptr))->re(); });
    if (!raised.message.empty()) {
        EXPECT_EQ(raised, (Raised{refusal, 1})) << text.substr(0, 20);
    }
    return value;
}

constexpr std::size_t million = 1'000'000;

struct Long {
    const char* name;
    std::string text;
    double value; ///< NaN: refused
};

TEST(Texts, AMillionCharactersOfALengthTakeNoTime)
{
    const std::string digits(million, '1');
    const std::string blanks(million, ' ');
    constexpr double inf = std::numeric_limits<double>::infinity();
    const Long texts[] = {
        {.name = "digits", .text = digits, .value = inf},
        {.name = "zeros", .text = std::string(million, '0') + "1", .value = 0.0254},
        {.name = "blanks", .text = blanks, .value = 0.0},
        {.name = "blanks around", .text = blanks + "1\"" + blanks, .value = 0.0254},
        {.name = "blanks between feet and inches", .text = "1'" + blanks + "12", .value = 24 * 0.0254},
        {.name = "blanks before a fraction", .text = "1" + blanks + "1/2", .value = 1.5 * 0.0254},
        {.name = "letter behind digits", .text = digits + "x", .value = NAN},
        {.name = "letter behind blanks", .text = blanks + "x", .value = NAN},
        {.name = "no fraction behind blanks", .text = "1" + blanks + "2", .value = NAN},
        {.name = "no denominator", .text = digits + "/", .value = NAN},
        {.name = "no denominator behind blanks", .text = "1" + blanks + digits + "/", .value = NAN},
        {.name = "digits and blanks in turn", .text = times(million / 2, "1 "), .value = NAN},
        {.name = "digits and slashes in turn", .text = times(million / 2, "1/"), .value = NAN},
        {.name = "digits and hyphens in turn", .text = times(million / 2, "1-"), .value = NAN},
        {.name = "feet marks", .text = std::string(million, '\''), .value = NAN},
        {.name = "inch marks", .text = std::string(million, '"'), .value = NAN},
        {.name = "signs", .text = std::string(million, '-'), .value = NAN},
        {.name = "NUL characters", .text = std::string(million, '\0'), .value = NAN},
    };
    for (const Long& c : texts) {
        const double value = value_or_refusal(Efi::Affine::FIF, c.text, "bad_fif_string");
        EXPECT_EQ(std::isnan(value), std::isnan(c.value)) << c.name;
        if (!std::isnan(c.value)) {
            EXPECT_DOUBLE_EQ(value, c.value) << c.name;
        }
    }
}

TEST(Texts, AMillionCharactersOfATimeTakeNoTime)
{
    const std::string digits(million, '0');
    const std::string blanks(million, ' ');
    const Long texts[] = {
        {.name = "hours", .text = digits + "1:00:00", .value = 3600},
        {.name = "seconds", .text = "0:00:" + digits + "1", .value = 1},
        {.name = "decimals", .text = "0:00:1." + digits + "1", .value = 1},
        {.name = "blanks around", .text = blanks + "0:00:01" + blanks, .value = 1},
        {.name = "digits", .text = digits, .value = NAN},
        {.name = "minutes", .text = "0:" + digits + ":00", .value = NAN},
        {.name = "no decimals", .text = "0:00:" + digits + ".", .value = NAN},
        {.name = "letter at the end", .text = "0:00:01" + blanks + "x", .value = NAN},
        {.name = "colons", .text = std::string(million, ':'), .value = NAN},
        {.name = "digits and colons in turn", .text = times(million / 2, "1:"), .value = NAN},
        {.name = "a time too late", .text = std::string(million, 'x') + "1:00:00", .value = NAN},
    };
    for (const Long& c : texts) {
        const double value = value_or_refusal(Efi::Affine::HMS, c.text, "bad_hhmmss_string");
        EXPECT_EQ(std::isnan(value), std::isnan(c.value)) << c.name;
        if (!std::isnan(c.value)) {
            EXPECT_DOUBLE_EQ(value, c.value) << c.name;
        }
    }
}

TEST(Texts, ANulIsACharacterLikeAnyOther)
{
    const std::string nul(1, '\0');
    for (const std::string& text : {"5'" + nul, nul, "5'" + nul + " 3", nul + "5'"})
        EXPECT_TRUE(std::isnan(value_or_refusal(Efi::Affine::FIF, text, "bad_fif_string")));
    for (const std::string& text : {"1:02:03" + nul, nul + "1:02:03", "1:02" + nul + ":03"})
        EXPECT_TRUE(std::isnan(value_or_refusal(Efi::Affine::HMS, text, "bad_hhmmss_string")));
}

TEST(TextsInThreads, ShareThePatternsFromTheFirstUseOn)
{
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t)
        threads.emplace_back([] {
            for (int k = 0; k < 100; ++k) {
                EXPECT_EQ(value_or_refusal(Efi::Affine::FIF, "1' 0", "bad_fif_string"), 12 * 0.0254);
                EXPECT_EQ(value_or_refusal(Efi::Affine::HMS, "1:00:00", "bad_hhmmss_string"), 3600.0);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
