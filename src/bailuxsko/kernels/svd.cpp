#include "bailuxsko/kernels/svd.hpp"

#include "bailuxsko/kernels/bidiagonal.hpp"
#include "bailuxsko/kernels/bidiagonal_qr.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "bailuxsko/kernels/saved_rotations.hpp"
#include "bailuxsko/kernels/transpose.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/packing.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
#include <utility>

namespace native {
namespace {

using Efi::at;
using Efi::column;

/// Saves the rotations of U and V up; a column of V that is to be negated is only noted.
class Vectors {
public:
    Vectors(EfiCallContext* ctx, aMatrix* U, aMatrix* V, bool* negated) : m_U(ctx, U), m_V(ctx, V), m_negated(negated)
    {
    }

    void begin_sweep(std::size_t l, std::size_t k)
    {
        m_V.begin_neighbours(l, k - l);
        m_U.begin_neighbours(l, k - l);
    }
    void begin_cancellation(std::size_t l, std::size_t k) { m_U.begin_one_with(l - 1, l, k - l + 1); }
    void rotate_V(double c, double s) { m_V.rotate(c, s); }
    void rotate_U(double c, double s) { m_U.rotate(c, s); }
    void negate_V(std::size_t k) { m_negated[k] = true; } // no rotation after this reaches column k

    void apply()
    {
        m_U.apply();
        m_V.apply();
    }

private:
    SavedRotations m_U;
    SavedRotations m_V;
    bool* m_negated;
};

/// Sorts into descending order by exchanges; `exchanged` is told of each.
template <class Exchanged>
void exchange_sort(std::size_t n, double* w, Exchanged exchanged)
{
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i + 1; j < n; ++j)
            if (w[j] > w[i]) {
                std::swap(w[i], w[j]);
                exchanged(i, j);
            }
}

/// Column j becomes the former column from[j], ring by ring of columns that take each other's places.
void rearrange(EfiCallContext* ctx, aMatrix* M, const std::uint32_t* from)
{
    const std::size_t rows = M->m_rows;
    double* const first = Efi::uncleared_doubles(ctx, rows);
    auto* const done = static_cast<bool*>(ctx->m_arena->allocate_array(M->m_cols));
    for (std::size_t start = 0; start < M->m_cols; ++start) {
        if (done[start] || from[start] == start)
            continue;
        std::copy_n(column(M, start), rows, first);
        std::size_t j = start;
        for (; from[j] != start; j = from[j]) {
            std::copy_n(column(M, from[j]), rows, column(M, j));
            done[j] = true;
        }
        std::copy_n(first, rows, column(M, j));
        done[j] = true;
    }
}

aMatrix* uncleared(EfiCallContext* ctx, std::uint32_t rows, std::uint32_t cols)
{
    return aMatrix::mk(ctx->m_arena, rows, cols, Efi::uncleared_doubles(ctx, std::uint64_t{rows} * cols), nullptr);
}

/// @throws "must be real matrix" (1)
void require_real(const aMatrix* A)
{
    if (A->m_iv != nullptr)
        Efi::Throw(msg::must_be_real_matrix, 1);
}

} // namespace

aMatrix* svd2(EfiCallContext* ctx, aMatrix* A)
{
    require_real(A);
    if (A->m_rows < 1 || A->m_cols < 1)
        Efi::Throw(msg::invalid_dimension, -1);
    // U stands above V in one array, so that packing has nothing to copy.
    const std::uint64_t rows = std::uint64_t{A->m_rows} + A->m_cols;
    if (rows > std::numeric_limits<std::uint32_t>::max())
        Efi::Throw(msg::out_of_memory, -1);
    aMatrix* const both = uncleared(ctx, static_cast<std::uint32_t>(rows), A->m_cols);
    aMatrix* const U = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_cols, both->m_rv, nullptr);
    aMatrix* const V = aMatrix::mk(ctx->m_arena, A->m_cols, A->m_cols, both->m_rv + A->m_rows, nullptr);
    U->m_anr = V->m_anr = both->m_anr;
    aMatrix* const w = uncleared(ctx, A->m_cols, 1);
    for (std::size_t j = 0; j < A->m_cols; ++j)
        std::copy_n(column(A, j), A->m_rows, column(U, j));
    svd_decompose(ctx, U, V, w);
    aMatrix* packed = nullptr;
    Efi::pack_two_rr(ctx, U, V, &packed);
    return packed;
}

aMatrix* geninv(EfiCallContext* ctx, aMatrix* A, double tol)
{
    require_real(A);
    aMatrix* const copy = Efi::copy_of(ctx, A);
    aMatrix* X = nullptr;
    pinv_from_svd(ctx, copy, tol, &X);
    return X;
}

void pinv_from_svd(EfiCallContext* ctx, aMatrix* A, double tol, aMatrix** result)
{
    aMatrix* const V = uncleared(ctx, A->m_cols, A->m_cols);
    aMatrix* const w = uncleared(ctx, A->m_cols, 1);
    svd_decompose(ctx, A, V, w);
    for (std::size_t j = 0; j < V->m_cols; ++j) {
        const double value = w->m_rv[j];
        double* const v = column(V, j);
        if (value > tol)
            for (std::size_t i = 0; i < V->m_rows; ++i)
                v[i] /= value;
        else
            std::fill_n(v, V->m_rows, 0.0);
    }
    *result = product(ctx, V, mat_transpose(ctx, A));
}

void svd_decompose(EfiCallContext* ctx, aMatrix* A, aMatrix* V, aMatrix* w)
{
    if (A->m_rows < A->m_cols)
        Efi::Throw(msg::rows_less_than_columns, -1);
    const std::size_t n = A->m_cols;
    double* const e = Efi::uncleared_doubles(ctx, n);
    auto* const negated = static_cast<bool*>(ctx->m_arena->allocate_array(n));
    const Bidiagonal B = bidiagonalise(ctx, A, w->m_rv, e, NestedElements::not_looked_at, V);
    accumulate_V(ctx, B, V);
    accumulate_U(ctx, B, A);
    Vectors vectors(ctx, A, V, negated);
    diagonalise(B, vectors);
    vectors.apply();
    for (std::size_t j = 0; j < n; ++j)
        if (negated[j])
            for (std::size_t i = 0; i < n; ++i)
                at(V, i, j) = -at(V, i, j);

    auto* const from = static_cast<std::uint32_t*>(ctx->m_arena->allocate_uncleared(n * sizeof(std::uint32_t)));
    std::iota(from, from + n, 0U);
    exchange_sort(n, B.m_w, [&](std::size_t i, std::size_t j) { std::swap(from[i], from[j]); });
    rearrange(ctx, A, from);
    rearrange(ctx, V, from);
}

void svd_values(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_rows < A->m_cols)
        Efi::Throw(msg::rows_less_than_columns, 1);
    const std::size_t n = A->m_cols;
    double* const w = Efi::uncleared_doubles(ctx, n);
    double* const e = Efi::uncleared_doubles(ctx, n);
    const Bidiagonal B = bidiagonalise(ctx, A, w, e, NestedElements::refused, nullptr);
    NoVectors vectors;
    diagonalise(B, vectors);
    exchange_sort(n, w, [](std::size_t, std::size_t) {});
    for (std::size_t i = 0; i < n; ++i)
        at(A, i, i) = w[i];
}

} // namespace native
