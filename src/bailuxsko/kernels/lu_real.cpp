// Gaussian elimination of a real matrix with implicitly scaled rows (Golub and Van Loan, Matrix Computations,
// sections 3.2 and 3.4), column by column through memory.
// Ours: the last of equally scaled rows is the pivot row; every element takes its updates in ascending k with a
// rounding after the product and one after the difference, and nothing is divided, multiplied or compared that the
// loops of the textbook would not, so that bits and floating-point flags are theirs.
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/kernels/lu_elimination.hpp"
#include "bailuxsko/kernels/lu_steps.hpp"
#include "bailuxsko/kernels/record_checks.hpp"

#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>

namespace native {
namespace {

constexpr double eps = 2.220446049250313e-16; // of double precision

/// From here on packing pays for itself.
constexpr std::size_t smallest_blocked = 32;

/// The reciprocal of every row's largest magnitude; false when a row holds nothing but zeros.
[[gnu::always_inline]] inline bool scale_rows(const Elimination& E)
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

/// The largest |U(k, j)| times the growth bound of step k, over all steps but the last.
[[gnu::always_inline]] inline double growth(const Elimination& E)
{
    double g = 0.0;
    for (std::size_t j = 0; j < E.m_n; ++j) {
        const double* const c = E.column(j);
        const double* const bound = E.m_scale;
        g = largest(std::min(j + 1, E.m_n - 1), g, [=](std::size_t k) { return std::fabs(c[k]) * bound[k]; });
    }
    return g;
}

bool scale_rows_baseline(const Elimination& E)
{
    return scale_rows(E);
}
bool eliminate_baseline(const Elimination& E)
{
    return eliminate_columns(E, 0, E.m_n);
}
double growth_baseline(const Elimination& E)
{
    return growth(E);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool scale_rows_avx2(const Elimination& E)
{
    return scale_rows(E);
}
[[gnu::target("avx2")]] bool eliminate_avx2(const Elimination& E)
{
    return eliminate_columns(E, 0, E.m_n);
}
[[gnu::target("avx2")]] double growth_avx2(const Elimination& E)
{
    return growth(E);
}
#else
constexpr auto scale_rows_avx2 = scale_rows_baseline;
constexpr auto eliminate_avx2 = eliminate_baseline;
constexpr auto growth_avx2 = growth_baseline;
#endif

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
    const std::size_t n = A->m_rows;
    const bool blocked = n >= smallest_blocked;
    if (blocked && pivots == nullptr)
        pivots = Efi::uncleared_doubles(ctx, n); // a block's exchanges are carried out later, outside its own columns
    const Elimination E{.m_a = A->m_rv,
                        .m_ld = A->m_anr,
                        .m_n = n,
                        .m_scale = Efi::uncleared_doubles(ctx, n),
                        .m_pivots = pivots,
                        .m_sign = sign};
    double* const packed = blocked ? Efi::uncleared_doubles(ctx, blocked_workspace(n)) : nullptr;
    if (!at_level(scale_rows_baseline, scale_rows_avx2)(E))
        Efi::Throw(msg::singular_matrix, -1);
    const bool regular =
        blocked ? at_level(eliminate_blocked_baseline, eliminate_blocked_avx2, eliminate_blocked_avx512)(E, packed)
                : at_level(eliminate_baseline, eliminate_avx2)(E);
    if (!regular)
        Efi::Throw(msg::singular_matrix, -1);
    const double g = at_level(growth_baseline, growth_avx2)(E);
    raise_flags_of(g);
    if (strict && !passes_strict_test(E, g))
        Efi::Throw(msg::singular_matrix, -1);
}

} // namespace native
