// Values and units as people read them. What stands here was written by hand.
#include "bailuxhost/matval.hpp"
#include "worksheet/display/number_text.hpp"
#include "worksheet/display/text_width.hpp"
#include "worksheet/display/unit_text.hpp"
#include "worksheet/display/value_text.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

using Qud::Dim;
using worksheet::display::Room;
using worksheet::display::value_text;

constexpr double inf = std::numeric_limits<double>::infinity();

Dim dim(const char* text)
{
    return Dim::Parse(text);
}

Qud::Handle number(double re, double im = 0.0, const Dim& unit = Dim::identity)
{
    return Qud::NumVal::make(re, im, unit);
}

TEST(Display, Numbers)
{
    const struct {
        double x;
        const char* text;
    } cases[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {3.0, "3"},
        {-3.5, "-3.5"},
        {0.1 + 0.2, "0.3"},
        {1.0 / 3.0, "0.333333"},
        {2.0 / 3.0e4, "6.66667e-5"},
        {1.0e-4, "0.0001"},
        {123456.0, "123456"},
        {123456.7, "123457"},
        {1234567.0, "1234567"},
        {999999999.0, "999999999"},
        {1.0e9, "1e9"},
        {2.1e11, "2.1e11"},
        {1.0e300, "1e300"},
        {9.9999999, "10"},
        {5e-324, "4.94066e-324"},
        {inf, "inf"},
        {-inf, "-inf"},
        {std::numeric_limits<double>::quiet_NaN(), "NaN"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(worksheet::display::number_text(row.x).text(), row.text);
}

TEST(Display, Units)
{
    const struct {
        const char* dim;
        const char* text;
    } cases[] = {
        {"V{}", ""},
        {"V{Length 60000}", "m"},
        {"V{Length 30000}", "m^(1/2)"},
        {"V{Length -90000}", "m^(-3/2)"},
        {"V{Length 60000, Time -60000}", "m/s"},
        {"V{Time -60000}", "s^-1"},
        {"V{Mass 60000, Length -180000}", "kg/m^3"},
        {"V{Mass 60000, Length 60000, Time -120000}", "N"},
        {"V{Mass 60000, Length -60000, Time -120000}", "Pa"},
        {"V{Mass 60000, Length 120000, Time -120000}", "J"},
        {"V{Mass 60000, Time -120000}", "N/m"},
        {"V{Mass 60000, Length 180000, Time -120000}", "N*m^2"},
        {"V{Mass 60000, Time -180000, Temperature -60000}", "W/(m^2*K)"},
        {"V{Mass 60000, Length 120000, Time -180000, Current -120000}", "ohm"},
        {"V{Current 60000, Time 60000}", "C"},
        {"V{Length 60000, Time -120000, Amount -60000}", "m/(s^2*mol)"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(worksheet::display::unit_text(dim(row.dim)), row.text);
}

TEST(Display, Scalars)
{
    const Dim ohm = dim("V{Mass 60000, Length 120000, Time -180000, Current -120000}");
    const Dim length = dim("V{Length 60000}");
    EXPECT_EQ(value_text(number(2.5, 0.0, length)), "2.5 m");
    EXPECT_EQ(value_text(number(3.0, 4.0)), "3 + 4i");
    EXPECT_EQ(value_text(number(3.0, -4.0, ohm)), "(3 - 4i) ohm");
    EXPECT_EQ(value_text(number(0.0, -2.0)), "-2i");
    EXPECT_EQ(value_text(number(0.0, 2.0, ohm)), "2i ohm");
    const worksheet::ShownUnit feet{.text = "ft", .factor = 0.3048, .dim = length};
    EXPECT_EQ(value_text(number(3.048, 0.0, length), {}, &feet), "10 ft");
}

Qud::Handle matrix(std::uint32_t rows, std::uint32_t cols, const std::vector<double>& by_rows, const Dim& unit = {})
{
    Qud::MatBuilder builder(rows, cols);
    for (std::size_t k = 0; k < by_rows.size(); ++k)
        builder.set_number(k / cols, k % cols, by_rows[k], 0.0, unit);
    return builder.finish();
}

TEST(Display, ColumnsAlignAtThePoint)
{
    EXPECT_EQ(value_text(matrix(2, 2, {1.0, -20.25, 100.5, 3.0}, dim("V{Length 60000}"))), "[   1    -20.25 ]\n"
                                                                                           "[ 100.5    3    ] m");
    EXPECT_EQ(value_text(matrix(1, 1, {7.0})), "[ 7 ]");
    EXPECT_EQ(value_text(Qud::MatVal::empty()), "[]");
    EXPECT_EQ(value_text(matrix(0, 3, {})), "[] 0 by 3");
}

TEST(Display, ComplexColumns)
{
    Qud::MatBuilder builder(3, 1);
    builder.set_number(0, 0, 1.0, 2.5, {});
    builder.set_number(1, 0, -10.25, -10.0, {});
    builder.set_number(2, 0, 4.0, 0.0, {});
    EXPECT_EQ(value_text(builder.finish()), "[   1    +  2.5i ]\n"
                                            "[ -10.25 - 10i   ]\n"
                                            "[   4            ]");
}

TEST(Display, MixedUnitsStandInEveryCell)
{
    Qud::MatBuilder builder(2, 2);
    builder.set_number(0, 0, 1.5, 0.0, dim("V{Length 60000}"));
    builder.set_number(0, 1, 2.0, 0.0, dim("V{Time 60000}"));
    builder.set_number(1, 0, 20.0, 0.0, dim("V{Mass 60000}"));
    builder.set(1, 1, Qud::StrVal::make("a \"b\""));
    EXPECT_EQ(value_text(builder.finish()), "[  1.5 m   2 s       ]\n"
                                            "[ 20   kg  \"a \\\"b\\\"\" ]");
}

TEST(Display, NestedRowsStayApart)
{
    Qud::MatBuilder builder(2, 2);
    builder.set(0, 0, matrix(2, 2, {1.0, 2.0, 3.0, 4.0}, dim("V{Length 60000}")));
    builder.set(0, 1, matrix(1, 1, {5.0}));
    builder.set(1, 0, Qud::StrVal::make("x"));
    builder.set_number(1, 1, 6.0, 0.0, {});
    EXPECT_EQ(value_text(builder.finish()), "[ [ 1  2 ]    [ 5 ]\n"
                                            "  [ 3  4 ] m        ]\n"
                                            "[ \"x\"         6     ]");
}

TEST(Display, LongAndWideMatricesLoseTheirMiddle)
{
    std::vector<double> numbers(60);
    for (std::size_t k = 0; k < numbers.size(); ++k)
        numbers[k] = static_cast<double>(k);
    EXPECT_EQ(value_text(matrix(30, 2, numbers, dim("V{Length 60000}")), Room{.width = 80, .rows = 4}), "[  0   1 ]\n"
                                                                                                        "[  2   3 ]\n"
                                                                                                        "  ...\n"
                                                                                                        "[ 56  57 ]\n"
                                                                                                        "[ 58  59 ] m\n"
                                                                                                        "... 30 by 2");
    EXPECT_EQ(value_text(matrix(1, 60, numbers), Room{.width = 24, .rows = 4}), "[ 0  1  2  ...  58  59 ]\n"
                                                                                "... 1 by 60");
}

TEST(Display, TextsCannotSteerTheTerminal)
{
    EXPECT_EQ(value_text(Qud::StrVal::make("two\nlines")), "two\nlines");
    EXPECT_EQ(value_text(Qud::StrVal::make("\x1b[31m")), "\\x1b[31m");
    EXPECT_EQ(value_text(Qud::StrVal::make("\xff")), "\xEF\xBF\xBD");
    const std::string long_text(10'000'000, 'x'); // NOLINT(bugprone-string-constructor): as long as it looks
    EXPECT_LT(value_text(Qud::StrVal::make(long_text)).size(), 11'000U);
}

TEST(Display, WidthsOfCharacters)
{
    using worksheet::display::text_width;
    EXPECT_EQ(text_width("abc"), 3U);
    EXPECT_EQ(text_width("\xC3\xA9"), 1U);                 // e with acute
    EXPECT_EQ(text_width("e\xCC\x81"), 1U);                // e and a combining acute
    EXPECT_EQ(text_width("\xE4\xB8\xAD\xE6\x96\x87"), 4U); // two Chinese characters
    EXPECT_EQ(worksheet::display::cut_in_the_middle("abcdefghij", 7), "ab...ij");
    EXPECT_EQ(worksheet::display::prefix_of_width("\xE4\xB8\xAD\xE6\x96\x87", 3), "\xE4\xB8\xAD");
}

} // namespace
