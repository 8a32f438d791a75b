#include "bailuxhost/matval.hpp"
#include "bench/compare.hpp"
#include "worksheet/functions.hpp"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

/// read_csv of a file of numbers beside std::from_chars alone over the same bytes in memory.
namespace {

constexpr std::size_t columns = 4;

std::string table(std::size_t rows, double scale, int digits)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> number(-scale, scale);
    std::string content;
    std::array<char, 64> cell{};
    for (std::size_t i = 0; i < rows; ++i)
        for (std::size_t j = 0; j < columns; ++j) {
            std::snprintf(cell.data(), cell.size(), "%.*g%c", digits, number(random), j + 1 < columns ? ',' : '\n');
            content += cell.data();
        }
    return content;
}

std::vector<double> with_from_chars(const std::string& content, std::size_t rows)
{
    std::vector<double> numbers(rows * columns);
    const char* at = content.data();
    for (double& number : numbers)
        at = std::from_chars(at, content.data() + content.size(), number).ptr + 1;
    return numbers;
}

bool agree(const Qud::Handle& value, const std::vector<double>& numbers)
{
    const Qud::MatVal& M = *Qud::matrix_of(value);
    if (M.count() != numbers.size() || M.has_entries())
        return false;
    for (std::size_t i = 0; i < M.Rows(); ++i)
        for (std::size_t j = 0; j < columns; ++j)
            if (M.real(i, j) != numbers[i * columns + j])
                return false;
    return true;
}

void compare(const char* name, std::size_t rows, double scale, int digits)
{
    const std::string content = table(rows, scale, digits);
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("csv_bench_" + std::to_string(std::random_device()()) + ".csv");
    std::ofstream(file, std::ios::binary) << content;
    const std::array arguments{Qud::StrVal::make(file.string())};
    const Evl::FunctionRow& read_csv = *worksheet::find_function("read_csv");
    bench::compare(
        {.name = name, .n = rows, .peer = "std::from_chars alone"},
        [&] { return read_csv.entry(Evl::Settings{}, arguments); }, [&] { return with_from_chars(content, rows); },
        agree);
    std::filesystem::remove(file);
}

} // namespace

int main()
{
    bench::header("read_csv, 4 columns");
    compare("whole numbers", 1'000, 1e4, 3);
    compare("6 digits", 1'000'000, 1e4, 6);
    compare("17 digits", 1'000'000, 1e4, 17);
}
