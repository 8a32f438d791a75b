// The inverse of a complex matrix by the steps of the real one, column by column, both parts at once.
// Ours: quotients by Smith's method, as in the factorisation.
#include "bailuxsko/kernels/inverse.hpp"
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/kernels/lu_steps.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "bailuxsko/kernels/unit_vectors.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cmath>
#include <cstddef>

namespace native {
namespace {

/// (x + iy) / (c + id)
/// @see R. L. Smith, Algorithm 116: Complex division, CACM 5 (1962)
[[gnu::always_inline]] inline aComplex quotient(double x, double y, double c, double d)
{
    if (std::fabs(c) >= std::fabs(d)) {
        const double r = d / c;
        const double den = c + r * d;
        return {.m_re = (x + r * y) / den, .m_im = (y - r * x) / den};
    }
    const double r = c / d;
    const double den = r * c + d;
    return {.m_re = (r * x + y) / den, .m_im = (r * y - x) / den};
}

/// Rows first to end - 1 of the column lose factor column k times its solved component.
[[gnu::always_inline]] inline void subtract_multiple(const aMatrix* LU, std::size_t k, std::size_t first,
                                                     std::size_t end, double* __restrict re, double* __restrict im)
{
    const double* const f_re = Efi::column(LU, k);
    const double* const f_im = Efi::column_i(LU, k);
    const double s_re = re[k];
    const double s_im = im[k];
    for (std::size_t i = first; i < end; ++i) {
        re[i] -= f_re[i] * s_re - f_im[i] * s_im;
        im[i] -= f_re[i] * s_im + f_im[i] * s_re;
    }
}

/// Solves L * U * x = the unit vector with its 1 in row p, in place.
[[gnu::always_inline]] inline void solve_column(const aMatrix* LU, std::size_t p, double* re, double* im)
{
    const std::size_t n = LU->m_rows;
    for (std::size_t k = p; k < n; ++k)
        subtract_multiple(LU, k, k + 1, n, re, im);
    for (std::size_t k = n; k-- > 0;) {
        const aComplex solved = quotient(re[k], im[k], Efi::at(LU, k, k), Efi::at_i(LU, k, k));
        re[k] = solved.m_re;
        im[k] = solved.m_im;
        subtract_multiple(LU, k, 0, k, re, im);
    }
}

void solve_column_baseline(const aMatrix* LU, std::size_t p, double* re, double* im)
{
    solve_column(LU, p, re, im);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void solve_column_avx2(const aMatrix* LU, std::size_t p, double* re, double* im)
{
    solve_column(LU, p, re, im);
}
#else
constexpr auto solve_column_avx2 = solve_column_baseline;
#endif

} // namespace

void complex_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict)
{
    if (A->m_rv == nullptr)
        Efi::Throw(msg::unknown_error, -1);
    require_square(A);
    const std::size_t n = A->m_rows;
    double* const X_re = Efi::doubles(ctx, n * n);
    double* const X_im = Efi::doubles(ctx, n * n);
    double* const pivots1 = Efi::uncleared_doubles(ctx, n);
    *result = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, X_re, X_im);

    Anyval* copy = nullptr;
    ctx->m_arena->cp(reinterpret_cast<const Anyval*>(A), &copy, true, false);
    aMatrix* const LU = &copy->m_matrix;
    double sign;
    clu_decomp(ctx, LU, pivots1, &sign, strict);
    Efi::make_complex(ctx, LU); // a record that came without an imaginary array may still be without

    auto* const column_of = static_cast<double**>(ctx->m_arena->allocate_uncleared(n * sizeof(double*)));
    set_unit_vectors(n, pivots1, 1.0, X_re, column_of); // the complex routine counts rows from 1
    const auto solve = at_level(solve_column_baseline, solve_column_avx2);
    for (std::size_t p = 0; p < n; ++p)
        solve(LU, p, column_of[p], X_im + (column_of[p] - X_re));
    drop_zero_imaginary(*result);
}

} // namespace native
