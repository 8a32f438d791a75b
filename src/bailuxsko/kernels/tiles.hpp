#pragma once

#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cstddef>

/// Blocks of matrix products with every element's operations in the order of the plain loops (Goto and van de Geijn,
/// Anatomy of high-performance matrix multiplication, ACM TOMS 34, 2008): strips of rows of the left factor, packed so
/// that they stay in the second cache where that pays, meet a few columns of the right one at a time, and the elements
/// of a tile stay in registers while they take their terms. Rows and columns beyond the edge repeat the last real ones
/// and are not stored: zeros there would raise flags that the matrices do not (0 times infinity).
namespace native::tiles {

using side_by_side::Eight;
using side_by_side::Four;
using side_by_side::load;
using side_by_side::store;
using side_by_side::Two;

template <class Vector>
inline constexpr std::size_t width = sizeof(Vector) / sizeof(double);

/// A tile's sums, a step's rows of the left factor, an element of the right one and a product fit the registers:
/// sixteen of them, or the thirty-two that come with the widest vectors.
template <class Vector>
inline constexpr std::size_t tile_vectors = width<Vector> == width<Eight> ? 3 : 2;
template <class Vector>
inline constexpr std::size_t tile_rows = width<Vector>* tile_vectors<Vector>;
template <class Vector>
inline constexpr std::size_t tile_cols = width<Vector> == width<Eight> ? 8 : 6;
inline constexpr std::size_t most_tile_rows = tile_rows<Eight>;
inline constexpr std::size_t most_tile_cols = tile_cols<Eight>;

/// The rows that a tile of so many real ones works on: whole vectors.
template <class Vector>
constexpr std::size_t padded_rows(std::size_t rows)
{
    return (rows + width<Vector> - 1) / width<Vector> * width<Vector>;
}

inline constexpr std::size_t depth_at_once = 160; ///< so deep, a tile's rows and columns stay in the first cache
inline constexpr std::size_t rows_at_once = 192;  ///< so many packed rows of that depth stay in the second one

/// For so few columns the left factor is read where it stands: packing it would cost more than it saves.
inline constexpr std::size_t columns_without_packing = 64;

/// The doubles that a product of so many rows and such a depth needs to pack its left factor into.
constexpr std::size_t workspace(std::size_t rows, std::size_t depth)
{
    return (std::min(rows, rows_at_once) + most_tile_rows) * std::min(depth, depth_at_once);
}

enum class Update {
    product,            ///< C = 0.0 + A * B, k ascending
    subtract,           ///< C = C - A * B, k ascending
    subtract_descending ///< C = C - A * B, k descending
};

/// How far the element of B for the next term lies from that for this one.
template <Update update>
inline constexpr std::ptrdiff_t stride_of_terms = update == Update::subtract_descending ? -1 : 1;

/// A tile's rows of the left factor: those for the first term, and how far those for the next one lie behind them.
struct Strip {
    const double* m_rows;
    std::ptrdiff_t m_step;
};

/// Some rows of the left factor as strips of up to `height` rows, each whole vectors high.
template <class Vector, std::size_t height>
class Strips {
public:
    /// @param rows   the first of `count` rows, for `depth` terms
    /// @param packs  whether strips are packed; one that ends inside of a vector always is
    /// @param work   room for the rows, filled up to whole vectors
    [[gnu::always_inline]] Strips(Strip rows, std::size_t count, std::size_t depth, bool packs, double* work)
        : m_rows(rows), m_count(count), m_depth(depth), m_packs(packs), m_work(work)
    {
        for (std::size_t row = 0; row < count; row += height)
            if (is_packed(row))
                pack(row, work + row * depth);
    }

    /// The number of real rows in the strip that begins with this one.
    [[gnu::always_inline]] std::size_t rows_from(std::size_t row) const { return std::min(height, m_count - row); }
    [[gnu::always_inline]] Strip from(std::size_t row) const
    {
        if (is_packed(row))
            return {m_work + row * m_depth, static_cast<std::ptrdiff_t>(padded_rows<Vector>(rows_from(row)))};
        return {m_rows.m_rows + row, m_rows.m_step};
    }

private:
    [[gnu::always_inline]] bool is_packed(std::size_t row) const
    {
        return m_packs || rows_from(row) != padded_rows<Vector>(rows_from(row));
    }

    /// The rows of one term behind those of the other; the last row is repeated.
    [[gnu::always_inline]] void pack(std::size_t row, double* to) const
    {
        const std::size_t rows = rows_from(row);
        const double* from = m_rows.m_rows + row;
        if (rows == height) {
            for (std::size_t k = 0; k < m_depth; ++k, from += m_rows.m_step, to += height)
                __builtin_memcpy(to, from, height * sizeof(double));
            return;
        }
        const std::size_t padded = padded_rows<Vector>(rows);
        for (std::size_t k = 0; k < m_depth; ++k, from += m_rows.m_step, to += padded)
            for (std::size_t r = 0; r < padded; ++r)
                to[r] = from[std::min(r, rows - 1)];
    }

    Strip m_rows;
    std::size_t m_count;
    std::size_t m_depth;
    bool m_packs;
    double* m_work;
};

/// A tile's columns of B, from the element of the first term on, and of C, from its first row on.
struct Columns {
    const double* m_b[most_tile_cols];
    double* m_c[most_tile_cols];
};

/// The rows of a tile's column; beyond the edge, which only the last vector can reach, the last one is repeated.
template <class Vector, std::size_t vectors>
[[gnu::always_inline]] inline void load_rows(Vector (&to)[vectors], const double* from, std::size_t rows)
{
    constexpr std::size_t w = width<Vector>;
    constexpr std::size_t last = vectors - 1;
    for (std::size_t v = 0; v < last; ++v)
        load(to[v], from + v * w);
    if (rows == vectors * w) {
        load(to[last], from + last * w);
        return;
    }
    double padded[w];
    for (std::size_t r = 0; r < w; ++r)
        padded[r] = from[std::min(last * w + r, rows - 1)];
    load(to[last], padded);
}

template <class Vector, std::size_t vectors>
[[gnu::always_inline]] inline void store_rows(const Vector (&from)[vectors], double* to, std::size_t rows)
{
    constexpr std::size_t w = width<Vector>;
    constexpr std::size_t last = vectors - 1;
    for (std::size_t v = 0; v < last; ++v)
        store(from[v], to + v * w);
    if (rows == vectors * w) {
        store(from[last], to + last * w);
        return;
    }
    double padded[w];
    store(from[last], padded);
    for (std::size_t r = 0; r < w; ++r)
        if (last * w + r < rows)
            to[last * w + r] = padded[r];
}

/// A tile, or a part of one that is `vectors` high and `columns` wide.
template <Update update, class Vector, std::size_t vectors, std::size_t columns>
[[gnu::always_inline]] inline void part_of_tile(Strip strip, std::size_t depth, const Columns& at, std::size_t rows,
                                                std::size_t cols, bool begin)
{
    Vector sum[columns][vectors];
#pragma GCC unroll 8
    for (std::size_t j = 0; j < columns; ++j) {
        if (!begin) {
            load_rows(sum[j], at.m_c[j], rows);
            continue;
        }
#pragma GCC unroll 3
        for (std::size_t v = 0; v < vectors; ++v)
            sum[j][v] = Vector{};
    }
    const double* from[columns];
    for (std::size_t j = 0; j < columns; ++j)
        from[j] = at.m_b[j];
    std::ptrdiff_t term = 0;
    for (std::size_t k = 0; k < depth; ++k, term += stride_of_terms<update>, strip.m_rows += strip.m_step) {
        Vector a[vectors];
        load(a, strip.m_rows);
#pragma GCC unroll 8
        for (std::size_t j = 0; j < columns; ++j) {
            const double b = from[j][term];
#pragma GCC unroll 3
            for (std::size_t v = 0; v < vectors; ++v) {
                if constexpr (update == Update::product)
                    sum[j][v] += a[v] * b;
                else
                    sum[j][v] -= a[v] * b;
            }
        }
    }
#pragma GCC unroll 8
    for (std::size_t j = 0; j < columns; ++j)
        if (j < cols)
            store_rows(sum[j], at.m_c[j], rows);
}

/// Where some of a tile's columns would only repeat others, they are left out.
template <Update update, class Vector, std::size_t vectors>
[[gnu::always_inline]] inline void columns_of_tile(Strip strip, std::size_t depth, const Columns& at, std::size_t rows,
                                                   std::size_t cols, bool begin)
{
    if (cols > 4)
        part_of_tile<update, Vector, vectors, tile_cols<Vector>>(strip, depth, at, rows, cols, begin);
    else if (cols > 2)
        part_of_tile<update, Vector, vectors, 4>(strip, depth, at, rows, cols, begin);
    else
        part_of_tile<update, Vector, vectors, 2>(strip, depth, at, rows, cols, begin);
}

/// One tile of rows by cols elements that takes `depth` terms. `begin` says that its sums start at 0.0.
/// @param strip  padded_rows(rows) of the left factor for every term
template <Update update, class Vector>
[[gnu::always_inline]] inline void tile(Strip strip, std::size_t depth, const Columns& at, std::size_t rows,
                                        std::size_t cols, bool begin)
{
    constexpr std::size_t most = tile_vectors<Vector>;
    if (most > 2 && rows > 2 * width<Vector>)
        columns_of_tile<update, Vector, most>(strip, depth, at, rows, cols, begin);
    else if (rows > width<Vector>)
        columns_of_tile<update, Vector, 2>(strip, depth, at, rows, cols, begin);
    else
        columns_of_tile<update, Vector, 1>(strip, depth, at, rows, cols, begin);
}

/// Some terms of a product, for some rows of it.
struct Block {
    std::size_t m_first_term;
    std::size_t m_terms;
    std::size_t m_row;
    std::size_t m_rows;
    bool m_begins; ///< no terms have gone before, and the sums start at 0.0
};

/// Visits rows `first` to `end` - 1 of a product, with the terms in the order of the update and evenly deep blocks.
template <Update update, class Visit>
[[gnu::always_inline]] inline void for_each_block(std::size_t first, std::size_t end, std::size_t depth, Visit visit)
{
    const std::size_t steps = (depth + depth_at_once - 1) / depth_at_once;
    for (std::size_t step = 0; step < steps; ++step) {
        const std::size_t done = depth * step / steps;
        const std::size_t terms = depth * (step + 1) / steps - done;
        for (std::size_t row = first; row < end; row += rows_at_once)
            visit(Block{.m_first_term = update == Update::subtract_descending ? depth - 1 - done : done,
                        .m_terms = terms,
                        .m_row = row,
                        .m_rows = std::min(rows_at_once, end - row),
                        .m_begins = update == Update::product && done == 0});
    }
}

/// Rows `first` to `end` - 1 of C from the same rows of A; column j of B and of C stands where b(j) and c(j) point.
/// @param work  room for workspace(end - first, depth) doubles
template <Update update, class Vector, class ColumnOfB, class ColumnOfC>
[[gnu::always_inline]] inline void rows_of_product(const double* A, std::size_t lda, std::size_t first, std::size_t end,
                                                   std::size_t cols, std::size_t depth, ColumnOfB b, ColumnOfC c,
                                                   double* work)
{
    constexpr std::size_t height = tile_rows<Vector>;
    constexpr std::size_t columns_at_once = tile_cols<Vector>;
    const std::ptrdiff_t step = stride_of_terms<update> * static_cast<std::ptrdiff_t>(lda);
    for_each_block<update>(
        first, end, depth, [&](Block block) __attribute__((always_inline)) {
            const Strips<Vector, height> strips({A + block.m_first_term * lda + block.m_row, step}, block.m_rows,
                                                block.m_terms, cols > columns_without_packing, work);
            for (std::size_t j = 0; j < cols; j += columns_at_once) {
                Columns columns;
                for (std::size_t k = 0; k < columns_at_once; ++k) {
                    const std::size_t column = std::min(j + k, cols - 1);
                    columns.m_b[k] = b(column) + block.m_first_term;
                    columns.m_c[k] = c(column) + block.m_row;
                }
                for (std::size_t row = 0; row < block.m_rows; row += height) {
                    tile<update, Vector>(strips.from(row), block.m_terms, columns, strips.rows_from(row),
                                         std::min(columns_at_once, cols - j), block.m_begins);
                    for (double*& to : columns.m_c)
                        to += height;
                }
            }
        });
}

} // namespace native::tiles
