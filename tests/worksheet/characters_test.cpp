#include "worksheet/syntax/characters.hpp"

#include <gtest/gtest.h>

using worksheet::Character;
using worksheet::character_at;
using worksheet::count_characters;
using worksheet::is_valid_utf8;
using worksheet::name_length;

TEST(Characters, OfOneToFourBytes)
{
    EXPECT_EQ(character_at("a", 0).code, U'a');
    EXPECT_EQ(character_at("\u00fc", 0).code, U'\u00fc');
    EXPECT_EQ(character_at("\u9577", 0).code, U'\u9577');
    EXPECT_EQ(character_at("\U0001F600", 0).code, U'\U0001F600');
    EXPECT_EQ(character_at("\U0001F600", 0).bytes, 4U);
}

TEST(Characters, WhatIsNoUtf8)
{
    for (const std::string_view bytes :
         {"\x80", "\xC0\x80", "\xC3", "\xC3(", "\xE0\x80\x80", "\xED\xA0\x80", "\xE2\x82", "\xF0\x80\x80\x80",
          "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFF"}) {
        EXPECT_EQ(character_at(bytes, 0).code, Character::invalid) << testing::PrintToString(bytes);
        EXPECT_EQ(character_at(bytes, 0).bytes, 1U);
        EXPECT_FALSE(is_valid_utf8(bytes));
    }
    EXPECT_TRUE(is_valid_utf8("\xEF\xBF\xBF \xF4\x8F\xBF\xBF \xED\x9F\xBF"));
}

TEST(Characters, Counted)
{
    EXPECT_EQ(count_characters(""), 0U);
    EXPECT_EQ(count_characters("a\u00fc\u9577\U0001F600"), 4U);
    EXPECT_EQ(count_characters("a\r\nb\nc\rd"), 7U); // CR LF is one line end
    EXPECT_EQ(count_characters("\xFF\xFE"), 2U);
}

TEST(Characters, Names)
{
    EXPECT_EQ(name_length("abc1_ + 2"), 5U);
    EXPECT_EQ(name_length("1abc"), 0U);
    EXPECT_EQ(name_length("_"), 1U);
    EXPECT_EQ(name_length(""), 0U);
    EXPECT_EQ(name_length("gr\u00f6\u00dfe)"), 7U);
    EXPECT_EQ(name_length("\u9577\u3055"), 6U);
    EXPECT_EQ(name_length("e\u0301t\u00e9"), 6U); // a combining accent
    EXPECT_EQ(name_length("\u0301"), 0U);
    EXPECT_EQ(name_length("x\u00b2"), 1U); // a superscript is no digit
    EXPECT_EQ(name_length("x\u0662"), 3U); // an Arabic digit is one
    EXPECT_EQ(name_length("\u20ac"), 0U);
    EXPECT_EQ(name_length("a\xFF"), 1U);
}
