#include "bailuxhost/unit_names.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace Qud {

namespace {

/// Whole exponents of the base units.
constexpr Dim dim(int kg, int m, int s, int A = 0, int K = 0, int mol = 0, int cd = 0)
{
    return Dim(std::array{kg * Dim::whole, m * Dim::whole, s * Dim::whole, A * Dim::whole, K * Dim::whole,
                          mol * Dim::whole, cd * Dim::whole});
}

/// Which prefixes a unit takes: f p n u m k M G T always, others by the unit.
enum class Takes : std::uint8_t { usual, usual_and_c_d, usual_and_h };

/// A unit of 10^ten base units that takes prefixes.
struct DecimalUnit {
    std::string_view name;
    int ten;
    Takes takes;
    Dim dim;
};

constexpr auto decimal_units = std::to_array<DecimalUnit>({
    {"g", -3, Takes::usual, dim(1, 0, 0)},
    {"m", 0, Takes::usual_and_c_d, dim(0, 1, 0)},
    {"s", 0, Takes::usual, dim(0, 0, 1)},
    {"A", 0, Takes::usual, dim(0, 0, 0, 1)},
    {"K", 0, Takes::usual, dim(0, 0, 0, 0, 1)},
    {"mol", 0, Takes::usual, dim(0, 0, 0, 0, 0, 1)},
    {"cd", 0, Takes::usual, dim(0, 0, 0, 0, 0, 0, 1)},
    {"N", 0, Takes::usual, dim(1, 1, -2)},
    {"Pa", 0, Takes::usual_and_h, dim(1, -1, -2)},
    {"J", 0, Takes::usual, dim(1, 2, -2)},
    {"W", 0, Takes::usual, dim(1, 2, -3)},
    {"Hz", 0, Takes::usual, dim(0, 0, -1)},
    {"V", 0, Takes::usual, dim(1, 2, -3, -1)},
    {"ohm", 0, Takes::usual, dim(1, 2, -3, -2)},
    {"C", 0, Takes::usual, dim(0, 0, 1, 1)},
    {"F", 0, Takes::usual, dim(-1, -2, 4, 2)},
    {"S", 0, Takes::usual, dim(-1, -2, 3, 2)},
    {"T", 0, Takes::usual, dim(1, 0, -2, -1)},
    {"Wb", 0, Takes::usual, dim(1, 2, -2, -1)},
    {"H", 0, Takes::usual, dim(1, 2, -2, -2)},
    {"rad", 0, Takes::usual, Dim()},
    {"lm", 0, Takes::usual, dim(0, 0, 0, 0, 0, 0, 1)},
    {"lx", 0, Takes::usual, dim(0, -2, 0, 0, 0, 0, 1)},
    {"Bq", 0, Takes::usual, dim(0, 0, -1)},
    {"Gy", 0, Takes::usual, dim(0, 2, -2)},
    {"L", -3, Takes::usual_and_c_d, dim(0, 3, 0)},
    {"bar", 5, Takes::usual, dim(1, -1, -2)},
});

/// A unit without prefixes.
struct PlainUnit {
    std::string_view name;
    double factor;
    Dim dim;
};

constexpr auto plain_units = std::to_array<PlainUnit>({
    {"deg", 0.0174532925199432957692369, Dim()}, // pi / 180
    {"t", 1000.0, dim(1, 0, 0)},
    {"minute", 60.0, dim(0, 0, 1)},
    {"hr", 3600.0, dim(0, 0, 1)},
    {"day", 86400.0, dim(0, 0, 1)},
    {"in", 0.0254, dim(0, 1, 0)},
    {"ft", 0.3048, dim(0, 1, 0)},
    {"yd", 0.9144, dim(0, 1, 0)},
    {"mi", 1609.344, dim(0, 1, 0)},
    {"lb", 0.45359237, dim(1, 0, 0)},
    {"lbf", 4.4482216152605, dim(1, 1, -2)},            // lb times 9.80665 m/s^2
    {"psi", 6894.75729316836133672267, dim(1, -1, -2)}, // lbf/in^2
    {"gal", 0.003785411784, dim(0, 3, 0)},              // 231 in^3
});

struct Prefix {
    std::string_view text;
    int ten;
    Takes only; ///< usual: every decimal unit takes it
};

constexpr auto prefixes = std::to_array<Prefix>({
    {"f", -15, Takes::usual},
    {"p", -12, Takes::usual},
    {"n", -9, Takes::usual},
    {"u", -6, Takes::usual},
    {"\u00B5", -6, Takes::usual}, // the micro sign
    {"\u03BC", -6, Takes::usual}, // the Greek letter, which keyboards give as often
    {"m", -3, Takes::usual},
    {"c", -2, Takes::usual_and_c_d},
    {"d", -1, Takes::usual_and_c_d},
    {"h", 2, Takes::usual_and_h},
    {"k", 3, Takes::usual},
    {"M", 6, Takes::usual},
    {"G", 9, Takes::usual},
    {"T", 12, Takes::usual},
});

constexpr int least_ten = -18; // fg
/// Each read from its own literal: nearest to the exact power, which a product of two would not be.
constexpr auto powers_of_ten =
    std::to_array<double>({1e-18, 1e-17, 1e-16, 1e-15, 1e-14, 1e-13, 1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7,
                           1e-6,  1e-5,  1e-4,  1e-3,  1e-2,  1e-1,  1e0,   1e1,   1e2,   1e3,  1e4,  1e5,
                           1e6,   1e7,   1e8,   1e9,   1e10,  1e11,  1e12,  1e13,  1e14,  1e15, 1e16, 1e17});

double power_of_ten(int ten)
{
    return powers_of_ten[static_cast<std::size_t>(ten - least_ten)];
}

bool takes(const DecimalUnit& unit, const Prefix& prefix)
{
    return prefix.only == Takes::usual || prefix.only == unit.takes;
}

const DecimalUnit* decimal_unit(std::string_view name)
{
    for (const DecimalUnit& unit : decimal_units)
        if (unit.name == name)
            return &unit;
    return nullptr;
}

} // namespace

std::optional<NamedUnit> find_unit(std::string_view name)
{
    if (const DecimalUnit* const unit = decimal_unit(name))
        return NamedUnit{.factor = power_of_ten(unit->ten), .dim = unit->dim};
    for (const PlainUnit& unit : plain_units)
        if (unit.name == name)
            return NamedUnit{.factor = unit.factor, .dim = unit.dim};
    for (const Prefix& prefix : prefixes) {
        if (!name.starts_with(prefix.text))
            continue;
        // No prefix begins another, so there is no second way to take the name apart.
        const DecimalUnit* const unit = decimal_unit(name.substr(prefix.text.size()));
        if (!unit || !takes(*unit, prefix))
            return std::nullopt;
        return NamedUnit{.factor = power_of_ten(unit->ten + prefix.ten), .dim = unit->dim};
    }
    return std::nullopt;
}

std::vector<std::string> unit_names()
{
    std::vector<std::string> names;
    for (const DecimalUnit& unit : decimal_units) {
        names.emplace_back(unit.name);
        for (const Prefix& prefix : prefixes)
            if (takes(unit, prefix) && prefix.text.size() == 1)
                names.push_back(std::string(prefix.text) += unit.name);
    }
    for (const PlainUnit& unit : plain_units)
        names.emplace_back(unit.name);
    return names;
}

} // namespace Qud
