#include "bailuxsko/algebra/unit_details.hpp"

#include <cstddef>
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

std::string sum_detail(const Qud::MatDim& a, const Qud::MatDim& b)
{
    const bool columns = a.cols().size() != b.rows().size();
    const std::size_t terms = b.rows().size();
    if (terms == 0 || (columns && a.rows().size() != terms))
        return {};
    const auto unit_of = [&](std::size_t k) { return Qud::Dim::Mult(columns ? a.at(k, 0) : a.at(0, k), b.at(k, 0)); };
    const auto elements = [&](std::size_t k) {
        const std::string number = std::to_string(k + 1);
        return "elements " + (columns ? '(' + number + ", 1)" : "(1, " + number + ')') + " and (" + number + ", 1)";
    };
    const Qud::Dim first = unit_of(0);
    for (std::size_t k = 1; k < terms; ++k)
        if (const Qud::Dim unit = unit_of(k); unit != first)
            return elements(k) + " multiply to " + named(unit) + ", " + elements(0) + " to " + named(first);
    return {};
}

} // namespace Efi
