#pragma once

#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cstddef>

/// The tiles of complex products, real and imaginary parts in arrays of their own. A term is
/// (re re - im im) + i (re im + im re), each product and each sum rounded, as in the plain loops.
namespace native::tiles {

/// A complex tile is two vectors high: four vectors of the left factor and for each column four of sums, two elements
/// of the right one and two products fit the registers.
template <class Vector>
inline constexpr std::size_t complex_tile_rows = 2 * width<Vector>;
template <class Vector>
inline constexpr std::size_t complex_tile_cols = width<Vector> == width<Eight> ? 4 : 2;
inline constexpr std::size_t most_complex_tile_cols = complex_tile_cols<Eight>;

constexpr std::size_t complex_workspace(std::size_t rows, std::size_t depth)
{
    return 2 * workspace(rows, depth);
}

/// A real and an imaginary part.
struct Parts {
    const double* m_re;
    const double* m_im;
};
struct WritableParts {
    double* m_re;
    double* m_im;
};

/// A tile's columns of B, from the element of the first term on, and of C, from its first row on.
struct ComplexColumns {
    Parts m_b[most_complex_tile_cols];
    WritableParts m_c[most_complex_tile_cols];
};

/// A tile, or a part of one that is `vectors` high and `columns` wide.
template <Update update, class Vector, std::size_t vectors, std::size_t columns>
[[gnu::always_inline]] inline void part_of_complex_tile(Strip strip_re, Strip strip_im, std::size_t depth,
                                                        const ComplexColumns& at, std::size_t rows, std::size_t cols,
                                                        bool begin)
{
    Vector re[columns][vectors];
    Vector im[columns][vectors];
#pragma GCC unroll 4
    for (std::size_t j = 0; j < columns; ++j) {
        if (!begin) {
            load_rows(re[j], at.m_c[j].m_re, rows);
            load_rows(im[j], at.m_c[j].m_im, rows);
            continue;
        }
#pragma GCC unroll 2
        for (std::size_t v = 0; v < vectors; ++v)
            re[j][v] = im[j][v] = Vector{};
    }
    Parts b[columns];
    for (std::size_t j = 0; j < columns; ++j)
        b[j] = at.m_b[j];
    std::ptrdiff_t term = 0;
    for (std::size_t k = 0; k < depth; ++k, term += stride_of_terms<update>) {
        Vector a_re[vectors];
        Vector a_im[vectors];
        load(a_re, strip_re.m_rows);
        load(a_im, strip_im.m_rows);
        strip_re.m_rows += strip_re.m_step;
        strip_im.m_rows += strip_im.m_step;
#pragma GCC unroll 4
        for (std::size_t j = 0; j < columns; ++j) {
            const double b_re = b[j].m_re[term];
            const double b_im = b[j].m_im[term];
#pragma GCC unroll 2
            for (std::size_t v = 0; v < vectors; ++v) {
                const Vector term_re = a_re[v] * b_re - a_im[v] * b_im;
                const Vector term_im = a_re[v] * b_im + a_im[v] * b_re;
                if constexpr (update == Update::product) {
                    re[j][v] += term_re;
                    im[j][v] += term_im;
                } else {
                    re[j][v] -= term_re;
                    im[j][v] -= term_im;
                }
            }
        }
    }
#pragma GCC unroll 4
    for (std::size_t j = 0; j < columns; ++j)
        if (j < cols) {
            store_rows(re[j], at.m_c[j].m_re, rows);
            store_rows(im[j], at.m_c[j].m_im, rows);
        }
}

/// One tile of rows by cols elements that takes `depth` terms; where half of it would only repeat the other, that is
/// left out. `begin` says that its sums start at 0.0.
template <Update update, class Vector>
[[gnu::always_inline]] inline void complex_tile(Strip strip_re, Strip strip_im, std::size_t depth,
                                                const ComplexColumns& at, std::size_t rows, std::size_t cols,
                                                bool begin)
{
    constexpr std::size_t all = complex_tile_cols<Vector>;
    constexpr std::size_t few = 2;
    if (rows > width<Vector> && cols > few)
        part_of_complex_tile<update, Vector, 2, all>(strip_re, strip_im, depth, at, rows, cols, begin);
    else if (rows > width<Vector>)
        part_of_complex_tile<update, Vector, 2, few>(strip_re, strip_im, depth, at, rows, cols, begin);
    else
        part_of_complex_tile<update, Vector, 1, all>(strip_re, strip_im, depth, at, rows, cols, begin);
}

/// Rows `first` to `end` - 1 of C from the same rows of A, as rows_of_product does it for real ones.
/// @param work  room for complex_workspace(end - first, depth) doubles
template <Update update, class Vector, class ColumnOfB, class ColumnOfC>
[[gnu::always_inline]] inline void rows_of_complex_product(Parts A, std::size_t lda, std::size_t first, std::size_t end,
                                                           std::size_t cols, std::size_t depth, ColumnOfB b,
                                                           ColumnOfC c, double* work)
{
    constexpr std::size_t height = complex_tile_rows<Vector>;
    constexpr std::size_t columns_at_once = complex_tile_cols<Vector>;
    const std::ptrdiff_t step = stride_of_terms<update> * static_cast<std::ptrdiff_t>(lda);
    const bool packs = cols > columns_without_packing;
    double* const work_im = work + workspace(end - first, depth);
    for_each_block<update>(
        first, end, depth, [&](Block block) __attribute__((always_inline)) {
            const std::size_t at = block.m_first_term * lda + block.m_row;
            const Strips<Vector, height> re({A.m_re + at, step}, block.m_rows, block.m_terms, packs, work);
            const Strips<Vector, height> im({A.m_im + at, step}, block.m_rows, block.m_terms, packs, work_im);
            for (std::size_t j = 0; j < cols; j += columns_at_once) {
                ComplexColumns columns;
                for (std::size_t k = 0; k < columns_at_once; ++k) {
                    const std::size_t column = std::min(j + k, cols - 1);
                    const Parts right = b(column);
                    const WritableParts to = c(column);
                    columns.m_b[k] = {right.m_re + block.m_first_term, right.m_im + block.m_first_term};
                    columns.m_c[k] = {to.m_re + block.m_row, to.m_im + block.m_row};
                }
                for (std::size_t row = 0; row < block.m_rows; row += height) {
                    complex_tile<update, Vector>(re.from(row), im.from(row), block.m_terms, columns, re.rows_from(row),
                                                 std::min(columns_at_once, cols - j), block.m_begins);
                    for (WritableParts& to : columns.m_c)
                        to = {to.m_re + height, to.m_im + height};
                }
            }
        });
}

} // namespace native::tiles
