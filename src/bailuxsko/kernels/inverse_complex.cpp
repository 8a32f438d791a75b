// The inverse of a complex matrix by the steps of the real one, panels of rows and products in tiles.
// Ours: quotients by Smith's method, as in the factorisation.
#include "bailuxsko/kernels/inverse.hpp"
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/kernels/lu_complex_steps.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "bailuxsko/kernels/tiles_complex.hpp"
#include "bailuxsko/kernels/unit_vectors.hpp"

#include "efiutl/columns.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

/// L and U in one record, and the right-hand sides: re[p] and im[p] begin as the unit vector with its 1 in row p.
struct Systems {
    const aMatrix* LU;
    double* const* re;
    double* const* im;
    double* packed; // room for the products' workspace

    std::size_t n() const { return LU->m_rows; }
};

/// The rows that are solved before what they leave of the others is taken off.
constexpr std::size_t panel_rows = 32;

/// Rows first to end - 1 of a right-hand side lose factor column k times its solved component.
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

/// Rows first to end - 1 of L * Y = P, in the columns whose 1 stands above `end`.
[[gnu::always_inline]] inline void solve_lower_panel(const Systems& S, std::size_t first, std::size_t end)
{
    for (std::size_t p = 0; p < end; ++p)
        for (std::size_t k = std::max(first, p); k < end; ++k)
            subtract_multiple(S.LU, k, k + 1, end, S.re[p], S.im[p]);
}

/// Rows first to end - 1 of U * X = Y, in all columns.
[[gnu::always_inline]] inline void solve_upper_panel(const Systems& S, std::size_t first, std::size_t end)
{
    for (std::size_t p = 0; p < S.n(); ++p)
        for (std::size_t k = end; k-- > first;) {
            const SmithDivisor pivot(Efi::at(S.LU, k, k), Efi::at_i(S.LU, k, k));
            const aComplex solved = pivot.quotient(S.re[p][k], S.im[p][k]);
            S.re[p][k] = solved.m_re;
            S.im[p][k] = solved.m_im;
            subtract_multiple(S.LU, k, first, k, S.re[p], S.im[p]);
        }
}

template <class Vector>
[[gnu::always_inline]] inline void solve(const Systems& S)
{
    using tiles::Update;
    const std::size_t n = S.n();
    const auto factor = [&](std::size_t k) { return tiles::Parts{Efi::column(S.LU, k), Efi::column_i(S.LU, k)}; };
    const auto column = [&](std::size_t p) { return tiles::WritableParts{S.re[p], S.im[p]}; };
    for (std::size_t first = 0; first < n; first += panel_rows) {
        const std::size_t end = std::min(first + panel_rows, n);
        const auto panel = [&](std::size_t p) { return tiles::Parts{S.re[p] + first, S.im[p] + first}; };
        solve_lower_panel(S, first, end);
        tiles::rows_of_complex_product<Update::subtract, Vector>(factor(first), S.LU->m_anr, end, n, end, end - first,
                                                                 panel, column, S.packed);
    }
    for (std::size_t end = n; end > 0;) {
        const std::size_t first = (end - 1) / panel_rows * panel_rows;
        const auto panel = [&](std::size_t p) { return tiles::Parts{S.re[p] + first, S.im[p] + first}; };
        solve_upper_panel(S, first, end);
        tiles::rows_of_complex_product<Update::subtract_descending, Vector>(factor(first), S.LU->m_anr, 0, first, n,
                                                                            end - first, panel, column, S.packed);
        end = first;
    }
}

void solve_baseline(const Systems& S)
{
    solve<tiles::Two>(S);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void solve_avx2(const Systems& S)
{
    solve<tiles::Four>(S);
}
[[gnu::target("avx512f")]] void solve_avx512(const Systems& S)
{
    solve<tiles::Eight>(S);
}
#else
constexpr auto solve_avx2 = solve_baseline;
constexpr auto solve_avx512 = solve_baseline;
#endif

} // namespace

void complex_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict)
{
    require_real_array(A);
    require_square(A);
    const std::size_t n = A->m_rows;
    double* const X_re = Efi::doubles(ctx, n * n);
    double* const X_im = Efi::doubles(ctx, n * n);
    double* const pivots1 = Efi::uncleared_doubles(ctx, n);
    *result = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, X_re, X_im);

    aMatrix* const LU = Efi::copy_of(ctx, A);
    double sign;
    clu_decomp(ctx, LU, pivots1, &sign, strict);
    Efi::make_complex(ctx, LU); // a record that came without an imaginary array may still be without

    auto* const re = static_cast<double**>(ctx->m_arena->allocate_uncleared(n * sizeof(double*)));
    auto* const im = static_cast<double**>(ctx->m_arena->allocate_uncleared(n * sizeof(double*)));
    set_unit_vectors(n, pivots1, 1.0, X_re, re); // the complex routine counts rows from 1
    for (std::size_t p = 0; p < n; ++p)
        im[p] = X_im + (re[p] - X_re);
    at_level(solve_baseline, solve_avx2, solve_avx512)(
        {.LU = LU, .re = re, .im = im, .packed = Efi::uncleared_doubles(ctx, tiles::complex_workspace(n, panel_rows))});
    drop_zero_imaginary(*result);
}

} // namespace native
