// The transpose, a square tile at a time: the tile's rows and columns both stay in the nearest cache while it moves.
#include "bailuxsko/kernels/transpose.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

constexpr std::size_t tile = 32; // rows and columns: 8 KiB read and 8 KiB written

double* transposed(EfiCallContext* ctx, const aMatrix* A, const double* a)
{
    if (a == nullptr)
        return nullptr;
    const std::size_t rows = A->m_rows;
    const std::size_t cols = A->m_cols;
    const std::size_t ld = A->m_anr;
    double* const t = Efi::uncleared_doubles(ctx, std::uint64_t{rows} * cols);
    for (std::size_t from_j = 0; from_j < cols; from_j += tile)
        for (std::size_t from_i = 0; from_i < rows; from_i += tile)
            for (std::size_t i = from_i; i < std::min(from_i + tile, rows); ++i)
                for (std::size_t j = from_j; j < std::min(from_j + tile, cols); ++j)
                    t[j + i * cols] = a[i + j * ld];
    return t;
}

} // namespace

aMatrix* mat_transpose(EfiCallContext* ctx, const aMatrix* A)
{
    double* const real = transposed(ctx, A, A->m_rv);
    double* const imaginary = transposed(ctx, A, A->m_iv);
    return aMatrix::mk(ctx->m_arena, A->m_cols, A->m_rows, real, imaginary);
}

} // namespace native
