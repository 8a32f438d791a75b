#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/lookup/number_tests.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

/// Columns of numbers searched in one go, straight over the host's arrays.
namespace Efi {

/// Indices first to end - 1, counted from 0.
struct IndexRange {
    std::size_t first = 0;
    std::size_t end = 0;
};

/// Neighbours in a column, all of them numbers of the unit that is searched for.
struct NumberRun {
    const double* re;
    const double* im; ///< null where all imaginary parts are 0
    std::size_t count;
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

inline NumberRun numbers_of(const Qud::MatVal& M, std::size_t j, IndexRange rows)
{
    const std::size_t first = M.storage_index(rows.first, j);
    return {.re = M.m_rarr.get() + first,
            .im = M.HasImag() ? M.m_iarr.get() + first : nullptr,
            .count = rows.end - rows.first};
}

inline number_tests::Two two_at(const double* numbers) noexcept
{
    number_tests::Two two;
    std::memcpy(&two, numbers, sizeof two);
    return two;
}

/// How many numbers are tested before anybody looks where the hits are.
inline constexpr std::size_t block = 64;

template <class Test>
bool holds_at(const Test& test, const NumberRun& run, std::size_t k) noexcept
{
    if constexpr (Test::reads_imaginary)
        return test(run.re[k], run.im[k]);
    else
        return test(run.re[k]);
}

/// Whether the test holds for some number of the block at k: no branches, so it runs at the memory's speed.
template <class Test>
bool holds_somewhere(const Test& test, const NumberRun& run, std::size_t k) noexcept
{
    number_tests::TwoWords held{};
    for (std::size_t i = k; i < k + block; i += 2) {
        if constexpr (Test::reads_imaginary)
            held |= test(two_at(run.re + i), two_at(run.im + i));
        else
            held |= test(two_at(run.re + i));
    }
    return (held[0] | held[1]) != 0;
}

/// Calls action(first, offsets) with the places where the test holds, ascending: `first` plus each offset.
template <class Test, class Action>
void for_each_hit_of_run(const NumberRun& run, const Test& test, Action action)
{
    std::array<std::uint8_t, block> offsets;
    for (std::size_t first = 0; first < run.count; first += block) {
        const std::size_t size = std::min(block, run.count - first);
        if (size == block && !holds_somewhere(test, run, first))
            continue;
        // Always written and kept only if the test holds: hits that come and go mislead no branch prediction.
        std::size_t found = 0;
        for (std::size_t k = 0; k < size; ++k) {
            offsets[found] = static_cast<std::uint8_t>(k);
            found += holds_at(test, run, first + k) ? 1 : 0;
        }
        if (found != 0)
            action(first, std::span<const std::uint8_t>(offsets.data(), found));
    }
}

/// The smallest distance of a finite number of the run from the target, if it is below `best`; else `best`.
inline double nearest_distance(const NumberRun& run, double target, double best) noexcept
{
    constexpr std::size_t lanes = 8;
    using number_tests::Two;
    // A NaN is no smaller than what is there, infinities are no smaller than any start.
    const auto closer = [target](Two least, const double* numbers) {
        const Two distance = number_tests::magnitude(two_at(numbers) - target);
        return distance < least ? distance : least;
    };
    std::array<Two, lanes / 2> least;
    least.fill(Two{best, best});
    std::size_t k = 0;
    for (; k + lanes <= run.count; k += lanes)
        for (std::size_t lane = 0; lane < lanes; lane += 2)
            least[lane / 2] = closer(least[lane / 2], run.re + k + lane);
    for (const Two& two : least)
        best = std::min({best, two[0], two[1]});
    for (; k < run.count; ++k)
        best = std::min(best, number_tests::magnitude(run.re[k] - target)); // keeps best beside a NaN
    return best;
}

} // namespace Efi
