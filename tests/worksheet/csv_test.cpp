#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "results.hpp"
#include "worksheet/builtins/csv_reader.hpp"
#include "worksheet/functions.hpp"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

/// The cells as one text: rows end with `|`, texts stand in quotes.
std::string cells(std::string_view content)
{
    const Qud::Handle value = worksheet::matrix_from_csv(content);
    const Qud::MatVal& M = *Qud::matrix_of(value);
    std::string all;
    for (std::size_t i = 0; i < M.Rows(); ++i) {
        for (std::size_t j = 0; j < M.Cols(); ++j) {
            const Qud::Handle* const entry = M.entry(i, j);
            all += j > 0 ? " " : "";
            all +=
                entry != nullptr ? '"' + Qud::as_text(*entry)->text() + '"' : std::to_string(M.real(i, j)).substr(0, 4);
        }
        all += '|';
    }
    return all;
}

/// A folder of its own that goes away with the test.
class CsvFiles : public testing::Test {
protected:
    CsvFiles()
    {
        std::string name = (std::filesystem::temp_directory_path() / "csv_test_XXXXXX").string();
        m_folder = mkdtemp(name.data());
    }
    ~CsvFiles() override { std::filesystem::remove_all(m_folder); }

    void write(const std::string& name, std::string_view content) const
    {
        std::ofstream(m_folder / name, std::ios::binary) << content;
    }

    worksheet::StatementResult evaluate(std::string_view source) const
    {
        worksheet::SheetSettings settings;
        settings.folder = m_folder.string();
        worksheet::Session session(settings);
        return result_of(session, source);
    }

    std::filesystem::path m_folder;
};

} // namespace

TEST(Csv, Rows)
{
    EXPECT_EQ(cells(""), "");
    EXPECT_EQ(cells("\xEF\xBB\xBF"), "");
    EXPECT_EQ(cells("1"), "1.00|");
    EXPECT_EQ(cells("1\n"), "1.00|");
    EXPECT_EQ(cells("1\r\n2"), "1.00|2.00|");
    EXPECT_EQ(cells("\n"), "\"\"|");
    EXPECT_EQ(cells("1\n\n2\n"), "1.00|\"\"|2.00|");
    EXPECT_EQ(cells(","), "\"\" \"\"|");
    EXPECT_EQ(cells("1,\n"), "1.00 \"\"|");
    EXPECT_EQ(cells("1\n2,3,4"), "1.00 \"\" \"\"|2.00 3.00 4.00|");
    EXPECT_EQ(cells("a\rb,1\r"), "\"a\rb\" \"1\r\"|"); // a carriage return alone ends nothing
}

TEST(Csv, NumbersAndTexts)
{
    EXPECT_EQ(cells("1.5,+2,-3,.5,5.,1e1"), "1.50 2.00 -3.0 0.50 5.00 10.0|");
    EXPECT_EQ(cells(" 1 ,\t2\t"), "1.00 2.00|");
    EXPECT_EQ(cells("1x,1 2,--1,+-1,-,+,e5,1e,."), "\"1x\" \"1 2\" \"--1\" \"+-1\" \"-\" \"+\" \"e5\" \"1e\" \".\"|");
    EXPECT_EQ(cells("NaN,inf,-inf"), "nan inf -inf|");
    EXPECT_EQ(cells("nan,Inf,INF,+inf,infinity"), "\"nan\" \"Inf\" \"INF\" \"+inf\" \"infinity\"|");
    EXPECT_EQ(cells(" a , b"), "\" a \" \" b\"|"); // the blanks of a text are its own
}

TEST(Csv, Quotes)
{
    EXPECT_EQ(cells("\"a,b\",\"c\"\"d\",\"e\nf\"\n1"), "\"a,b\" \"c\"d\" \"e\nf\"|1.00 \"\" \"\"|");
    EXPECT_EQ(cells("\"1.5\",\" 2 \", \"3\" "), "1.50 2.00 3.00|");
    EXPECT_EQ(cells("\"\",\"\"\"\""), "\"\" \"\"\"|");
    EXPECT_EQ(cells("\"never closed\n1,2"), "\"never closed\n1,2\"|");
    EXPECT_EQ(cells("\"a\"b,c\"d\""), "\"ab\" \"c\"d\"\"|");
    EXPECT_EQ(cells("\"a\"\"\n"), "\"a\"\n\"|");
}

TEST(Csv, WhatIsNoUtf8NamesItsLine)
{
    EXPECT_EQ(cells("gr\u00f6\u00dfe"), "\"gr\u00f6\u00dfe\"|");
    try {
        worksheet::matrix_from_csv("1\n\"a\nb\"\n\xFF");
        FAIL();
    } catch (const worksheet::NotUtf8& fault) {
        EXPECT_EQ(fault.line, 4U);
    }
}

TEST(Csv, ANulIsACharacterLikeOthers)
{
    EXPECT_EQ(cells(std::string_view("a\0b,1\n", 6)), std::string("\"a\0b\" 1.00|", 11));
}

TEST(Csv, TooManyCellsForAnyMemory)
{
    // 2^20 cells in the first row, 2^20 rows: 8 TiB
    std::string content(1 << 20, ',');
    content += std::string(1 << 20, '\n');
    EXPECT_THROW(worksheet::matrix_from_csv(content), std::bad_alloc);
}

TEST_F(CsvFiles, FoundInTheWorksheetsFolder)
{
    write("a.csv", "1,2\n");
    EXPECT_EQ(Qud::matrix_of(evaluate("read_csv(\"a.csv\")").value)->Cols(), 2U);
    EXPECT_EQ(Qud::matrix_of(evaluate("read_csv(\"" + (m_folder / "a.csv").string() + "\")").value)->Cols(), 2U);
}

TEST_F(CsvFiles, SaysWhatIsWrong)
{
    write("b.csv", "1,2\n3,\xC3\n");
    const auto result = evaluate("read_csv(\"b.csv\")");
    EXPECT_EQ(result.error.message, "cannot read file: b.csv");
    EXPECT_EQ(result.error.index, 1);
    EXPECT_EQ(result.error.found, "line 2 of b.csv is not UTF-8");
    EXPECT_EQ(result.error.caret, 10U);
    EXPECT_EQ(evaluate("read_csv(\"c.csv\")").error.found, "No such file or directory");
}

TEST_F(CsvFiles, AMillionRows)
{
    std::string content;
    for (int i = 0; i < 1'000'000; ++i)
        content += std::to_string(i) + ",0.5,x,-1\n";
    write("million.csv", content);
    const auto result = evaluate("read_csv(\"million.csv\")");
    const Qud::MatVal& M = *Qud::matrix_of(result.value);
    ASSERT_EQ(M.Rows(), 1'000'000U);
    ASSERT_EQ(M.Cols(), 4U);
    EXPECT_EQ(M.real(999'999, 0), 999'999.0);
    EXPECT_EQ(M.real(123'456, 3), -1.0);
    EXPECT_EQ(Qud::as_text(*M.entry(999'999, 2))->text(), "x");
}

TEST_F(CsvFiles, ATextThatBeginsWithAByteOrderMarkKeepsIt)
{
    worksheet::SheetSettings settings;
    settings.folder = m_folder.string();
    worksheet::Session session(settings);
    const std::string mark = "\xEF\xBB\xBF";
    const auto lines = json_of(session, "M := [\"" + mark + "a\", 1; \"" + mark +
                                            "\", 2]\nwrite_csv(M, \"mark.csv\")\nread_csv(\"mark.csv\") == M\n");
    EXPECT_EQ(lines.back(), R"({"kind":"number","re":1.0,"im":0.0,"unit":""})");
}

RC_GTEST_FIXTURE_PROP(CsvFiles, WhatIsWrittenReadsBackToTheSameBits, (const std::vector<std::uint64_t>& bits))
{
    RC_PRE(!bits.empty());
    worksheet::SheetSettings settings;
    settings.folder = m_folder.string();
    worksheet::Session session(settings);
    Qud::MatBuilder builder(static_cast<std::uint32_t>(bits.size()), 1);
    for (std::size_t i = 0; i < bits.size(); ++i)
        builder.set_number(i, 0, std::bit_cast<double>(bits[i]), 0.0, Qud::Dim::identity);
    const std::array arguments{builder.finish(), Qud::StrVal::make("bits.csv")};
    const Evl::Settings host{.origin = {}, .tol = {}, .folder = settings.folder};
    worksheet::find_function("write_csv")->entry(host, arguments);
    const auto result = result_of(session, "read_csv(\"bits.csv\")");
    const Qud::MatVal& M = *Qud::matrix_of(result.value);
    RC_ASSERT(M.Rows() == bits.size());
    for (std::size_t i = 0; i < bits.size(); ++i) {
        const double wanted = std::bit_cast<double>(bits[i]);
        const bool same =
            std::isnan(wanted) ? std::isnan(M.real(i, 0)) : std::bit_cast<std::uint64_t>(M.real(i, 0)) == bits[i];
        RC_ASSERT(same);
    }
}
