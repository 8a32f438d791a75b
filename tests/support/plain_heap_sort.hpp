#pragma once

#include <cstdint>
#include <functional>
#include <iterator>
#include <limits>
#include <vector>

namespace support {

/// Whether key a may stand before key b.
using MayPrecede = std::function<bool(double, double)>;

inline bool ascends(double a, double b)
{
    return a <= b;
}
inline bool descends(double a, double b)
{
    return a >= b;
}

/// The index heap sort step by step, as one would do it on paper: the tie order of every sort is held against it.
inline std::vector<std::uint32_t> plain_heap_sort(const std::vector<double>& key, const MayPrecede& may_precede)
{
    const int n = static_cast<int>(key.size());
    std::vector<int> p;
    for (int i = 0; i < n; ++i)
        p.push_back(i);
    const auto at = [&](int i) -> int& { return p[static_cast<std::size_t>(i)]; };
    const auto key_of = [&](int item) { return key[static_cast<std::size_t>(item)]; };
    int l = n / 2;
    int r = n - 1;
    while (n >= 2) {
        int t = 0;
        if (l > 0) {
            l = l - 1;
            t = at(l);
        } else {
            t = at(r);
            at(r) = at(0);
            r = r - 1;
            if (r == 0) {
                at(0) = t;
                break;
            }
        }
        int i = l;
        int j = 2 * l + 1;
        while (j <= r) {
            if (j < r && may_precede(key_of(at(j)), key_of(at(j + 1))))
                j = j + 1;
            if (!may_precede(key_of(t), key_of(at(j))))
                break;
            at(i) = at(j);
            i = j;
            j = 2 * j + 1;
        }
        at(i) = t;
    }
    return {p.begin(), p.end()};
}

/// Every vector of `count` keys drawn from these, handed to `look`: ties, both zeros and NaN among them.
template <class Look>
void for_all_keys(std::size_t count, const Look& look)
{
    static const double values[] = {-1.0, -0.0, 0.0, 1.0, 2.0, std::numeric_limits<double>::quiet_NaN()};
    std::vector<std::size_t> digits(count, 0);
    std::vector<double> keys(count, values[0]);
    for (;;) {
        look(keys);
        std::size_t place = 0;
        while (place < count && ++digits[place] == std::size(values)) {
            digits[place] = 0;
            keys[place++] = values[0];
        }
        if (place == count)
            return;
        keys[place] = values[digits[place]];
    }
}

} // namespace support
