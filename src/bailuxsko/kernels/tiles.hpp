#pragma once

#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cstddef>

/// Blocks of matrix products with every element's operations in the order of the plain loops (Goto and van de Geijn,
/// Anatomy of high-performance matrix multiplication, ACM TOMS 34, 2008): strips of rows of the left factor, packed so
/// that they stay in the second cache, meet a few columns of the right one at a time, and the elements of a tile stay
/// in registers while they take their terms. Rows and columns beyond the edge repeat the last real ones and are not
/// stored: zeros there would raise flags that the matrices do not (0 times infinity).
namespace native::tiles {

using side_by_side::Eight;
using side_by_side::Four;
using side_by_side::load;
using side_by_side::store;
using side_by_side::Two;

template <class Vector>
inline constexpr std::size_t width = sizeof(Vector) / sizeof(double);

/// A tile is two vectors high and six columns wide: its twelve sums, two vectors of the left factor and an element of
/// the right one fit the sixteen registers that every level has.
template <class Vector>
inline constexpr std::size_t tile_rows = 2 * width<Vector>;
inline constexpr std::size_t tile_cols = 6;
inline constexpr std::size_t most_tile_rows = tile_rows<Eight>;

inline constexpr std::size_t depth_at_once = 256; ///< so deep, six columns stay in the first cache
inline constexpr std::size_t rows_at_once = 128;  ///< so many packed rows of that depth stay in the second one

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

/// Rows `row` to before `end` of `depth` columns of A, strip by strip in the order in which tiles take them; the last
/// strip repeats its last row.
template <Update update, class Vector>
[[gnu::always_inline]] inline void pack_rows(const double* A, std::size_t lda, std::size_t row, std::size_t end,
                                             std::size_t depth, double* packed)
{
    constexpr std::size_t height = tile_rows<Vector>;
    for (; row < end; row += height)
        for (std::size_t k = 0; k < depth; ++k, packed += height) {
            const double* const a = A + (update == Update::subtract_descending ? depth - 1 - k : k) * lda;
            if (row + height <= end)
                __builtin_memcpy(packed, a + row, height * sizeof(double));
            else
                for (std::size_t r = 0; r < height; ++r)
                    packed[r] = a[std::min(row + r, end - 1)];
        }
}

/// A tile's columns of B, from the element of the first term on, and of C, from its first row on.
struct Columns {
    const double* m_b[tile_cols];
    double* m_c[tile_cols];
};

/// The rows of a tile's column; beyond the edge the last one is repeated.
template <class Vector>
[[gnu::always_inline]] inline void load_rows(Vector (&to)[2], const double* from, std::size_t rows)
{
    if (rows == tile_rows<Vector>) {
        load(to, from);
        return;
    }
    double all[tile_rows<Vector>];
    for (std::size_t r = 0; r < tile_rows<Vector>; ++r)
        all[r] = from[std::min(r, rows - 1)];
    load(to, all);
}

template <class Vector>
[[gnu::always_inline]] inline void store_rows(const Vector (&from)[2], double* to, std::size_t rows)
{
    if (rows == tile_rows<Vector>) {
        store(from, to);
        return;
    }
    double all[tile_rows<Vector>];
    store(from, all);
    for (std::size_t r = 0; r < rows; ++r)
        to[r] = all[r];
}

/// A tile, or a part of one that is `vectors` high and `columns` wide.
template <Update update, class Vector, std::size_t vectors, std::size_t columns>
[[gnu::always_inline]] inline void part_of_tile(const double* strip, std::size_t depth, const Columns& at,
                                                std::size_t rows, std::size_t cols, bool begin)
{
    Vector sum[columns][2] = {};
    if (!begin)
        for (std::size_t j = 0; j < columns; ++j)
            load_rows(sum[j], at.m_c[j], rows);
    const double* from[columns];
    for (std::size_t j = 0; j < columns; ++j)
        from[j] = at.m_b[j];
    std::ptrdiff_t term = 0;
    for (std::size_t k = 0; k < depth; ++k, term += stride_of_terms<update>, strip += tile_rows<Vector>) {
        Vector a[2];
        load(a, strip);
#pragma GCC unroll 6
        for (std::size_t j = 0; j < columns; ++j) {
            const double b = from[j][term];
#pragma GCC unroll 2
            for (std::size_t v = 0; v < vectors; ++v) {
                if constexpr (update == Update::product)
                    sum[j][v] += a[v] * b;
                else
                    sum[j][v] -= a[v] * b;
            }
        }
    }
    for (std::size_t j = 0; j < columns; ++j)
        if (j < cols)
            store_rows(sum[j], at.m_c[j], rows);
}

/// One tile of rows by cols elements that takes `depth` terms. `begin` says that its sums start at 0.0. Where half of
/// the rows, or few of the columns, would only repeat others, they are left out.
template <Update update, class Vector>
[[gnu::always_inline]] inline void tile(const double* strip, std::size_t depth, const Columns& at, std::size_t rows,
                                        std::size_t cols, bool begin)
{
    constexpr std::size_t few = 2;
    if (rows > width<Vector> && cols > few)
        part_of_tile<update, Vector, 2, tile_cols>(strip, depth, at, rows, cols, begin);
    else if (rows > width<Vector>)
        part_of_tile<update, Vector, 2, few>(strip, depth, at, rows, cols, begin);
    else
        part_of_tile<update, Vector, 1, tile_cols>(strip, depth, at, rows, cols, begin);
}

/// Rows `first` to `end` - 1 of C from the same rows of A; column j of B and of C stands where b(j) and c(j) point.
/// @param work  room for workspace(end - first, depth) doubles
template <Update update, class Vector, class ColumnOfB, class ColumnOfC>
[[gnu::always_inline]] inline void rows_of_product(const double* A, std::size_t lda, std::size_t first, std::size_t end,
                                                   std::size_t cols, std::size_t depth, ColumnOfB b, ColumnOfC c,
                                                   double* work)
{
    constexpr std::size_t height = tile_rows<Vector>;
    for (std::size_t done = 0; done < depth; done += depth_at_once) {
        const std::size_t terms = std::min(depth_at_once, depth - done);
        const std::size_t from = update == Update::subtract_descending ? depth - done - terms : done;
        const std::size_t first_term = update == Update::subtract_descending ? from + terms - 1 : from;
        for (std::size_t i = first; i < end; i += rows_at_once) {
            const std::size_t stop = std::min(i + rows_at_once, end);
            pack_rows<update, Vector>(A + from * lda, lda, i, stop, terms, work);
            for (std::size_t j = 0; j < cols; j += tile_cols) {
                Columns columns;
                for (std::size_t k = 0; k < tile_cols; ++k) {
                    const std::size_t column = std::min(j + k, cols - 1);
                    columns.m_b[k] = b(column) + first_term;
                    columns.m_c[k] = c(column) + i;
                }
                const double* strip = work;
                for (std::size_t row = i; row < stop; row += height, strip += height * terms) {
                    tile<update, Vector>(strip, terms, columns, std::min(height, stop - row),
                                         std::min(tile_cols, cols - j), update == Update::product && done == 0);
                    for (double*& to : columns.m_c)
                        to += height;
                }
            }
        }
    }
}

} // namespace native::tiles
