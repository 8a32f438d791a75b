#include "worksheet/syntax/source.hpp"

#include "worksheet/session.hpp"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Cut {
    std::string text;
    std::size_t line;
    bool is_open = false;

    friend bool operator==(const Cut&, const Cut&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Cut& c)
    {
        return out << c.line << ": " << c.text << (c.is_open ? " (open)" : "");
    }
};

std::vector<Cut> cut(std::string_view source)
{
    std::vector<Cut> statements;
    worksheet::StatementReader reader(source);
    while (const auto statement = reader.next())
        statements.push_back({std::string(statement->text), statement->line, statement->open_bracket.has_value()});
    return statements;
}

using Cuts = std::vector<Cut>;

} // namespace

TEST(Source, StatementsAndTheirLines)
{
    EXPECT_EQ(cut(""), Cuts{});
    EXPECT_EQ(cut("\n \t\n# comment"), Cuts{});
    EXPECT_EQ(cut("1\n2"), (Cuts{{"1", 1}, {"2", 2}}));
    EXPECT_EQ(cut("\n\n  1 + 1  # two\n# none\n\n3\n"), (Cuts{{"1 + 1", 3}, {"3", 6}}));
    EXPECT_EQ(cut("1\r\n\r\n2\r\n"), (Cuts{{"1", 1}, {"2", 3}}));
    EXPECT_EQ(cut("\xEF\xBB\xBF"
                  "1"),
              (Cuts{{"1", 1}}));
    EXPECT_EQ(cut("\xEF\xBB\xBF"), Cuts{});
}

TEST(Source, BracketsHoldLinesTogether)
{
    EXPECT_EQ(cut("[1,\n2]\n3"), (Cuts{{"[1,\n2]", 1}, {"3", 3}}));
    EXPECT_EQ(cut("f(1, # ) no\n2) # comment\n3"), (Cuts{{"f(1, # ) no\n2)", 1}, {"3", 3}}));
    EXPECT_EQ(cut("(\"(\")\n1"), (Cuts{{"(\"(\")", 1}, {"1", 2}}));
    EXPECT_EQ(cut("[(1]\n2)\n3"), (Cuts{{"[(1]\n2)", 1}, {"3", 3}})); // any bracket closes the innermost one
    EXPECT_EQ(cut("1)]\n2"), (Cuts{{"1)]", 1}, {"2", 2}}));
}

TEST(Source, TextsHoldBracketsAndSigns)
{
    EXPECT_EQ(cut("\"# [ (\" # comment\n1"), (Cuts{{"\"# [ (\"", 1}, {"1", 2}}));
    EXPECT_EQ(cut("\"\\\"[\"\n1"), (Cuts{{"\"\\\"[\"", 1}, {"1", 2}}));
    EXPECT_EQ(cut("\"\\\\\"\n1"), (Cuts{{"\"\\\\\"", 1}, {"1", 2}}));
}

TEST(Source, WhatIsNotClosed)
{
    EXPECT_EQ(cut("1\n[2,\n3\n4"), (Cuts{{"1", 1}, {"[2,\n3\n4", 2, true}}));
    EXPECT_EQ(cut("\"abc\n1"), (Cuts{{"\"abc", 1}, {"1", 2}}));
    EXPECT_EQ(cut("f(\"abc)\n1"), (Cuts{{"f(\"abc)", 1}, {"1", 2}}));
    EXPECT_EQ(cut("\"abc\\\n1"), (Cuts{{"\"abc\\", 1}, {"1", 2}}));
    EXPECT_EQ(cut("(\n\"a\nb"), (Cuts{{"(\n\"a", 1}, {"b", 3}}));
}

TEST(Source, TellsAPromptToGoOn)
{
    EXPECT_TRUE(worksheet::is_unfinished("[1, 2"));
    EXPECT_TRUE(worksheet::is_unfinished("1\nf(\n"));
    EXPECT_FALSE(worksheet::is_unfinished("[1, 2]"));
    EXPECT_FALSE(worksheet::is_unfinished(""));
    EXPECT_FALSE(worksheet::is_unfinished("\"[\" # ("));
    EXPECT_FALSE(worksheet::is_unfinished("(\"abc"));
}
