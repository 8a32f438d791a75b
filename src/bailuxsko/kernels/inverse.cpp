// The inverse of a real matrix: L * U * X = P, every column of P a unit vector (Golub and Van Loan, Matrix
// Computations, sections 3.1 and 3.5.4).
// Ours: both substitutions subtract a solved component from all that are still to be solved, forward in ascending k,
// backward in descending k. That order blocks without changing a bit: panels of rows are solved, and what they leave of
// the other rows is a product in tiles. The forward substitution of a unit vector begins at its 1.
#include "bailuxsko/kernels/inverse.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "bailuxsko/kernels/tiles.hpp"
#include "bailuxsko/kernels/triangular_rows.hpp"
#include "bailuxsko/kernels/unit_vectors.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

/// L and U in one array, and the right-hand sides: right_hand_side[p] begins as the unit vector with its 1 in row p.
struct Systems {
    const double* LU;
    std::size_t n;
    double* const* right_hand_side;
    double* packed; // room for the products' workspace

    const double* factor(std::size_t k) const { return LU + k * n; }
};

/// The rows that are solved before what they leave of the others is taken off.
constexpr std::size_t panel_rows = triangular::most_rows;
/// The rows, a multiple of the panel's, whose share of all others is taken off at once.
constexpr std::size_t block_rows = 128;

/// Rows first to end - 1 of L * Y = P, in the columns whose 1 stands above `end`. Where it stands within the panel, the
/// substitution begins there.
template <class Vector>
[[gnu::always_inline]] inline void solve_lower_panel(const Systems& S, std::size_t first, std::size_t end)
{
    triangular::solve_rows<triangular::Triangle::unit_lower, Vector>(
        S.factor(first) + first, S.n, end - first, first, [&](std::size_t p) { return S.right_hand_side[p] + first; });
    for (std::size_t p = first; p < end; ++p) {
        double* const __restrict y = S.right_hand_side[p];
        for (std::size_t k = p; k < end; ++k) {
            const double* const l = S.factor(k);
            const double solved = y[k];
            for (std::size_t i = k + 1; i < end; ++i)
                y[i] -= l[i] * solved;
        }
    }
}

/// Rows first to end - 1 of U * X = Y, in all columns.
template <class Vector>
[[gnu::always_inline]] inline void solve_upper_panel(const Systems& S, std::size_t first, std::size_t end)
{
    triangular::solve_rows<triangular::Triangle::upper, Vector>(
        S.factor(first) + first, S.n, end - first, S.n, [&](std::size_t p) { return S.right_hand_side[p] + first; });
}

/// What solved rows leave of others: rows first to end - 1 lose factor columns k_first to k_end - 1 times the
/// components in these rows, in the sides whose 1 stands above `sides`.
template <tiles::Update update, class Vector>
[[gnu::always_inline]] inline void subtract_solved(const Systems& S, std::size_t k_first, std::size_t k_end,
                                                   std::size_t first, std::size_t end, std::size_t sides)
{
    tiles::rows_of_product<update, Vector>(
        S.factor(k_first), S.n, first, end, sides, k_end - k_first,
        [&](std::size_t p) { return S.right_hand_side[p] + k_first; },
        [&](std::size_t p) { return S.right_hand_side[p]; }, S.packed);
}

template <class Vector>
[[gnu::always_inline]] inline void solve(const Systems& S)
{
    using tiles::Update;
    for (std::size_t block = 0; block < S.n; block += block_rows) {
        const std::size_t block_end = std::min(block + block_rows, S.n);
        for (std::size_t first = block; first < block_end; first += panel_rows) {
            const std::size_t end = std::min(first + panel_rows, block_end);
            solve_lower_panel<Vector>(S, first, end);
            subtract_solved<Update::subtract, Vector>(S, first, end, end, block_end, end);
        }
        subtract_solved<Update::subtract, Vector>(S, block, block_end, block_end, S.n, block_end);
    }
    for (std::size_t block_end = S.n; block_end > 0;) {
        const std::size_t block = (block_end - 1) / block_rows * block_rows;
        for (std::size_t end = block_end; end > block;) {
            const std::size_t first = (end - 1) / panel_rows * panel_rows;
            solve_upper_panel<Vector>(S, first, end);
            subtract_solved<Update::subtract_descending, Vector>(S, first, end, block, first, S.n);
            end = first;
        }
        subtract_solved<Update::subtract_descending, Vector>(S, block, block_end, 0, block, S.n);
        block_end = block;
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

void real_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict)
{
    require_real_array(A);
    require_square(A);
    const std::size_t n = A->m_rows;
    double* const X = Efi::doubles(ctx, n * n);
    double* const pivots = Efi::uncleared_doubles(ctx, n);
    *result = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, X, nullptr);

    aMatrix* const copy = Efi::copy_of(ctx, A);
    double sign;
    lu_decomp(ctx, copy, pivots, &sign, strict);

    auto* const right_hand_side = static_cast<double**>(ctx->m_arena->allocate_uncleared(n * sizeof(double*)));
    set_unit_vectors(n, pivots, 0.0, X, right_hand_side);
    at_level(solve_baseline, solve_avx2,
             solve_avx512)({.LU = copy->m_rv,
                            .n = n,
                            .right_hand_side = right_hand_side,
                            .packed = Efi::uncleared_doubles(ctx, tiles::workspace(n, block_rows))});
}

aMatrix* inv2(EfiCallContext* ctx, aMatrix* A, bool strict)
{
    if (A->m_rows != A->m_cols)
        Efi::Throw(msg::must_be_square, -1);
    aMatrix* result = nullptr;
    if (A->m_iv != nullptr)
        complex_inverse(ctx, A, &result, strict);
    else
        real_inverse(ctx, A, &result, strict);
    return result;
}

} // namespace native
