#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>

namespace Efi {

/// Fills p with the permutation of 0 .. n - 1 that orders n items, by heap sort of the indices (Williams, Algorithm
/// 232, CACM 7, 1964; sifting as in Knuth, The Art of Computer Programming, volume 3, section 5.2.3).
/// Ours: the order of equal items is the one that this very procedure leaves, and callers promise it to their users.
/// A comparison that is false both ways (a NaN) takes no step to the right child and ends the sift.
/// @param may_precede   whether item a may stand before item b: key[a] <= key[b] to ascend, key[a] >= key[b] to descend
template <std::predicate<std::uint32_t, std::uint32_t> MayPrecede>
void index_heap_sort(std::span<std::uint32_t> p, MayPrecede may_precede)
{
    std::iota(p.begin(), p.end(), 0U);
    if (p.size() < 2)
        return;
    std::size_t l = p.size() / 2;
    std::size_t r = p.size() - 1;
    for (;;) {
        std::uint32_t t = 0;
        if (l > 0) {
            t = p[--l];
        } else {
            t = p[r];
            p[r] = p[0];
            if (--r == 0) {
                p[0] = t;
                return;
            }
        }
        std::size_t i = l;
        for (std::size_t j = 2 * l + 1; j <= r; j = 2 * j + 1) {
            if (j < r && may_precede(p[j], p[j + 1]))
                ++j; // equal children: the right one
            if (!may_precede(t, p[j]))
                break;
            p[i] = p[j];
            i = j;
        }
        p[i] = t;
    }
}

} // namespace Efi
