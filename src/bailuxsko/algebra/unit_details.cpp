#include "bailuxsko/algebra/unit_details.hpp"

#include "bailuxhost/matdim.hpp"

#include <algorithm>
#include <optional>

namespace Efi {

namespace {

std::string named(const Qud::Dim& unit)
{
    return unit == Qud::Dim::identity ? "no unit" : "unit " + unit.text();
}

} // namespace

std::string pattern_detail(const Qud::MatVal& M)
{
    const std::optional<Qud::PatternBreak> found = Qud::first_break(M);
    return found ? found->text() : std::string();
}

std::string inner_detail(std::span<const Qud::Dim> left, const char* left_name, std::span<const Qud::Dim> right,
                         const char* right_name)
{
    const std::size_t count = std::min(left.size(), right.size());
    const auto pair = [&](std::size_t k) {
        const std::string number = std::to_string(k + 1);
        return std::string(left_name) + ' ' + number + " times " + right_name + ' ' + number;
    };
    for (std::size_t k = 1; k < count; ++k) {
        const Qud::Dim first = Qud::Dim::Mult(left[0], right[0]);
        const Qud::Dim unit = Qud::Dim::Mult(left[k], right[k]);
        if (unit != first)
            return pair(k) + " has " + named(unit) + ", " + pair(0) + " has " + named(first);
    }
    return {};
}

} // namespace Efi
