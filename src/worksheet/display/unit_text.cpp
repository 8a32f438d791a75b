#include "worksheet/display/unit_text.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <optional>
#include <string_view>
#include <vector>

namespace worksheet::display {

namespace {

// Wider than the exponents themselves, so that every difference and sign change fits.
using Exponents = std::array<std::int64_t, Qud::Dim::base_count>;

constexpr std::array<std::string_view, Qud::Dim::base_count> base_units = {"kg", "m", "s", "A", "K", "mol", "cd"};
constexpr std::size_t metre = 1;
constexpr std::size_t kelvin = 4;

struct Derived {
    std::string_view name;
    Exponents exponents; // in whole powers of kg m s A K mol cd
    bool takes_factors;  // also shown with powers of metre and kelvin beside it
};

// Of units that share a dimension the one of the commoner quantity stands here: J and not N*m; none for s^-1, which may
// be Hz or Bq, and none for the dimensionless rad.
constexpr std::array<Derived, 12> derived_units = {{
    {"N", {1, 1, -2, 0, 0, 0, 0}, true},
    {"Pa", {1, -1, -2, 0, 0, 0, 0}, false},
    {"J", {1, 2, -2, 0, 0, 0, 0}, false},
    {"W", {1, 2, -3, 0, 0, 0, 0}, true},
    {"V", {1, 2, -3, -1, 0, 0, 0}, true},
    {"ohm", {1, 2, -3, -2, 0, 0, 0}, true},
    {"C", {0, 0, 1, 1, 0, 0, 0}, false},
    {"F", {-1, -2, 4, 2, 0, 0, 0}, false},
    {"S", {-1, -2, 3, 2, 0, 0, 0}, false},
    {"T", {1, 0, -2, -1, 0, 0, 0}, false},
    {"Wb", {1, 2, -2, -1, 0, 0, 0}, false},
    {"H", {1, 2, -2, -2, 0, 0, 0}, false},
}};

std::string power_text(std::string_view name, std::int64_t exponent)
{
    if (exponent == Qud::Dim::whole)
        return std::string(name);
    const std::int64_t divisor = std::gcd(exponent, std::int64_t{Qud::Dim::whole});
    const std::string numerator = std::to_string(exponent / divisor);
    std::string text(name);
    text += '^';
    if (divisor == Qud::Dim::whole)
        return text += numerator;
    return text += '(' + numerator + '/' + std::to_string(Qud::Dim::whole / divisor) + ')';
}

std::string product(const std::vector<std::string>& factors)
{
    std::string text;
    for (const std::string& factor : factors)
        text += (text.empty() ? "" : "*") + factor;
    return text;
}

/// A leading unit (maybe none) times powers of the base units, those below the line behind a slash.
std::string fraction(std::string_view leading, const Exponents& exponents)
{
    std::vector<std::string> above;
    std::vector<std::string> below;
    if (!leading.empty())
        above.emplace_back(leading);
    for (std::size_t k = 0; k < exponents.size(); ++k)
        if (exponents[k] > 0)
            above.push_back(power_text(base_units[k], exponents[k]));
    for (std::size_t k = 0; k < exponents.size(); ++k)
        if (exponents[k] < 0)
            below.push_back(power_text(base_units[k], above.empty() ? exponents[k] : -exponents[k]));
    if (below.empty() || above.empty())
        return product(above.empty() ? below : above);
    return product(above) + '/' + (below.size() == 1 ? below.front() : '(' + product(below) + ')');
}

/// What is left of the exponents once the derived unit is taken out.
Exponents remainder(const Exponents& exponents, const Derived& derived)
{
    Exponents rest{};
    for (std::size_t k = 0; k < rest.size(); ++k)
        rest[k] = exponents[k] - derived.exponents[k] * Qud::Dim::whole;
    return rest;
}

bool only_metre_and_kelvin(const Exponents& exponents)
{
    for (std::size_t k = 0; k < exponents.size(); ++k)
        if (exponents[k] % Qud::Dim::whole != 0 || (exponents[k] != 0 && k != metre && k != kelvin))
            return false;
    return true;
}

} // namespace

std::string unit_text(const Qud::Dim& unit)
{
    if (unit.is_marker())
        return {};
    Exponents exponents{};
    std::copy(unit.exponents().begin(), unit.exponents().end(), exponents.begin());
    for (const Derived& derived : derived_units)
        if (remainder(exponents, derived) == Exponents{})
            return std::string(derived.name);
    for (const Derived& derived : derived_units)
        if (const Exponents rest = remainder(exponents, derived); derived.takes_factors && only_metre_and_kelvin(rest))
            return fraction(derived.name, rest);
    return fraction({}, exponents);
}

} // namespace worksheet::display
