#include "tests/kernels/plain/inverse.hpp"

#include "efiutl/columns.hpp"
#include "tests/kernels/plain/lu.hpp"
#include "tests/kernels/plain/quotient.hpp"

#include <cstddef>
#include <utility>

namespace plain {
namespace {

using Efi::at;
using Efi::at_i;

aMatrix* copy_of(EfiCallContext* ctx, const aMatrix* A)
{
    Anyval* copy = nullptr;
    ctx->m_arena->cp(reinterpret_cast<const Anyval*>(A), &copy, true, false);
    return &copy->m_matrix;
}

} // namespace

void real_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict)
{
    const std::size_t n = A->m_rows;
    double* const pivots = Efi::doubles(ctx, n);
    double* const b = Efi::doubles(ctx, n);
    aMatrix* const X = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, Efi::doubles(ctx, n * n), nullptr);
    aMatrix* const LU = copy_of(ctx, A);
    double sign;
    lu_decomp(ctx, LU, pivots, &sign, strict);
    for (std::size_t j = 0; j < n; ++j) {
        for (std::size_t i = 0; i < n; ++i)
            b[i] = i == j ? 1.0 : 0.0;
        for (std::size_t k = 0; k < n; ++k)
            std::swap(b[k], b[static_cast<std::size_t>(pivots[k])]);
        for (std::size_t k = 0; k < n; ++k)
            for (std::size_t i = k + 1; i < n; ++i)
                b[i] -= at(LU, i, k) * b[k];
        for (std::size_t k = n; k-- > 0;) {
            b[k] /= at(LU, k, k);
            for (std::size_t i = 0; i < k; ++i)
                b[i] -= at(LU, i, k) * b[k];
        }
        for (std::size_t i = 0; i < n; ++i)
            at(X, i, j) = b[i];
    }
    *result = X;
}

void complex_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict)
{
    const std::size_t n = A->m_rows;
    double* const pivots1 = Efi::doubles(ctx, n);
    aMatrix* const X =
        aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, Efi::doubles(ctx, n * n), Efi::doubles(ctx, n * n));
    aMatrix* const LU = copy_of(ctx, A);
    double sign;
    clu_decomp(ctx, LU, pivots1, &sign, strict);
    for (std::size_t j = 0; j < n; ++j) {
        double* const re = Efi::column(X, j);
        double* const im = Efi::column_i(X, j);
        re[j] = 1.0;
        for (std::size_t k = 0; k < n; ++k)
            std::swap(re[k], re[static_cast<std::size_t>(pivots1[k]) - 1]);
        const auto subtract = [&](std::size_t i, std::size_t k) {
            re[i] -= at(LU, i, k) * re[k] - at_i(LU, i, k) * im[k];
            im[i] -= at(LU, i, k) * im[k] + at_i(LU, i, k) * re[k];
        };
        for (std::size_t k = 0; k < n; ++k)
            for (std::size_t i = k + 1; i < n; ++i)
                subtract(i, k);
        for (std::size_t k = n; k-- > 0;) {
            const aComplex x = quotient({re[k], im[k]}, {at(LU, k, k), at_i(LU, k, k)});
            re[k] = x.m_re;
            im[k] = x.m_im;
            for (std::size_t i = 0; i < k; ++i)
                subtract(i, k);
        }
    }
    *result = X;
}

} // namespace plain
