#include "bailuxsko/arrays/radix_sort.hpp"

#include <array>
#include <functional>
#include <utility>
#include <vector>

namespace Efi {

namespace {

constexpr unsigned digit_bits = 11;
constexpr unsigned digits = 3;
constexpr std::size_t digit_values = std::size_t{1} << digit_bits;

/// How often each digit occurs, then the place of the next item that has it.
using Counts = std::array<std::uint32_t, digit_values>;

std::size_t digit(std::uint64_t item, unsigned shift)
{
    return (item >> shift) & (digit_values - 1);
}

void to_first_places(Counts& counts)
{
    std::uint32_t place = 0;
    for (std::uint32_t& count : counts)
        place += std::exchange(count, place);
}

void distribute(std::span<const std::uint64_t> items, std::uint64_t* room, Counts& next, unsigned shift)
{
    for (const std::uint64_t item : items)
        room[next[digit(item, shift)]++] = item;
}

} // namespace

std::span<std::uint64_t> radix_sort(std::span<std::uint64_t> items, std::span<std::uint64_t> room, unsigned from)
{
    std::uint64_t differences = 0;
    for (const std::uint64_t item : items)
        differences |= item ^ items[0];
    const auto width = static_cast<unsigned>(std::bit_width(differences >> from));
    const unsigned lowest = from + (width > digits * digit_bits ? width - digits * digit_bits : 0);

    std::vector<Counts, pool_allocator<Counts>> counts(digits);
    const unsigned shifts[digits] = {lowest, lowest + digit_bits, lowest + 2 * digit_bits};
    for (const std::uint64_t item : items)
        for (unsigned d = 0; d < digits; ++d)
            ++counts[d][digit(item, shifts[d])];
    for (unsigned d = 0; d < digits; ++d) {
        if (counts[d][digit(items[0], shifts[d])] == items.size())
            continue; // the same in all items
        to_first_places(counts[d]);
        distribute(items, room.data(), counts[d], shifts[d]);
        std::swap(items, room);
    }
    if (lowest > from)
        sort_runs(
            items, [lowest](std::uint64_t a, std::uint64_t b) { return a >> lowest == b >> lowest; }, std::less{});
    return items;
}

} // namespace Efi
