// Cholesky factorisation by panels of columns, right-looking (Golub and Van Loan, Matrix Computations, section 4.2.9).
// Ours: a tile stays in registers while it takes a panel's products in ascending k, each with a rounding after the
// product and one after the difference, so that every element has the bits of the plain loops.
#include "bailuxsko/kernels/cholesky_strips.hpp"

#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cmath>

namespace native {
namespace {

constexpr std::size_t height = Strips::height;
constexpr std::size_t panel = 16; // blocks of eight columns whose products are taken off the rest at once

/// A tile is eight sums, as two vectors of rows by four columns, or as one vector of all eight rows by eight columns.
template <class Vector>
constexpr std::size_t vectors = std::min<std::size_t>(2, height / tiles::width<Vector>);
template <class Vector>
constexpr std::size_t columns = 8 / vectors<Vector>;

/// Subtracts from the eight columns at C the products of the strips A and B, whose `terms` columns stand side by side.
template <class Vector>
[[gnu::always_inline]] inline void subtract_products(double* C, const double* A, const double* B, std::size_t terms)
{
    for (std::size_t row = 0; row < height; row += vectors<Vector> * tiles::width<Vector>)
        for (std::size_t j = 0; j < height; j += columns<Vector>) {
            double* const c = C + j * height + row;
            Vector sum[columns<Vector>][vectors<Vector>];
            for (std::size_t t = 0; t < columns<Vector>; ++t)
                tiles::load(sum[t], c + t * height);
            const double* a = A + row;
            const double* b = B + j;
            for (std::size_t k = 0; k < terms; ++k, a += height, b += height) {
                Vector rows[vectors<Vector>];
                tiles::load(rows, a);
#pragma GCC unroll 8
                for (std::size_t t = 0; t < columns<Vector>; ++t)
                    for (std::size_t v = 0; v < vectors<Vector>; ++v)
                        sum[t][v] -= rows[v] * b[t];
            }
            for (std::size_t t = 0; t < columns<Vector>; ++t)
                tiles::store(sum[t], c + t * height);
        }
}

/// Eight columns of L below the block D of the diagonal, which is factored already.
template <class Vector>
[[gnu::always_inline]] inline void solve_block(double* X, const double* D)
{
    constexpr std::size_t w = tiles::width<Vector>;
    for (std::size_t row = 0; row < height; row += w) {
        Vector x[height];
#pragma GCC unroll 8
        for (std::size_t k = 0; k < height; ++k)
            __builtin_memcpy(&x[k], X + k * height + row, sizeof x[k]);
#pragma GCC unroll 8
        for (std::size_t k = 0; k < height; ++k) {
            x[k] /= D[k * height + k];
#pragma GCC unroll 8
            for (std::size_t j = k + 1; j < height; ++j)
                x[j] -= x[k] * D[k * height + j];
        }
#pragma GCC unroll 8
        for (std::size_t k = 0; k < height; ++k)
            __builtin_memcpy(X + k * height + row, &x[k], sizeof x[k]);
    }
}

/// The first `rows` rows and columns of a block on the diagonal: here, and here only, rows that repeat must not take
/// part, since the quotient of two infinities would raise a flag. False at a pivot that is not above zero.
[[gnu::always_inline]] inline bool factorise_block(double* D, std::size_t rows)
{
    for (std::size_t k = 0; k < rows; ++k) {
        double* const l = D + k * height;
        if (l[k] <= 0.0)
            return false;
        const double pivot = std::sqrt(l[k]);
        l[k] = pivot;
        for (std::size_t i = k + 1; i < rows; ++i)
            l[i] /= pivot;
        for (std::size_t j = k + 1; j < rows; ++j)
            for (std::size_t i = j; i < rows; ++i)
                D[j * height + i] -= l[i] * l[j];
    }
    return true;
}

template <class Vector>
[[gnu::always_inline]] inline bool factorise_strips(const Strips& M)
{
    const std::size_t count = M.count();
    for (std::size_t from = 0; from < count; from += panel) {
        const std::size_t to = std::min(from + panel, count);
        for (std::size_t i = from; i < count; ++i) {
            for (std::size_t j = from; j < std::min(i, to); ++j) {
                subtract_products<Vector>(M.block(i, j), M.block(i, from), M.block(j, from), (j - from) * height);
                solve_block<Vector>(M.block(i, j), M.block(j, j));
            }
            if (i < to) {
                subtract_products<Vector>(M.block(i, i), M.block(i, from), M.block(i, from), (i - from) * height);
                if (!factorise_block(M.block(i, i), std::min(height, M.m_n - i * height)))
                    return false;
            }
        }
        for (std::size_t i = to; i < count; ++i)
            for (std::size_t j = to; j <= i; ++j)
                subtract_products<Vector>(M.block(i, j), M.block(i, from), M.block(j, from), (to - from) * height);
    }
    return true;
}

} // namespace

bool factorise_strips_baseline(const Strips& M)
{
    return factorise_strips<tiles::Two>(M);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool factorise_strips_avx2(const Strips& M)
{
    return factorise_strips<tiles::Four>(M);
}

[[gnu::target("avx512f")]] bool factorise_strips_avx512(const Strips& M)
{
    return factorise_strips<tiles::Eight>(M);
}
#else
bool factorise_strips_avx2(const Strips& M)
{
    return factorise_strips_baseline(M);
}

bool factorise_strips_avx512(const Strips& M)
{
    return factorise_strips_baseline(M);
}
#endif

} // namespace native
