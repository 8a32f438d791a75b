#include "bailuxhost/value.hpp"
#include "results.hpp"
#include "worksheet/syntax/tree.hpp"

#include <array>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

/// Malformed and enormous worksheets: each statement ends in an error with its place, the others go on.
namespace {

using Outcomes = std::vector<Outcome>;

const Outcome too_deep{"nesting too deep", -1, "", 1, 1001};

Outcome success(std::size_t line)
{
    return {.message = {}, .index = 0, .function = {}, .line = line, .column = 0};
}

std::string repeated(std::string_view text, std::size_t count)
{
    std::string all;
    all.reserve(text.size() * count);
    for (std::size_t k = 0; k < count; ++k)
        all += text;
    return all;
}

} // namespace

TEST(Malformed, BytesThatAreNoUtf8)
{
    const Outcomes outcomes = outcomes_of("\xFF\xFE\n1\n\"\xC3\"\n2\n3 # \xFF in a comment\na\xE4 := 4\n5");
    EXPECT_EQ(outcomes, (Outcomes{{"syntax error: these bytes are not UTF-8", -1, "", 1, 1},
                                  success(2),
                                  {"syntax error: these bytes are not UTF-8", -1, "", 3, 2},
                                  success(4),
                                  success(5),
                                  {"syntax error: these bytes are not UTF-8", -1, "", 6, 2},
                                  success(7)}));
}

TEST(Malformed, StrayCharacters)
{
    EXPECT_EQ(outcomes_of(std::string_view("1 + \0 2\n3", 9)),
              (Outcomes{{"syntax error: a NUL character", -1, "", 1, 5}, success(2)}));
    EXPECT_EQ(outcomes_of(std::string_view("\"a\0b\"\n3", 7)),
              (Outcomes{{"syntax error: a NUL character", -1, "", 1, 3}, success(2)}));
    EXPECT_EQ(outcomes_of("\x01"), (Outcomes{{"syntax error: unexpected character U+0001", -1, "", 1, 1}}));
    EXPECT_EQ(outcomes_of("\u00a0"), (Outcomes{{"syntax error: unexpected character U+00A0", -1, "", 1, 1}}));
    EXPECT_EQ(outcomes_of("x $ y"), (Outcomes{{"syntax error: unexpected '$'", -1, "", 1, 3}}));
    EXPECT_EQ(outcomes_of("1\n\xEF\xBB\xBF"
                          "2"),
              (Outcomes{success(1), {"syntax error: unexpected '\uFEFF'", -1, "", 2, 1}}));
}

TEST(Malformed, WhatIsNotClosed)
{
    EXPECT_EQ(outcomes_of("1\n2 + (3\n4\n"),
              (Outcomes{success(1), {"syntax error: '(' is never closed", -1, "", 2, 5}}));
    EXPECT_EQ(outcomes_of("[1, (2, 3]\n"), (Outcomes{{"syntax error: '[' is never closed", -1, "", 1, 1}}));
    EXPECT_EQ(outcomes_of("x := \"abc\n4"),
              (Outcomes{{"syntax error: this text is not closed", -1, "", 1, 6}, success(2)}));
    // The name of a definition that is not closed has no value either.
    worksheet::Session session;
    EXPECT_EQ(outcomes_of(session, "kg := [1,"), (Outcomes{{"syntax error: '[' is never closed", -1, "", 1, 7}}));
    EXPECT_EQ(outcomes_of(session, "kg"), (Outcomes{{"undefined name: kg", -1, "", 1, 1}}));
}

TEST(Malformed, ALineEndIsOneCharacter)
{
    EXPECT_EQ(outcomes_of("[1,\r\n 2 3]"),
              (Outcomes{{"syntax error: ',', ';' or ']' expected, not the number 3", -1, "", 1, 8}}));
    EXPECT_EQ(outcomes_of("\xEF\xBB\xBF  1 $"), (Outcomes{{"syntax error: unexpected '$'", -1, "", 1, 3}}));
}

TEST(Malformed, AHundredMegabytesOfBrackets)
{
    constexpr std::size_t size = 100'000'000;
    EXPECT_EQ(outcomes_of(std::string(size, '[')), Outcomes{too_deep});
    EXPECT_EQ(outcomes_of(std::string(size, '(')), Outcomes{too_deep});
    EXPECT_EQ(outcomes_of(std::string(size / 2, '(') + std::string(size / 2, ')')), Outcomes{too_deep});
    EXPECT_EQ(outcomes_of(std::string(size, ')')),
              (Outcomes{{"syntax error: a value expected, not ')'", -1, "", 1, 1}}));
    EXPECT_EQ(outcomes_of(repeated("[]", size / 2)),
              (Outcomes{{"syntax error: a value expected, not ']'", -1, "", 1, 4}}));
    EXPECT_EQ(outcomes_of(std::string(size, '"') + "\n1"),
              (Outcomes{{"syntax error: an operator or the end expected, not a text", -1, "", 1, 3}, success(2)}));
}

TEST(Malformed, NestingThatIsTooDeep)
{
    const std::size_t many = 100'000;
    EXPECT_EQ(outcomes_of(std::string(many, '-') + "1")[0].message, "nesting too deep");
    EXPECT_EQ(outcomes_of("1" + std::string(many, '\''))[0].message, "nesting too deep");
    EXPECT_EQ(outcomes_of("2" + repeated("^2", many))[0].message, "nesting too deep");
    EXPECT_EQ(outcomes_of("2" + repeated("^-2", many))[0].message, "nesting too deep");
    EXPECT_EQ(outcomes_of("x := [1]\nx" + repeated("[0]", many))[1].message, "nesting too deep");
    EXPECT_EQ(outcomes_of(repeated("abs(", many) + "1" + std::string(many, ')'))[0].message, "nesting too deep");
    EXPECT_EQ(outcomes_of(repeated("[", 1001) + "1" + repeated("]", 1001)), Outcomes{too_deep});
}

TEST(Malformed, NestingThatIsNotTooDeep)
{
    const std::size_t deep = 900;
    EXPECT_EQ(outcomes_of(repeated("(", deep) + "1" + repeated(")", deep)), Outcomes{success(1)});
    EXPECT_EQ(outcomes_of(repeated("[", deep) + "1" + repeated("]", deep)), Outcomes{success(1)});
    EXPECT_EQ(outcomes_of("1" + repeated("+1", 100'000)), Outcomes{success(1)}); // a long sum is not deep
    EXPECT_EQ(outcomes_of("[1" + repeated(",1", 100'000) + "]"), Outcomes{success(1)});
}

TEST(Malformed, ArraysNestedByMoreAndMoreStatements)
{
    worksheet::Session session;
    Outcomes outcomes = outcomes_of(session, "a := [1]\n" + repeated("a := [a]\n", 1100) + "2");
    EXPECT_EQ(outcomes[999], success(1000));
    EXPECT_EQ(outcomes[1000], (Outcome{"nesting too deep", -1, "", 1001, 6}));
    EXPECT_EQ(outcomes.back(), success(1102));
    EXPECT_EQ(outcomes_of(session, "a == a\n-a\na"), (Outcomes{success(1), success(2), success(3)}));
}

TEST(Malformed, SharedArraysThatNobodyCouldWalkThrough)
{
    const Outcomes outcomes = outcomes_of("a := [1]\n" + repeated("a := [a, a]\n", 40) + "2");
    EXPECT_EQ(outcomes[20], success(21));
    EXPECT_EQ(outcomes[40], (Outcome{"out of memory", -1, "", 41, 6}));
    EXPECT_EQ(outcomes.back(), success(42));
}

TEST(Malformed, RecursionThatRunsAway)
{
    EXPECT_EQ(
        outcomes_of("f(n) := f(n + 1)\n2 * f(1)\nf(2) + f(3)\n4"),
        (Outcomes{success(1), {"nesting too deep", -1, "", 2, 5}, {"nesting too deep", -1, "", 3, 1}, success(4)}));
    EXPECT_EQ(outcomes_of("f(n) := g([n])\ng(n) := if(1, -(f(n) + 1), 0)\nf(1)")[2].message, "nesting too deep");
    EXPECT_EQ(outcomes_of("f(i, j) := matrix(1, 1, f)\nf(0, 0)")[1].message, "nesting too deep");
    EXPECT_EQ(outcomes_of("f(n) := if(n == 0, 0, 1 + f(n - 1))\nf(500)"), (Outcomes{success(1), success(2)}));
}

/// Any bytes: every statement gets one JSON object, and the next worksheet starts afresh.
RC_GTEST_PROP(Malformed, AnyBytes, (const std::vector<std::uint8_t>& bytes))
{
    const std::string source(bytes.begin(), bytes.end());
    for (const std::string& line : json_of(source))
        RC_ASSERT(nlohmann::json::accept(line));
}

/// Any row of tokens: nearer to worksheets than bytes are.
RC_GTEST_PROP(Malformed, AnyTokens, ())
{
    static const std::vector<std::string> tokens{"1",       "2.5",
                                                 "1e400",   "3i",
                                                 "\"a\"",   "x",
                                                 "y",       "f",
                                                 "m",       "kN",
                                                 "pi",      "NaN",
                                                 "inf",     "lu",
                                                 "sqrt",    "if",
                                                 "matrix",  "submatrix",
                                                 "augment", "complex",
                                                 "set",     "origin",
                                                 "tol",     "on",
                                                 ":=",      "->",
                                                 "==",      "<",
                                                 "+",       "-",
                                                 "*",       "/",
                                                 "^",       "'",
                                                 "(",       ")",
                                                 "[",       "]",
                                                 ",",       ";",
                                                 "#",       "\n",
                                                 "\n",      " ",
                                                 "f(x) :=", "[1, 2; 3, 4]",
                                                 "x :="};
    const auto chosen = *rc::gen::container<std::vector<std::string>>(rc::gen::elementOf(tokens));
    std::string source;
    for (const std::string& token : chosen)
        source += token + ' ';
    for (const std::string& line : json_of(source))
        RC_ASSERT(nlohmann::json::accept(line));
}
