// Gaussian elimination by blocks of columns, right-looking (Golub and Van Loan, Matrix Computations, section 3.2.11).
// Ours: a tile of the trailing matrix stays in registers while it takes the block's updates in ascending k, each with a
// rounding after the product and one after the difference, so that every element has the bits of the plain loops.
#include "bailuxsko/kernels/lu_elimination.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

constexpr std::size_t block = 32;      // columns eliminated together
constexpr std::size_t tile_cols = 6;   // columns of a tile
constexpr std::size_t widest_tile = 8; // rows of a tile at the highest level

using Vector2 [[gnu::vector_size(16)]] = double;
using Vector4 [[gnu::vector_size(32)]] = double;

/// As many rows as two vectors hold. The twelve sums of a tile, a vector of multipliers and an element of U fit the
/// sixteen registers of either level.
template <typename Vector>
constexpr std::size_t tile_rows = 2 * sizeof(Vector) / sizeof(double);

/// The block's steps and the columns and rows that they have not reached yet.
struct Block {
    std::size_t m_from;
    std::size_t m_to;

    std::size_t size() const { return m_to - m_from; }
};

/// Carries out the block's exchanges of rows in a column outside the block.
[[gnu::always_inline]] inline void exchange_in_column(const Elimination& E, const Block& B, double* c)
{
    for (std::size_t k = B.m_from; k < B.m_to; ++k)
        std::swap(c[k], c[static_cast<std::size_t>(E.m_pivots[k])]);
}

/// The rows of U that the block gives a column to its right: what its own steps leave of them, in ascending k.
[[gnu::always_inline]] inline void solve_lower(const Elimination& E, const Block& B, double* __restrict c)
{
    for (std::size_t k = B.m_from; k < B.m_to; ++k) {
        const double* const l = E.column(k);
        const double u = c[k];
        for (std::size_t i = k + 1; i < B.m_to; ++i)
            c[i] -= l[i] * u;
    }
}

/// The multipliers below the block, strip by strip of a tile's rows, each strip step by step. Where the last strip is
/// short it repeats the last row: zeros in its place could meet an infinity and raise a flag.
template <typename Vector>
[[gnu::always_inline]] inline void pack_multipliers(const Elimination& E, const Block& B, double* packed)
{
    constexpr std::size_t rows = tile_rows<Vector>;
    for (std::size_t i = B.m_to; i < E.m_n; i += rows)
        for (std::size_t k = B.m_from; k < B.m_to; ++k) {
            const double* const l = E.column(k);
            for (std::size_t r = 0; r < rows; ++r)
                *packed++ = l[std::min(i + r, E.m_n - 1)];
        }
}

/// The block's rows of U in the columns of a tile, step by step; a short tile repeats its last column.
[[gnu::always_inline]] inline void pack_upper(const Elimination& E, const Block& B, std::size_t j, double* packed)
{
    for (std::size_t k = B.m_from; k < B.m_to; ++k)
        for (std::size_t c = 0; c < tile_cols; ++c)
            *packed++ = E.column(std::min(j + c, E.m_n - 1))[k];
}

template <typename Vector>
[[gnu::always_inline]] inline void load(Vector& v, const double* from)
{
    __builtin_memcpy(&v, from, sizeof v);
}

/// Subtracts `steps` products from a tile whose columns stand `ld` apart.
template <typename Vector>
[[gnu::always_inline]] inline void update_tile(double* tile, std::size_t ld, std::size_t steps, const double* l,
                                               const double* u)
{
    constexpr std::size_t width = sizeof(Vector) / sizeof(double);
    Vector sums[tile_cols][2];
    for (std::size_t c = 0; c < tile_cols; ++c)
        for (std::size_t half = 0; half < 2; ++half)
            load(sums[c][half], tile + c * ld + half * width);
    for (std::size_t k = 0; k < steps; ++k, l += 2 * width, u += tile_cols) {
        Vector upper;
        Vector lower;
        load(upper, l);
        load(lower, l + width);
#pragma GCC unroll 6
        for (std::size_t c = 0; c < tile_cols; ++c) {
            sums[c][0] -= upper * u[c];
            sums[c][1] -= lower * u[c];
        }
    }
    for (std::size_t c = 0; c < tile_cols; ++c)
        for (std::size_t half = 0; half < 2; ++half)
            __builtin_memcpy(tile + c * ld + half * width, &sums[c][half], sizeof(Vector));
}

/// A tile at the lower or right edge, by way of a whole one whose surplus repeats its last row and column.
template <typename Vector>
[[gnu::always_inline]] inline void update_edge(const Elimination& E, std::size_t i, std::size_t j, std::size_t steps,
                                               const double* l, const double* u)
{
    constexpr std::size_t rows = tile_rows<Vector>;
    double whole[rows * tile_cols];
    for (std::size_t c = 0; c < tile_cols; ++c)
        for (std::size_t r = 0; r < rows; ++r)
            whole[r + c * rows] = E.column(std::min(j + c, E.m_n - 1))[std::min(i + r, E.m_n - 1)];
    update_tile<Vector>(whole, rows, steps, l, u);
    for (std::size_t c = 0; c < std::min(tile_cols, E.m_n - j); ++c)
        for (std::size_t r = 0; r < std::min(rows, E.m_n - i); ++r)
            E.column(j + c)[i + r] = whole[r + c * rows];
}

/// All that the block does to the columns to its right, a tile's columns at a time.
template <typename Vector>
[[gnu::always_inline]] inline void update_trailing(const Elimination& E, const Block& B, double* packed)
{
    constexpr std::size_t rows = tile_rows<Vector>;
    double upper[block * tile_cols];
    pack_multipliers<Vector>(E, B, packed);
    for (std::size_t j = B.m_to; j < E.m_n; j += tile_cols) {
        for (std::size_t c = j; c < std::min(j + tile_cols, E.m_n); ++c) {
            exchange_in_column(E, B, E.column(c));
            solve_lower(E, B, E.column(c));
        }
        pack_upper(E, B, j, upper);
        const double* l = packed;
        for (std::size_t i = B.m_to; i < E.m_n; i += rows, l += rows * B.size()) {
            if (i + rows <= E.m_n && j + tile_cols <= E.m_n)
                update_tile<Vector>(E.column(j) + i, E.m_ld, B.size(), l, upper);
            else
                update_edge<Vector>(E, i, j, B.size(), l, upper);
        }
    }
}

template <typename Vector>
[[gnu::always_inline]] inline bool eliminate_blocked(const Elimination& E, double* packed)
{
    for (std::size_t from = 0; from < E.m_n; from += block) {
        const Block B{.m_from = from, .m_to = std::min(from + block, E.m_n)};
        if (!eliminate_columns(E, B.m_from, B.m_to))
            return false;
        for (std::size_t j = 0; j < B.m_from; ++j)
            exchange_in_column(E, B, E.column(j));
        if (B.m_to < E.m_n)
            update_trailing<Vector>(E, B, packed);
    }
    return true;
}

} // namespace

std::size_t blocked_workspace(std::size_t n)
{
    return (n + widest_tile) * block;
}

bool eliminate_blocked_baseline(const Elimination& E, double* packed)
{
    return eliminate_blocked<Vector2>(E, packed);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]]
#endif
bool eliminate_blocked_avx2(const Elimination& E, double* packed)
{
    return eliminate_blocked<Vector4>(E, packed);
}

} // namespace native
