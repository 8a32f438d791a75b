#pragma once

#include "bailuxsko/kernels/lu_steps.hpp"
#include "bailuxsko/kernels/modulus.hpp"
#include "bailuxsko/kernels/smith_division.hpp"
#include "efiutl/records.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <type_traits>
#include <utility>

/// The steps of the complex elimination, which the form for small matrices and the blocked one are made of.
namespace native {

/// Both parts of a square matrix in memory, and what one factorisation gathers.
struct ComplexElimination {
    double* m_re;
    double* m_im;
    std::size_t m_ld;
    std::size_t m_n;
    double* m_scale;   // row i: first 1 / the row's largest modulus; from step i on the growth bound of that step
    double* m_moduli;  // n doubles: the moduli of the column at hand
    double* m_pivots1; // null, or the row, counted from 1, that each step exchanged its own with
    double* m_sign;

    double* re(std::size_t j) const { return m_re + j * m_ld; }
    double* im(std::size_t j) const { return m_im + j * m_ld; }
};

/// The reciprocal of every row's largest modulus; false when a row holds nothing but zeros.
[[gnu::always_inline]] inline bool scale_rows(const ComplexElimination& E)
{
    double* const __restrict scale = E.m_scale;
    std::fill_n(scale, E.m_n, 0.0);
    for (std::size_t j = 0; j < E.m_n; ++j) {
        const double* const re = E.re(j);
        const double* const im = E.im(j);
        for (std::size_t i = 0; i < E.m_n; ++i)
            scale[i] = std::max(scale[i], modulus(re[i], im[i])); // a NaN is never the larger one
    }
    if (std::find(scale, scale + E.m_n, 0.0) != scale + E.m_n)
        return false;
    for (std::size_t i = 0; i < E.m_n; ++i)
        scale[i] = 1.0 / scale[i];
    return true;
}

/// The row of the largest scaled modulus in column k, from row k on; the first of equals wins. Row k stays where no
/// modulus is a number.
[[gnu::always_inline]] inline std::size_t find_pivot(const ComplexElimination& E, std::size_t k)
{
    const double* const re = E.re(k);
    const double* const im = E.im(k);
    double* const __restrict scaled = E.m_moduli;
    const double* const scale = E.m_scale;
    for (std::size_t i = k; i < E.m_n; ++i)
        scaled[i] = modulus(re[i], im[i]) * scale[i];
    const double best = largest(E.m_n - k, -1.0, [=](std::size_t i) { return scaled[k + i]; });
    const double* const p = std::find(scaled + k, scaled + E.m_n, best);
    return p == scaled + E.m_n ? k : static_cast<std::size_t>(p - scaled);
}

/// The multipliers of column k, and the growth bound of the step: the largest of their moduli, at least 1.
[[gnu::always_inline]] inline void form_multipliers(const ComplexElimination& E, std::size_t k)
{
    double* const __restrict re = E.re(k);
    double* const __restrict im = E.im(k);
    double* const __restrict moduli = E.m_moduli;
    if (k + 1 < E.m_n) { // else there is nothing to divide, and the pivot is not looked at
        const SmithDivisor pivot(re[k], im[k]);
        const auto divide = [&](auto by_real) {
            for (std::size_t i = k + 1; i < E.m_n; ++i) {
                const aComplex m = pivot.quotient<by_real()>(re[i], im[i]);
                re[i] = m.m_re;
                im[i] = m.m_im;
            }
        };
        if (pivot.m_by_real) // outside the loop, which then uses vectors
            divide(std::true_type{});
        else
            divide(std::false_type{});
        for (std::size_t i = k + 1; i < E.m_n; ++i)
            moduli[i] = modulus(re[i], im[i]);
    }
    E.m_scale[k] = largest(E.m_n - k - 1, 1.0, [=](std::size_t i) { return moduli[k + 1 + i]; });
}

/// What step k leaves of the columns to its right, up to before `to`.
[[gnu::always_inline]] inline void subtract_multiples(const ComplexElimination& E, std::size_t k, std::size_t to)
{
    const double* const l_re = E.re(k);
    const double* const l_im = E.im(k);
    for (std::size_t j = k + 1; j < to; ++j) {
        double* const __restrict c_re = E.re(j);
        double* const __restrict c_im = E.im(j);
        const double u_re = c_re[k];
        const double u_im = c_im[k];
        for (std::size_t i = k + 1; i < E.m_n; ++i) {
            c_re[i] -= l_re[i] * u_re - l_im[i] * u_im;
            c_im[i] -= l_re[i] * u_im + l_im[i] * u_re;
        }
    }
}

/// Steps `from` to before `to`, as far as the columns of these steps are concerned; false at a pivot both of whose
/// parts are exactly zero.
[[gnu::always_inline]] inline bool eliminate_columns(const ComplexElimination& E, std::size_t from, std::size_t to)
{
    for (std::size_t k = from; k < to; ++k) {
        const std::size_t p = find_pivot(E, k);
        if (p != k) {
            for (std::size_t j = from; j < to; ++j) {
                std::swap(E.re(j)[k], E.re(j)[p]);
                std::swap(E.im(j)[k], E.im(j)[p]);
            }
            *E.m_sign = -*E.m_sign;
            E.m_scale[p] = E.m_scale[k];
        }
        if (E.m_pivots1 != nullptr)
            E.m_pivots1[k] = static_cast<double>(p + 1);
        if (E.re(k)[k] == 0.0 && E.im(k)[k] == 0.0)
            return false;
        form_multipliers(E, k);
        subtract_multiples(E, k, to);
    }
    return true;
}

/// The largest modulus of U(k, j) times the growth bound of step k, over all steps but the last.
[[gnu::always_inline]] inline double largest_growth(const ComplexElimination& E)
{
    const double* const bound = E.m_scale;
    double* const __restrict grown = E.m_moduli;
    double g = 0.0;
    for (std::size_t j = 0; j < E.m_n; ++j) {
        const double* const re = E.re(j);
        const double* const im = E.im(j);
        const std::size_t count = std::min(j + 1, E.m_n - 1);
        for (std::size_t k = 0; k < count; ++k)
            grown[k] = modulus(re[k], im[k]) * bound[k];
        g = largest(count, g, [=](std::size_t k) { return grown[k]; });
    }
    return g;
}

/// The same at either level.
double complex_growth_baseline(const ComplexElimination& E);
double complex_growth_avx2(const ComplexElimination& E);

/// The whole elimination at either level; false at a row of zeros and at a pivot both of whose parts are exactly zero.
bool eliminate_complex_baseline(const ComplexElimination& E);
bool eliminate_complex_avx2(const ComplexElimination& E);

/// The same by recursion on columns: E.m_pivots1 must not be null, and `packed` holds blocked_complex_workspace(n)
/// doubles.
bool eliminate_complex_blocked_baseline(const ComplexElimination& E, double* packed);
bool eliminate_complex_blocked_avx2(const ComplexElimination& E, double* packed);
bool eliminate_complex_blocked_avx512(const ComplexElimination& E, double* packed);

std::size_t blocked_complex_workspace(std::size_t n);

} // namespace native
