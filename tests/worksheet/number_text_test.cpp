#include "worksheet/syntax/number_text.hpp"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

using worksheet::append_number;
using worksheet::read_number;

TEST(NumberText, Lengths)
{
    struct Case {
        std::string_view text;
        std::size_t length;
        double value;
    };
    for (const Case& c :
         {Case{"12", 2, 12.0}, Case{"1.5e-3x", 6, 1.5e-3}, Case{"5.", 2, 5.0}, Case{".5", 2, 0.5}, Case{"1e", 1, 1.0},
          Case{"1e+", 1, 1.0}, Case{"1.e2", 4, 100.0}, Case{"1.2.3", 3, 1.2}, Case{"0x10", 1, 0.0}, Case{"", 0, 0.0},
          Case{".", 0, 0.0}, Case{"-1", 0, 0.0}, Case{"inf", 0, 0.0}, Case{"nan", 0, 0.0}, Case{".e1", 0, 0.0}}) {
        EXPECT_EQ(read_number(c.text).length, c.length) << c.text;
        EXPECT_EQ(read_number(c.text).value, c.value) << c.text;
    }
}

TEST(NumberText, BeyondAllDoubles)
{
    const double inf = std::numeric_limits<double>::infinity();
    const std::string zeros(400, '0');
    EXPECT_EQ(read_number("1e400").value, inf);
    EXPECT_EQ(read_number("1e99999999999999999999999").value, inf);
    EXPECT_EQ(read_number("1" + zeros).value, inf);
    EXPECT_EQ(read_number("0." + zeros + "1").value, 0.0);
    EXPECT_EQ(read_number("0." + zeros + "1e500").value, 1e99);
    EXPECT_EQ(read_number("1" + zeros + "e-400").value, 1.0);
    EXPECT_EQ(read_number("1e-400").value, 0.0);
    EXPECT_EQ(read_number("0e99999999999999999999").value, 0.0);
    EXPECT_EQ(read_number("1e-99999999999999999999").value, 0.0);
    EXPECT_EQ(read_number("1e-400").length, 6U);
    EXPECT_EQ(read_number("1.7976931348623158e308").value, std::numeric_limits<double>::max());
    EXPECT_EQ(read_number("1.7976931348623159e308").value, inf);
    EXPECT_EQ(read_number("2.4703282292062328e-324").value, 5e-324); // just above half the smallest
    EXPECT_EQ(read_number("2.4703282292062327e-324").value, 0.0);
}

TEST(NumberText, Written)
{
    const auto text = [](double value) {
        std::string out;
        append_number(out, value);
        return out;
    };
    EXPECT_EQ(text(3.0), "3");
    EXPECT_EQ(text(0.1), "0.1");
    EXPECT_EQ(text(-0.0), "-0");
    EXPECT_EQ(text(1e300), "1e+300");
    EXPECT_EQ(text(std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(text(-std::numeric_limits<double>::quiet_NaN()), "NaN");
    EXPECT_EQ(text(-std::numeric_limits<double>::infinity()), "-inf");
}

RC_GTEST_PROP(NumberText, WhatIsWrittenReadsBack, (std::uint64_t bits))
{
    const double value = std::fabs(std::bit_cast<double>(bits));
    RC_PRE(std::isfinite(value));
    std::string text;
    append_number(text, value);
    const auto read = read_number(text);
    RC_ASSERT(read.length == text.size());
    RC_ASSERT(std::bit_cast<std::uint64_t>(read.value) == std::bit_cast<std::uint64_t>(value));
}
