#include "worksheet/display/number_text.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace worksheet::display {

namespace {

constexpr int significant_digits = 6;
constexpr double in_full_below = 1e9; // from here on an exponent is read faster than the digits are counted
constexpr int smallest_fixed_exponent = -4;

std::string digits(double x, std::chars_format format, int precision)
{
    std::array<char, 64> room{};
    const auto result = std::to_chars(room.data(), room.data() + room.size(), x, format, precision);
    return {room.data(), result.ptr};
}

void drop_trailing_zeros(std::string& text)
{
    if (text.find('.') == std::string::npos)
        return;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.')
        text.pop_back();
}

NumberText cut_at_point(const std::string& text, const std::string& exponent)
{
    const std::size_t point = std::min(text.find('.'), text.size());
    return {.head = text.substr(0, point), .tail = text.substr(point) + exponent};
}

} // namespace

NumberText number_text(double x)
{
    if (std::isnan(x))
        return {.head = "NaN", .tail = {}};
    if (std::isinf(x))
        return {.head = x < 0.0 ? "-inf" : "inf", .tail = {}};
    if (x == 0.0)
        return {.head = "0", .tail = {}};

    // "d.ddddde+xx": rounding comes first, so that 9.9999999 is a 10 and not a 1e1
    const std::string scientific = digits(x, std::chars_format::scientific, significant_digits - 1);
    const std::size_t e = scientific.find('e');
    const int exponent = std::atoi(scientific.c_str() + e + 1);
    if (exponent >= smallest_fixed_exponent && std::abs(x) < in_full_below) {
        std::string fixed = digits(x, std::chars_format::fixed, std::max(0, significant_digits - 1 - exponent));
        drop_trailing_zeros(fixed);
        return cut_at_point(fixed, {});
    }
    std::string mantissa = scientific.substr(0, e);
    drop_trailing_zeros(mantissa);
    std::string power(1, 'e');
    return cut_at_point(mantissa, power.append(std::to_string(exponent)));
}

} // namespace worksheet::display
