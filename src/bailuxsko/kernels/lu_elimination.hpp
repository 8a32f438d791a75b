#pragma once

#include "bailuxsko/kernels/lu_steps.hpp"

#include <cmath>
#include <cstddef>
#include <utility>

/// The steps of the real elimination, which the form for small matrices and the blocked one are made of.
namespace native {

/// A square matrix in memory, and what one factorisation gathers.
struct Elimination {
    double* m_a;
    std::size_t m_ld;
    std::size_t m_n;
    double* m_scale;  // row i: first 1 / the row's largest magnitude; from step i on the growth bound of that step
    double* m_pivots; // null, or the row, counted from 0, that each step exchanged its own with
    double* m_sign;

    double* column(std::size_t j) const { return m_a + j * m_ld; }
};

/// The row of the largest scaled magnitude in column k, from row k on: of equals the last, but row k stays where its
/// own magnitude is not a number. In two passes, since a search that carries the row along cannot use vectors.
[[gnu::always_inline]] inline std::size_t find_pivot(const Elimination& E, std::size_t k)
{
    const double* const c = E.column(k);
    const double* const scale = E.m_scale;
    const double own = std::fabs(c[k]) * scale[k];
    raise_flags_of(own); // in the last step there is nothing to compare it with
    const std::size_t below = E.m_n - k - 1;
    if (below == 0)
        return k;
    const auto magnitude = [=](std::size_t i) { return std::fabs(c[k + 1 + i]) * scale[k + 1 + i]; };
    const double best = largest(below, -1.0, magnitude);
    if (!(best >= own))
        return k;
    std::size_t i = below;
    while (magnitude(--i) != best) {
    }
    return k + 1 + i;
}

/// Exchanges rows k and p of the columns from `from` to before `to`, with all that belongs to an exchange.
[[gnu::always_inline]] inline void exchange_rows(const Elimination& E, std::size_t k, std::size_t p, std::size_t from,
                                                 std::size_t to)
{
    for (std::size_t j = from; j < to; ++j)
        std::swap(E.column(j)[k], E.column(j)[p]);
    *E.m_sign = -*E.m_sign;
    E.m_scale[p] = E.m_scale[k];
}

/// The multipliers of column k, and the growth bound of the step: the largest of them, at least 1.
[[gnu::always_inline]] inline void form_multipliers(const Elimination& E, std::size_t k)
{
    double* const c = E.column(k) + k + 1;
    const std::size_t count = E.m_n - k - 1;
    const double pivot = c[-1];
    for (std::size_t i = 0; i < count; ++i)
        c[i] /= pivot;
    E.m_scale[k] = largest(count, 1.0, [=](std::size_t i) { return std::fabs(c[i]); });
}

/// What step k leaves of the columns to its right, up to before `to`.
[[gnu::always_inline]] inline void subtract_multiples(const Elimination& E, std::size_t k, std::size_t to)
{
    const double* const multipliers = E.column(k) + k + 1;
    const std::size_t count = E.m_n - k - 1;
    for (std::size_t j = k + 1; j < to; ++j) {
        double* const __restrict c = E.column(j) + k + 1;
        const double u = c[-1];
        for (std::size_t i = 0; i < count; ++i)
            c[i] -= multipliers[i] * u;
    }
}

/// Steps `from` to before `to`, as far as the columns of these steps are concerned; false at a pivot of exactly zero.
[[gnu::always_inline]] inline bool eliminate_columns(const Elimination& E, std::size_t from, std::size_t to)
{
    for (std::size_t k = from; k < to; ++k) {
        const std::size_t p = find_pivot(E, k);
        if (p != k)
            exchange_rows(E, k, p, from, to);
        if (E.m_pivots != nullptr)
            E.m_pivots[k] = static_cast<double>(p);
        if (E.column(k)[k] == 0.0)
            return false;
        form_multipliers(E, k);
        subtract_multiples(E, k, to);
    }
    return true;
}

/// The whole elimination by recursion on columns, at every level: E.m_pivots must not be null, and `packed` holds
/// blocked_workspace(n) doubles. False at a pivot of exactly zero.
bool eliminate_blocked_baseline(const Elimination& E, double* packed);
bool eliminate_blocked_avx2(const Elimination& E, double* packed);
bool eliminate_blocked_avx512(const Elimination& E, double* packed);

std::size_t blocked_workspace(std::size_t n);

} // namespace native
