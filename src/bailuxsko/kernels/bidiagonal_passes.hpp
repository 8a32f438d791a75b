#pragma once

#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cstddef>

/// The passes of the reduction over the rows and columns that remain. A step needs three: the sums of the columns with
/// the reflection from the left, the sums of the rows with the one from the right, and the update by both. The update
/// makes the next step's sums of columns on its way; the sums of rows compute the update from the left a second time
/// rather than store it. Sums of several columns, or of all rows, run side by side, each in its own order.
namespace native::bidiagonal {

using side_by_side::lanes;
using side_by_side::load;
using side_by_side::store;
using side_by_side::transpose;

/// Rows m_first to m_end - 1 and columns m_first to m_cols - 1, and what a step does to them: a += f * v by the
/// reflection from the left, then a += t * e by the one from the right. A reflection that is skipped has no v, no e.
struct Remaining {
    double* m_A;
    std::size_t m_ld;
    std::size_t m_first;
    std::size_t m_end;
    std::size_t m_cols;
    const double* m_v; ///< by row
    const double* m_f; ///< by column
    double* m_t;       ///< by row
    const double* m_e; ///< by column

    double* column(std::size_t j) const { return m_A + j * m_ld; }
};

template <std::size_t count, bool left>
[[gnu::always_inline]] inline void add_to_row_sums(const Remaining& R, std::size_t j, const double* u)
{
    const double* a[count];
    double f[count];
    double by[count];
    for (std::size_t c = 0; c < count; ++c) {
        a[c] = R.column(j + c);
        f[c] = left ? R.m_f[j + c] : 0.0;
        by[c] = u[j + c];
    }
    const double* const v = R.m_v;
    double* const __restrict t = R.m_t;
    for (std::size_t r = R.m_first; r < R.m_end; ++r) {
        double sum = t[r];
        for (std::size_t c = 0; c < count; ++c) {
            double x = a[c][r];
            if constexpr (left)
                x += f[c] * v[r];
            sum += x * by[c];
        }
        t[r] = sum;
    }
}

template <bool left>
[[gnu::always_inline]] inline void sum_rows(const Remaining& R, const double* u)
{
    std::size_t j = R.m_first;
    for (; j + 4 <= R.m_cols; j += 4)
        add_to_row_sums<4, left>(R, j, u);
    for (; j < R.m_cols; ++j)
        add_to_row_sums<1, left>(R, j, u);
}

/// t(r) becomes the sum over the columns of a(r, j) * u(j), with a as the reflection from the left leaves it.
[[gnu::always_inline]] inline void sum_rows(const Remaining& R, const double* u)
{
    std::fill(R.m_t + R.m_first, R.m_t + R.m_end, 0.0);
    if (R.m_v != nullptr)
        sum_rows<true>(R, u);
    else
        sum_rows<false>(R, u);
}

/// Updates column j.
[[gnu::always_inline]] inline void update_column(const Remaining& R, std::size_t j)
{
    double* const __restrict a = R.column(j);
    if (R.m_v != nullptr)
        for (std::size_t r = R.m_first; r < R.m_end; ++r)
            a[r] += R.m_f[j] * R.m_v[r];
    if (R.m_e != nullptr)
        for (std::size_t r = R.m_first; r < R.m_end; ++r)
            a[r] += R.m_t[r] * R.m_e[j];
}

/// Updates `groups` vectors' width of columns from j on and, if `sums` are wanted, puts the sum of each column with
/// `next` there. Columns beyond the last one repeat it: they are all loaded before any is stored, so that takes place
/// once.
template <class Vector, std::size_t groups, bool left, bool right, bool sum>
[[gnu::always_inline]] inline void update_columns(const Remaining& R, std::size_t j, const double* next, double* sums)
{
    constexpr std::size_t width = lanes<Vector>;
    constexpr std::size_t count = groups * width;
    double* a[count];
    double f[count];
    double e[count];
    for (std::size_t c = 0; c < count; ++c) {
        const std::size_t column = std::min(j + c, R.m_cols - 1);
        a[c] = R.column(column);
        f[c] = left ? R.m_f[column] : 0.0;
        e[c] = right ? R.m_e[column] : 0.0;
    }
    Vector totals[groups] = {};
    std::size_t r = R.m_first;
    for (; r + width <= R.m_end; r += width) {
        Vector v{};
        Vector t{};
        if constexpr (left)
            load(v, R.m_v + r);
        if constexpr (right)
            load(t, R.m_t + r);
#pragma GCC unroll 8
        for (std::size_t g = 0; g < groups; ++g) {
            Vector x[width];
#pragma GCC unroll 8
            for (std::size_t c = 0; c < width; ++c) {
                load(x[c], a[g * width + c] + r);
                if constexpr (left)
                    x[c] += v * f[g * width + c];
                if constexpr (right)
                    x[c] += t * e[g * width + c];
            }
            if constexpr (left || right)
#pragma GCC unroll 8
                for (std::size_t c = 0; c < width; ++c)
                    store(x[c], a[g * width + c] + r);
            if constexpr (sum) {
                transpose(x);
#pragma GCC unroll 8
                for (std::size_t q = 0; q < width; ++q)
                    totals[g] += x[q] * next[r + q];
            }
        }
    }
    double total[count];
    __builtin_memcpy(total, totals, sizeof totals);
    for (; r < R.m_end; ++r) {
        double x[count];
        for (std::size_t c = 0; c < count; ++c) {
            x[c] = a[c][r];
            if constexpr (left)
                x[c] += f[c] * R.m_v[r];
            if constexpr (right)
                x[c] += R.m_t[r] * e[c];
            if constexpr (sum)
                total[c] += x[c] * next[r];
        }
        for (std::size_t c = 0; c < count; ++c)
            a[c][r] = x[c];
    }
    if constexpr (sum)
        std::copy_n(total, std::min(count, R.m_cols - j), sums + j);
}

template <class Vector, bool left, bool right, bool sum>
[[gnu::always_inline]] inline void update(const Remaining& R, std::size_t j, const double* next, double* sums)
{
    constexpr std::size_t groups = 8 / lanes<Vector>;
    for (; j + 8 <= R.m_cols; j += 8)
        update_columns<Vector, groups, left, right, sum>(R, j, next, sums);
    for (; j < R.m_cols; j += lanes<Vector>)
        update_columns<Vector, 1, left, right, sum>(R, j, next, sums);
}

/// Updates the columns from j on; sums(j) becomes the sum over the rows of a(r, j) * next(r), unless next is null.
template <class Vector>
[[gnu::always_inline]] inline void update(const Remaining& R, std::size_t j, const double* next, double* sums)
{
    const bool left = R.m_v != nullptr;
    const bool right = R.m_e != nullptr;
    if (next != nullptr) {
        if (left && right)
            update<Vector, true, true, true>(R, j, next, sums);
        else if (left)
            update<Vector, true, false, true>(R, j, next, sums);
        else if (right)
            update<Vector, false, true, true>(R, j, next, sums);
        else
            update<Vector, false, false, true>(R, j, next, sums);
    } else {
        if (left && right)
            update<Vector, true, true, false>(R, j, next, sums);
        else if (left)
            update<Vector, true, false, false>(R, j, next, sums);
        else if (right)
            update<Vector, false, true, false>(R, j, next, sums);
    }
}

} // namespace native::bidiagonal
