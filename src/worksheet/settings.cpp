#include "worksheet/session.hpp"
#include "worksheet/syntax/number_text.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>

namespace worksheet {

namespace {

constexpr std::array<std::string_view, 4> setting_names{"origin", "tol", "strict_singularity_checking",
                                                        "zero_over_zero_is_zero"};

/// A number with an optional sign, `inf` or `NaN`, and nothing else.
std::optional<double> read_signed_number(std::string_view text)
{
    const bool negative = text.starts_with('-');
    if (negative) {
        text.remove_prefix(1);
        text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    }
    double value = 0.0;
    if (text == "inf") {
        value = std::numeric_limits<double>::infinity();
    } else if (text == "NaN") {
        value = std::numeric_limits<double>::quiet_NaN();
    } else {
        const ReadNumber read = read_number(text);
        if (read.length == 0 || read.length != text.size())
            return std::nullopt;
        value = read.value;
    }
    return negative ? -value : value;
}

std::string set_origin(Qud::Origin& origin, std::string_view value)
{
    const std::optional<double> number = read_signed_number(value);
    const bool fits = number && std::trunc(*number) == *number && *number >= std::numeric_limits<std::int32_t>::min() &&
                      *number <= std::numeric_limits<std::int32_t>::max();
    if (!fits)
        return "origin is a whole number that fits 32 bits";
    origin.value = static_cast<std::int32_t>(*number);
    return {};
}

std::string set_switch(bool& option, std::string_view name, std::string_view value)
{
    if (value != "on" && value != "off")
        return fmt::format("{} is on or off", name);
    option = value == "on";
    return {};
}

} // namespace

bool is_setting(std::string_view name)
{
    return std::find(setting_names.begin(), setting_names.end(), name) != setting_names.end();
}

std::string apply_setting(SheetSettings& settings, std::string_view name, std::string_view value)
{
    if (name == "origin")
        return set_origin(settings.origin, value);
    if (name == "strict_singularity_checking")
        return set_switch(settings.strict_singularity_checking, name, value);
    if (name == "zero_over_zero_is_zero")
        return set_switch(settings.zero_over_zero_is_zero, name, value);
    if (name != "tol")
        return fmt::format("there is no setting {}; there are {}", name, fmt::join(setting_names, ", "));
    const std::optional<double> number = read_signed_number(value);
    if (!number)
        return "tol is a number";
    settings.tol.value = *number;
    return {};
}

} // namespace worksheet
