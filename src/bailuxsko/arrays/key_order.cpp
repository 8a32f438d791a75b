// The permutation of the index heap sort, found faster. Keys that all differ have one order only, so any sort finds it;
// where some are equal, the heap sort itself runs, on the ranks that the other sort has found. With a NaN there is no
// order, and the heap sort of the keys is all there is.
#include "bailuxsko/arrays/key_order.hpp"

#include "bailuxsko/arrays/radix_sort.hpp"
#include "efiutl/index_heap_sort.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

namespace Efi {

namespace {

/// Below it the passes over all digits cost more than comparisons.
constexpr std::size_t smallest_for_radix = 600;

/// Keys without a NaN and their indices, in words that can be sorted: the index stands in the lowest bits, above it as
/// many bits of the key as fit, from the highest in which keys differ. Both zeros are equal: adding 0 makes them the
/// same.
class KeyOrder {
public:
    using Item = std::uint64_t;

    explicit KeyOrder(std::span<const double> keys)
        : m_keys(keys), m_index_bits(static_cast<unsigned>(std::bit_width(keys.size() - 1)))
    {
        std::uint64_t differences = 0;
        for (const double key : keys)
            differences |= ordered_bits(key + 0.0) ^ ordered_bits(keys[0] + 0.0);
        const auto width = static_cast<unsigned>(std::bit_width(differences));
        m_dropped = width + m_index_bits > 64 ? width + m_index_bits - 64 : 0;
    }

    std::uint32_t index(Item item) const
    {
        return static_cast<std::uint32_t>(item & ((std::uint64_t{1} << m_index_bits) - 1));
    }
    bool are_equal(Item a, Item b) const
    {
        return seen(a) == seen(b) && (m_dropped == 0 || whole(index(a)) == whole(index(b)));
    }
    /// Keys in ascending order, equal ones in any; in one of the two arrays.
    std::span<const Item> sort(std::span<Item> items, std::span<Item> room) const
    {
        for (std::uint32_t i = 0; i < items.size(); ++i)
            items[i] = (whole(i) >> m_dropped) << m_index_bits | i;
        if (items.size() >= smallest_for_radix)
            items = radix_sort(items, room, m_index_bits);
        else
            std::sort(items.begin(), items.end());
        if (m_dropped != 0)
            sort_runs(
                items, [this](Item a, Item b) { return seen(a) == seen(b); },
                [this](Item a, Item b) { return whole(index(a)) < whole(index(b)); });
        return items;
    }

private:
    std::uint64_t whole(std::uint32_t i) const { return ordered_bits(m_keys[i] + 0.0); }
    std::uint64_t seen(Item item) const { return item >> m_index_bits; }

    std::span<const double> m_keys;
    unsigned m_index_bits;
    unsigned m_dropped; ///< lowest bits of a key, for which an item has no room
};

/// The rank of a key among the different ones above, its index below.
using Ranked = std::uint64_t;

std::uint64_t rank(Ranked item)
{
    return item >> 32;
}

/// The sift of the index heap sort from i down, with t in its place, in a heap that ends at `last`. It goes down along
/// the larger children to the end and climbs up from there: without a NaN they descend along the way, so that the item
/// ends in the same place, and few have far to climb.
void sift(std::span<Ranked> heap, std::size_t i, std::size_t last, Ranked t)
{
    const std::size_t top = i;
    std::size_t j = 2 * i + 1;
    for (; j < last; j = 2 * i + 1) {
        j += rank(heap[j]) <= rank(heap[j + 1]) ? 1 : 0;
        heap[i] = heap[j];
        i = j;
    }
    if (j == last) {
        heap[i] = heap[j];
        i = j;
    }
    while (i > top) {
        const std::size_t parent = (i - 1) / 2;
        // On the way down every item moved up by one, so that what stood at i is now at its parent.
        if (rank(t) <= rank(heap[parent]))
            break;
        heap[i] = heap[parent];
        i = parent;
    }
    heap[i] = t;
}

void heap_sort(std::span<Ranked> heap)
{
    std::size_t last = heap.size() - 1;
    for (std::size_t l = heap.size() / 2; l-- > 0;)
        sift(heap, l, last, heap[l]);
    for (; last > 0; --last) {
        const Ranked t = std::exchange(heap[last], heap[0]);
        if (last == 1) {
            heap[0] = t;
            return;
        }
        sift(heap, 0, last - 1, t);
    }
}

/// The heap sort of keys with equal ones among them, from the order that they stand in already.
/// @param index   of the key at a place in that order
/// @param equal   whether the key at a place equals the one before it
template <class Index, class Equal>
void order_ranks(std::span<std::uint32_t> p, Index index, Equal equal)
{
    const Scratch<Ranked> heap(p.size());
    std::uint64_t r = 0;
    for (std::size_t place = 0; place < p.size(); ++place) {
        r += place > 0 && !equal(place) ? 1 : 0;
        heap[index(place)] = r << 32 | index(place);
    }
    heap_sort(heap.items());
    for (std::size_t i = 0; i < p.size(); ++i)
        p[i] = static_cast<std::uint32_t>(heap[i]);
}

bool holds_nan(std::span<const double> keys)
{
    return std::any_of(keys.begin(), keys.end(), [](double key) { return std::isnan(key); });
}

} // namespace

void ascending_order(std::span<const double> keys, std::span<std::uint32_t> p)
{
    if (holds_nan(keys)) {
        index_heap_sort(p, [keys](std::uint32_t a, std::uint32_t b) { return keys[a] <= keys[b]; });
        return;
    }
    if (keys.size() < 2) {
        std::iota(p.begin(), p.end(), 0U);
        return;
    }
    const KeyOrder order(keys);
    const Scratch<KeyOrder::Item> items(keys.size());
    const Scratch<KeyOrder::Item> room(keys.size());
    const std::span<const KeyOrder::Item> sorted = order.sort(items.items(), room.items());
    const auto equal = [&](KeyOrder::Item a, KeyOrder::Item b) { return order.are_equal(a, b); };
    if (std::adjacent_find(sorted.begin(), sorted.end(), equal) != sorted.end())
        order_ranks(
            p, [&](std::size_t place) { return order.index(sorted[place]); },
            [&](std::size_t place) { return order.are_equal(sorted[place - 1], sorted[place]); });
    else
        std::transform(sorted.begin(), sorted.end(), p.begin(), [&](KeyOrder::Item item) { return order.index(item); });
}

void ascending_order(const MayPrecede& may_precede, std::span<std::uint32_t> p)
{
    std::vector<std::uint32_t> sorted(p.size());
    std::iota(sorted.begin(), sorted.end(), 0U);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return !may_precede(b, a); });
    const auto equal = [&](std::size_t place) { return may_precede(sorted[place], sorted[place - 1]); };
    for (std::size_t place = 1; place < p.size(); ++place)
        if (equal(place)) {
            order_ranks(
                p, [&](std::size_t k) { return sorted[k]; }, equal);
            return;
        }
    std::copy(sorted.begin(), sorted.end(), p.begin());
}

bool ascending_keys(std::span<const double> keys, std::span<double> sorted)
{
    bool has_plus_zero = false;
    bool has_minus_zero = false;
    bool has_nan = false;
    for (const double key : keys) {
        const auto bits = std::bit_cast<std::uint64_t>(key);
        has_plus_zero |= bits == 0;
        has_minus_zero |= bits == std::uint64_t{1} << 63;
        has_nan |= key != key;
    }
    if (has_nan || (has_plus_zero && has_minus_zero))
        return false;
    if (keys.size() < smallest_for_radix) {
        std::copy(keys.begin(), keys.end(), sorted.begin());
        std::sort(sorted.begin(), sorted.end());
        return true;
    }
    const Scratch<std::uint64_t> items(keys.size());
    const Scratch<std::uint64_t> room(keys.size());
    std::transform(keys.begin(), keys.end(), items.items().begin(), ordered_bits);
    const std::span<const std::uint64_t> found = radix_sort(items.items(), room.items(), 0);
    std::transform(found.begin(), found.end(), sorted.begin(), double_of);
    return true;
}

} // namespace Efi
