// The worker behind `lu`: factorises a copy of the matrix and takes P, L and U from it.
#include "bailuxsko/kernels/lu.hpp"

#include "bailuxsko/kernels/record_checks.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/packing.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace native {
namespace {

/// Copies the columns of A one after the other to `to`.
void copy_columns(const double* a, const aMatrix* A, double* to)
{
    const std::size_t n = A->m_rows;
    for (std::size_t j = 0; j < n; ++j)
        for (std::size_t i = 0; i < n; ++i)
            to[i + j * n] = a[i + j * A->m_anr];
}

/// Moves what stands below the diagonal of the factored matrix to L, and fills both with the zeros and ones they need.
void split(std::size_t n, double* L, double* factored, double diagonal)
{
    for (std::size_t j = 0; j < n; ++j) {
        double* const l = L + j * n;
        double* const u = factored + j * n;
        for (std::size_t i = 0; i < j; ++i)
            l[i] = 0.0;
        l[j] = diagonal;
        for (std::size_t i = j + 1; i < n; ++i) {
            l[i] = u[i];
            u[i] = 0.0;
        }
    }
}

/// P from the exchanges of rows, counted from first_row: where[v] is the row of A that the exchanges have brought to v,
/// and P(where it stands now, where it stood) is 1.
void permutation(EfiCallContext* ctx, std::size_t n, const double* pivots, double first_row, double* P)
{
    auto* const where = static_cast<std::uint32_t*>(ctx->m_arena->allocate_uncleared(n * sizeof(std::uint32_t)));
    std::iota(where, where + n, 0U);
    for (std::size_t k = 0; k < n; ++k)
        std::swap(where[k], where[static_cast<std::size_t>(pivots[k] - first_row)]);
    std::fill_n(P, n * n, 0.0);
    for (std::size_t v = 0; v < n; ++v)
        P[v + where[v] * n] = 1.0;
}

} // namespace

aMatrix* lu(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_rows < A->m_cols)
        Efi::Throw(msg::must_be_square, 1);
    const bool is_complex = A->m_iv != nullptr;
    if (!is_complex && A->m_rv == nullptr && A->m_cols > 0)
        Efi::Throw(msg::null_pointer, -1); // before the shape, as in the factorisation
    require_square(A);
    require_real_array(A);
    const std::size_t n = A->m_rows;
    const std::size_t area = n * n;

    // P, L and U are neighbours in one array, so that packing has nothing to copy; U begins as the copy of A.
    const std::uint64_t all = area >> 61 != 0 ? area : 3 * area; // no arena can give the former: it need not wrap
    double* const re = Efi::uncleared_doubles(ctx, all);
    double* const im = is_complex ? Efi::uncleared_doubles(ctx, all) : nullptr;
    double* const pivots = Efi::uncleared_doubles(ctx, n);
    const auto factor = [&](std::size_t which) {
        return aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, re + which * area,
                           is_complex ? im + which * area : nullptr);
    };
    aMatrix* const P = factor(0);
    aMatrix* const L = factor(1);
    aMatrix* const U = factor(2);

    double sign;
    copy_columns(A->m_rv, A, U->m_rv);
    if (is_complex) {
        copy_columns(A->m_iv, A, U->m_iv);
        clu_decomp(ctx, U, pivots, &sign, false);
        split(n, L->m_iv, U->m_iv, 0.0);
        std::fill_n(P->m_iv, area, 0.0);
    } else {
        lu_decomp(ctx, U, pivots, &sign, false);
    }
    split(n, L->m_rv, U->m_rv, 1.0);
    permutation(ctx, n, pivots, is_complex ? 1.0 : 0.0, P->m_rv); // the complex routine counts rows from 1

    aMatrix* packed = nullptr;
    Efi::pack_three_c(ctx, P, L, U, &packed);
    return packed;
}

} // namespace native
