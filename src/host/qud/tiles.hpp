#pragma once

#include <algorithm>
#include <cstddef>

namespace Qud {

/// destination(j, i) = source(i, j) for a column-major source of rows by cols with leading dimension anr; the
/// destination is packed. Tile by tile, so that both sides stay in the cache.
template <class T>
void transpose_tiles(const T* source, std::size_t anr, T* destination, std::size_t rows, std::size_t cols)
{
    constexpr std::size_t tile = 32;
    for (std::size_t j0 = 0; j0 < cols; j0 += tile) {
        const std::size_t j1 = std::min(j0 + tile, cols);
        for (std::size_t i0 = 0; i0 < rows; i0 += tile) {
            const std::size_t i1 = std::min(i0 + tile, rows);
            for (std::size_t i = i0; i < i1; ++i)
                for (std::size_t j = j0; j < j1; ++j)
                    destination[i * cols + j] = source[j * anr + i];
        }
    }
}

} // namespace Qud
