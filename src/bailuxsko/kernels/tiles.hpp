#pragma once

#include <algorithm>
#include <cstddef>

/// Blocks of matrix products with every element's operations in the order of the plain loops: a strip of 8 rows of the
/// left factor, packed, meets 4 columns of the right one at a time, and the 32 elements stay in registers over all k.
/// Rows and columns beyond the edge repeat the last real ones and are not stored: zeros there would raise flags that
/// the matrices do not (0 times infinity).
namespace native::tiles {

inline constexpr std::size_t tile_rows = 8;
inline constexpr std::size_t tile_cols = 4;

/// Four doubles side by side. Written out, because the vectoriser of GCC 12 fuses what it finds by itself.
using Four [[gnu::vector_size(32), gnu::aligned(8), gnu::may_alias]] = double;

enum class Update {
    product,            ///< C = 0.0 + A * B, k ascending
    subtract,           ///< C = C - A * B, k ascending
    subtract_descending ///< C = C - A * B, k descending
};

/// Rows `row` to `row` + 7 of A in the order in which a tile takes them; the last of `end` rows is repeated.
template <Update update>
[[gnu::always_inline]] inline void pack_strip(const double* A, std::size_t lda, std::size_t row, std::size_t end,
                                              std::size_t depth, double* strip)
{
    for (std::size_t k = 0; k < depth; ++k) {
        const double* const a = A + (update == Update::subtract_descending ? depth - 1 - k : k) * lda;
        for (std::size_t r = 0; r < tile_rows; ++r)
            strip[k * tile_rows + r] = a[std::min(row + r, end - 1)];
    }
}

/// One tile: rows by cols elements of C at c[0] .. c[cols - 1], from `depth` elements of B at b[0] .. b[cols - 1].
template <Update update>
[[gnu::always_inline]] inline void tile(const double* strip, std::size_t depth, const double* const (&b)[tile_cols],
                                        double* const (&c)[tile_cols], std::size_t rows, std::size_t cols)
{
    Four sum[tile_cols][2] = {};
    if constexpr (update != Update::product)
        for (std::size_t j = 0; j < tile_cols; ++j)
            for (std::size_t r = 0; r < tile_rows; ++r)
                sum[j][r / 4][r % 4] = c[j][std::min(r, rows - 1)];
    for (std::size_t k = 0; k < depth; ++k) {
        const Four* const a = reinterpret_cast<const Four*>(strip + k * tile_rows);
        const std::size_t from = update == Update::subtract_descending ? depth - 1 - k : k;
        for (std::size_t j = 0; j < tile_cols; ++j) {
            const double x = b[j][from];
            const Four times = {x, x, x, x};
            if constexpr (update == Update::product) {
                sum[j][0] += a[0] * times;
                sum[j][1] += a[1] * times;
            } else {
                sum[j][0] -= a[0] * times;
                sum[j][1] -= a[1] * times;
            }
        }
    }
    for (std::size_t j = 0; j < cols; ++j)
        for (std::size_t r = 0; r < rows; ++r)
            c[j][r] = sum[j][r / 4][r % 4];
}

/// Rows `first` to `end` - 1 of C from the same rows of A; column j of B and of C stands where b(j) and c(j) point.
/// @param strip  room for 8 * depth doubles
template <Update update, class ColumnOfB, class ColumnOfC>
[[gnu::always_inline]] inline void rows_of_product(const double* A, std::size_t lda, std::size_t first, std::size_t end,
                                                   std::size_t cols, std::size_t depth, ColumnOfB b, ColumnOfC c,
                                                   double* strip)
{
    for (std::size_t i = first; i < end; i += tile_rows) {
        pack_strip<update>(A, lda, i, end, depth, strip);
        for (std::size_t j = 0; j < cols; j += tile_cols) {
            const double* from[tile_cols];
            double* to[tile_cols];
            for (std::size_t k = 0; k < tile_cols; ++k) {
                const std::size_t column = std::min(j + k, cols - 1);
                from[k] = b(column);
                to[k] = c(column) + i;
            }
            tile<update>(strip, depth, from, to, std::min(tile_rows, end - i), std::min(tile_cols, cols - j));
        }
    }
}

} // namespace native::tiles
