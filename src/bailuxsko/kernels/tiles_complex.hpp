#pragma once

#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cstddef>

/// The tiles of complex products, real and imaginary parts in arrays of their own. A term is
/// (re re - im im) + i (re im + im re), each product and each sum rounded, as in the plain loops.
namespace native::tiles {

/// A complex tile is two vectors high and two columns wide: eight vectors of sums, four of the left factor, two
/// elements of the right one and two products fit the sixteen registers.
inline constexpr std::size_t complex_tile_cols = 2;

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

/// The real and the imaginary rows of a strip stand behind each other at every step.
template <Update update, class Vector>
[[gnu::always_inline]] inline void pack_complex_rows(Parts A, std::size_t lda, std::size_t row, std::size_t end,
                                                     std::size_t depth, double* packed)
{
    constexpr std::size_t height = tile_rows<Vector>;
    for (; row < end; row += height)
        for (std::size_t k = 0; k < depth; ++k, packed += 2 * height) {
            const std::size_t from = (update == Update::subtract_descending ? depth - 1 - k : k) * lda;
            if (row + height <= end) {
                __builtin_memcpy(packed, A.m_re + from + row, height * sizeof(double));
                __builtin_memcpy(packed + height, A.m_im + from + row, height * sizeof(double));
                continue;
            }
            for (std::size_t r = 0; r < height; ++r) {
                const std::size_t i = std::min(row + r, end - 1);
                packed[r] = A.m_re[from + i];
                packed[height + r] = A.m_im[from + i];
            }
        }
}

/// A tile's columns of B, from the element of the first term on, and of C, from its first row on.
struct ComplexColumns {
    Parts m_b[complex_tile_cols];
    WritableParts m_c[complex_tile_cols];
};

template <Update update, class Vector>
[[gnu::always_inline]] inline void complex_tile(const double* strip, std::size_t depth, const ComplexColumns& columns,
                                                std::size_t rows, std::size_t cols, bool begin)
{
    Vector re[complex_tile_cols][2] = {};
    Vector im[complex_tile_cols][2] = {};
    if (!begin)
        for (std::size_t j = 0; j < complex_tile_cols; ++j) {
            load_rows(re[j], columns.m_c[j].m_re, rows);
            load_rows(im[j], columns.m_c[j].m_im, rows);
        }
    const Parts b0 = columns.m_b[0];
    const Parts b1 = columns.m_b[1];
    std::ptrdiff_t from = 0;
    for (std::size_t k = 0; k < depth; ++k, from += stride_of_terms<update>, strip += 2 * tile_rows<Vector>) {
        Vector a_re[2];
        Vector a_im[2];
        load(a_re, strip);
        load(a_im, strip + tile_rows<Vector>);
        const double b_re[complex_tile_cols] = {b0.m_re[from], b1.m_re[from]};
        const double b_im[complex_tile_cols] = {b0.m_im[from], b1.m_im[from]};
#pragma GCC unroll 2
        for (std::size_t j = 0; j < complex_tile_cols; ++j)
#pragma GCC unroll 2
            for (std::size_t v = 0; v < 2; ++v) {
                const Vector term_re = a_re[v] * b_re[j] - a_im[v] * b_im[j];
                const Vector term_im = a_re[v] * b_im[j] + a_im[v] * b_re[j];
                if constexpr (update == Update::product) {
                    re[j][v] += term_re;
                    im[j][v] += term_im;
                } else {
                    re[j][v] -= term_re;
                    im[j][v] -= term_im;
                }
            }
    }
    for (std::size_t j = 0; j < complex_tile_cols; ++j)
        if (j < cols) {
            store_rows(re[j], columns.m_c[j].m_re, rows);
            store_rows(im[j], columns.m_c[j].m_im, rows);
        }
}

/// Rows `first` to `end` - 1 of C from the same rows of A, as rows_of_product does it for real ones.
/// @param work  room for complex_workspace(end - first, depth) doubles
template <Update update, class Vector, class ColumnOfB, class ColumnOfC>
[[gnu::always_inline]] inline void rows_of_complex_product(Parts A, std::size_t lda, std::size_t first, std::size_t end,
                                                           std::size_t cols, std::size_t depth, ColumnOfB b,
                                                           ColumnOfC c, double* work)
{
    constexpr std::size_t height = tile_rows<Vector>;
    for (std::size_t done = 0; done < depth; done += depth_at_once) {
        const std::size_t terms = std::min(depth_at_once, depth - done);
        const std::size_t from = update == Update::subtract_descending ? depth - done - terms : done;
        const std::size_t first_term = update == Update::subtract_descending ? from + terms - 1 : from;
        for (std::size_t i = first; i < end; i += rows_at_once) {
            const std::size_t stop = std::min(i + rows_at_once, end);
            pack_complex_rows<update, Vector>({A.m_re + from * lda, A.m_im + from * lda}, lda, i, stop, terms, work);
            for (std::size_t j = 0; j < cols; j += complex_tile_cols) {
                ComplexColumns columns;
                for (std::size_t k = 0; k < complex_tile_cols; ++k) {
                    const std::size_t column = std::min(j + k, cols - 1);
                    const Parts right = b(column);
                    const WritableParts to = c(column);
                    columns.m_b[k] = {right.m_re + first_term, right.m_im + first_term};
                    columns.m_c[k] = {to.m_re + i, to.m_im + i};
                }
                const double* strip = work;
                for (std::size_t row = i; row < stop; row += height, strip += 2 * height * terms) {
                    complex_tile<update, Vector>(strip, terms, columns, std::min(height, stop - row),
                                                 std::min(complex_tile_cols, cols - j),
                                                 update == Update::product && done == 0);
                    for (WritableParts& to : columns.m_c)
                        to = {to.m_re + height, to.m_im + height};
                }
            }
        }
    }
}

} // namespace native::tiles
