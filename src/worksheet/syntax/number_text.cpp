#include "worksheet/syntax/number_text.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace worksheet {

namespace {

constexpr bool is_digit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

/// A number that no double holds is inf when its leading digit stands far left of the point, else 0.
double out_of_range(std::string_view number) noexcept
{
    constexpr long long beyond_any_exponent = 1'000'000'000'000'000;
    const std::size_t e = number.find_first_of("eE");
    const std::string_view mantissa = number.substr(0, e);
    long long exponent = 0;
    if (e != std::string_view::npos) {
        const bool negative = number[e + 1] == '-';
        for (std::size_t i = e + 1; i < number.size(); ++i)
            if (is_digit(number[i]) && exponent < beyond_any_exponent)
                exponent = 10 * exponent + (number[i] - '0');
        exponent = negative ? -exponent : exponent;
    }
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t leading = mantissa.find_first_of("123456789");
    if (leading == std::string_view::npos)
        return 0.0;
    const long long place = static_cast<long long>(point) - static_cast<long long>(leading);
    return exponent + place > 0 ? std::numeric_limits<double>::infinity() : 0.0;
}

} // namespace

ReadNumber read_number(std::string_view text) noexcept
{
    // from_chars alone would also take "inf" and "nan"
    if (text.empty() || !(is_digit(text[0]) || (text[0] == '.' && text.size() > 1 && is_digit(text[1]))))
        return {};
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error == std::errc::result_out_of_range)
        value = out_of_range(text.substr(0, length));
    return {.value = value, .length = length};
}

void append_number(std::string& out, double value)
{
    if (std::isnan(value)) {
        out += "NaN";
        return;
    }
    std::array<char, 32> digits; // the longest shortest form has 24 characters
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    out.append(digits.data(), end);
}

} // namespace worksheet
