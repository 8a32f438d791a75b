#include "bailuxsko/kernels/svd.hpp"

#include "bailuxsko/kernels/bidiagonal.hpp"
#include "bailuxsko/kernels/bidiagonal_qr.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "bailuxsko/kernels/transpose.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/packing.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>

namespace native {
namespace {

using Efi::at;
using Efi::column;

/// Carries the rotations over to the columns of U and V at once.
class Vectors {
public:
    Vectors(aMatrix* U, aMatrix* V) : m_U(U), m_V(V) {}

    void columns_of_V(std::size_t i, double c, double s) { rotate(m_V, i - 1, i, c, s); }
    void columns_of_U(std::size_t i, double c, double s) { rotate(m_U, i - 1, i, c, s); }
    void columns_of_U(std::size_t j, std::size_t i, double c, double s) { rotate(m_U, j, i, c, s); }
    void negate_V(std::size_t k)
    {
        for (std::size_t i = 0; i < m_V->m_rows; ++i)
            at(m_V, i, k) = -at(m_V, i, k);
    }

private:
    static void rotate(aMatrix* M, std::size_t left, std::size_t right, double c, double s)
    {
        for (std::size_t i = 0; i < M->m_rows; ++i) {
            const double x = at(M, i, left);
            const double z = at(M, i, right);
            at(M, i, left) = x * c + z * s;
            at(M, i, right) = z * c - x * s;
        }
    }

    aMatrix* m_U;
    aMatrix* m_V;
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

/// Column i becomes the former column from[i].
void rearrange(EfiCallContext* ctx, aMatrix* M, const std::uint32_t* from)
{
    const std::size_t rows = M->m_rows;
    double* const former = Efi::uncleared_doubles(ctx, std::uint64_t{M->m_rows} * M->m_cols);
    for (std::size_t j = 0; j < M->m_cols; ++j)
        std::copy_n(column(M, j), rows, former + j * rows);
    for (std::size_t j = 0; j < M->m_cols; ++j)
        std::copy_n(former + from[j] * rows, rows, column(M, j));
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
    aMatrix* const U = uncleared(ctx, A->m_rows, A->m_cols);
    aMatrix* const V = uncleared(ctx, A->m_cols, A->m_cols);
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
    Anyval* copy = nullptr;
    ctx->m_arena->cp(reinterpret_cast<const Anyval*>(A), &copy, true, false);
    aMatrix* X = nullptr;
    pinv_from_svd(ctx, &copy->m_matrix, tol, &X);
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
    const Bidiagonal B = bidiagonalise(ctx, A, w->m_rv, e, NestedElements::not_looked_at);
    accumulate_V(A, B, V);
    accumulate_U(A, B);
    Vectors vectors(A, V);
    diagonalise(B, vectors);

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
    const Bidiagonal B = bidiagonalise(ctx, A, w, e, NestedElements::refused);
    NoVectors vectors;
    diagonalise(B, vectors);
    exchange_sort(n, w, [](std::size_t, std::size_t) {});
    for (std::size_t i = 0; i < n; ++i)
        at(A, i, i) = w[i];
}

} // namespace native
