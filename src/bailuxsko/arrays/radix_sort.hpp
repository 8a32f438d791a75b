#pragma once

#include "efiutl/block_pool.hpp"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

namespace Efi {

/// Memory that is written before it is read, from the kept blocks.
template <class T>
class Scratch {
public:
    explicit Scratch(std::size_t count) : m_count(count), m_items(pool_allocator<T>{}.allocate(count)) {}
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { pool_allocator<T>{}.deallocate(m_items, m_count); }

    std::span<T> items() const { return {m_items, m_count}; }
    T& operator[](std::size_t i) const { return m_items[i]; }

private:
    std::size_t m_count;
    T* m_items;
};

/// A whole number for each double that is no NaN, in the same order; -0 comes before 0. Of a negative number all bits
/// are turned, of another one the sign; without a branch, which random signs would mispredict.
inline std::uint64_t ordered_bits(double x)
{
    const auto bits = std::bit_cast<std::int64_t>(x);
    return static_cast<std::uint64_t>(bits ^ (bits >> 63 | std::numeric_limits<std::int64_t>::min()));
}

/// The double of `ordered_bits`.
inline double double_of(std::uint64_t ordered)
{
    const auto bits = static_cast<std::int64_t>(ordered);
    return std::bit_cast<double>(bits ^ (~bits >> 63 | std::numeric_limits<std::int64_t>::min()));
}

/// Puts each run of neighbours that belong together in order by itself.
template <class Together, class Less>
void sort_runs(std::span<std::uint64_t> items, Together together, Less less)
{
    for (std::size_t first = 0; first < items.size();) {
        std::size_t last = first + 1;
        while (last < items.size() && together(items[first], items[last]))
            ++last;
        if (last - first > 1)
            std::sort(&items[first], &items[first] + (last - first), less);
        first = last;
    }
}

/// Sorts whole numbers by their bits from `from` on: by the three highest digits in which they differ, from the lowest
/// of these (Knuth, The Art of Computer Programming, volume 3, section 5.2.5), then by comparison where all three
/// agree.
/// @param room    as many items; the result is in the one of the two that is returned
std::span<std::uint64_t> radix_sort(std::span<std::uint64_t> items, std::span<std::uint64_t> room, unsigned from);

} // namespace Efi
