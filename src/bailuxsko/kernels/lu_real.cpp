// Gaussian elimination of a real matrix with implicitly scaled rows (Golub and Van Loan, Matrix Computations,
// sections 3.2 and 3.4), column by column through memory.
// Ours: the last of equally scaled rows is the pivot row; every element takes its updates in ascending k with a
// rounding after the product and one after the difference, and nothing is divided, multiplied or compared that the
// loops of the textbook would not, so that bits and floating-point flags are theirs.
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/kernels/lu_steps.hpp"

#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace native {
namespace {

constexpr double eps = 2.220446049250313e-16; // of double precision

/// A square matrix in memory, and what one factorisation gathers.
struct Elimination {
    double* m_a;
    std::size_t m_ld;
    std::size_t m_n;
    double* m_scale; // row i: first 1 / the row's largest magnitude; from step i on the growth bound of that step
    double* m_pivots;
    double* m_sign;

    double* column(std::size_t j) const { return m_a + j * m_ld; }
};

/// The reciprocal of every row's largest magnitude; false when a row holds nothing but zeros.
bool scale_rows(const Elimination& E)
{
    double* const scale = E.m_scale;
    std::fill_n(scale, E.m_n, 0.0);
    for (std::size_t j = 0; j < E.m_n; ++j) {
        const double* const c = E.column(j);
        for (std::size_t i = 0; i < E.m_n; ++i) {
            const double m = std::fabs(c[i]);
            scale[i] = m > scale[i] ? m : scale[i];
        }
    }
    if (std::find(scale, scale + E.m_n, 0.0) != scale + E.m_n)
        return false;
    for (std::size_t i = 0; i < E.m_n; ++i)
        scale[i] = 1.0 / scale[i];
    return true;
}

/// The row of the largest scaled magnitude in column k, from row k on. Row k is the first candidate whatever it holds;
/// a later row replaces the best so far when it is as large: the last of equals wins.
[[gnu::always_inline]] inline std::size_t find_pivot(const Elimination& E, std::size_t k)
{
    const double* const c = E.column(k);
    double best = std::fabs(c[k]) * E.m_scale[k];
    raise_flags_of(best); // in the last step there is nothing to compare it with
    std::size_t p = k;
    for (std::size_t i = k + 1; i < E.m_n; ++i) {
        const double t = std::fabs(c[i]) * E.m_scale[i];
        if (t >= best) {
            best = t;
            p = i;
        }
    }
    return p;
}

[[gnu::always_inline]] inline void exchange_rows(const Elimination& E, std::size_t k, std::size_t p)
{
    for (std::size_t j = 0; j < E.m_n; ++j)
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

/// What step k leaves of the columns to its right.
[[gnu::always_inline]] inline void subtract_multiples(const Elimination& E, std::size_t k)
{
    const double* const multipliers = E.column(k) + k + 1;
    const std::size_t count = E.m_n - k - 1;
    for (std::size_t j = k + 1; j < E.m_n; ++j) {
        double* const __restrict c = E.column(j) + k + 1;
        const double u = c[-1];
        for (std::size_t i = 0; i < count; ++i)
            c[i] -= multipliers[i] * u;
    }
}

/// All steps; false at a pivot of exactly zero.
[[gnu::always_inline]] inline bool eliminate(const Elimination& E)
{
    for (std::size_t k = 0; k < E.m_n; ++k) {
        const std::size_t p = find_pivot(E, k);
        if (p != k)
            exchange_rows(E, k, p);
        if (E.m_pivots != nullptr)
            E.m_pivots[k] = static_cast<double>(p);
        if (E.column(k)[k] == 0.0)
            return false;
        form_multipliers(E, k);
        subtract_multiples(E, k);
    }
    return true;
}

bool eliminate_baseline(const Elimination& E)
{
    return eliminate(E);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool eliminate_avx2(const Elimination& E)
{
    return eliminate(E);
}
#else
constexpr auto eliminate_avx2 = eliminate_baseline;
#endif

/// The largest |U(k, j)| times the growth bound of step k, over all steps but the last.
double growth(const Elimination& E)
{
    double g = 0.0;
    for (std::size_t j = 0; j < E.m_n; ++j) {
        const double* const c = E.column(j);
        const double* const bound = E.m_scale;
        g = largest(std::min(j + 1, E.m_n - 1), g, [=](std::size_t k) { return std::fabs(c[k]) * bound[k]; });
    }
    return g;
}

/// The textbook tests the diagonal so far at every step. The growth never falls and an element of the diagonal is
/// final at its own step, so one test after the last step refuses the same matrices. The first element is never tested.
bool passes_strict_test(const Elimination& E, double g)
{
    const double threshold = g * eps;
    for (std::size_t i = 1; i < E.m_n; ++i)
        if (std::fabs(E.column(i)[i]) < threshold)
            return false;
    return true;
}

} // namespace

void lu_decomp(EfiCallContext* ctx, aMatrix* A, double* pivots, double* sign, bool strict)
{
    *sign = 1.0;
    if (A->m_rv == nullptr)
        Efi::Throw(msg::null_pointer, -1);
    require_square(A);
    const Elimination E{.m_a = A->m_rv,
                        .m_ld = A->m_anr,
                        .m_n = A->m_rows,
                        .m_scale = Efi::uncleared_doubles(ctx, A->m_rows),
                        .m_pivots = pivots,
                        .m_sign = sign};
    if (!scale_rows(E) || !at_level(eliminate_baseline, eliminate_avx2)(E))
        Efi::Throw(msg::singular_matrix, -1);
    const double g = growth(E);
    raise_flags_of(g);
    if (strict && !passes_strict_test(E, g))
        Efi::Throw(msg::singular_matrix, -1);
}

} // namespace native
