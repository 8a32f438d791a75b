#pragma once

#include "bailuxhost/matval.hpp"

#include <algorithm>
#include <cstddef>
#include <span>

/// Where numbers of one unit stand side by side in a column, and where texts and arrays stand between them.
namespace Efi {

/// Indices first to end - 1, counted from 0.
struct IndexRange {
    std::size_t first = 0;
    std::size_t end = 0;
};

/// The texts and nested arrays among the given rows of column j, from top to bottom.
inline std::span<const Qud::Entry> entries_of_column(const Qud::MatVal& M, std::size_t j, IndexRange rows)
{
    if (!M.has_entries())
        return {};
    const auto at = [&](std::size_t i) {
        return std::partition_point(M.entries()->begin(), M.entries()->end(),
                                    [index = M.storage_index(i, j)](const Qud::Entry& e) { return e.index < index; });
    };
    return {at(rows.first), at(rows.end)};
}

/// Calls action(IndexRange) for every longest stretch of the given rows of column j that holds nothing but numbers of
/// the unit, from top to bottom.
template <class Action>
void for_each_run(const Qud::MatVal& M, std::size_t j, IndexRange rows, const Qud::Dim& unit, Action action)
{
    const Qud::Dim* const common = M.number_unit();
    if (common && *common != unit)
        return;
    const auto numbers_between = [&](std::size_t first, std::size_t end) {
        if (common && first < end)
            action(IndexRange{.first = first, .end = end});
        while (!common && first < end) {
            while (first < end && M.unit(first, j) != unit)
                ++first;
            std::size_t next = first;
            while (next < end && M.unit(next, j) == unit)
                ++next;
            if (first < next)
                action(IndexRange{.first = first, .end = next});
            first = next;
        }
    };
    std::size_t first = rows.first;
    for (const Qud::Entry& e : entries_of_column(M, j, rows)) {
        const std::size_t row = e.index - M.storage_index(0, j);
        numbers_between(first, row);
        first = row + 1;
    }
    numbers_between(first, rows.end);
}

} // namespace Efi
