// Cholesky-Banachiewicz (Golub and Van Loan, Matrix Computations, section 4.2).
// Ours: reads the upper triangle and writes L below it; a pivot of exactly 0.0 is refused too; every element takes its
// products in ascending k. The work is done on strips of rows (cholesky_strips.hpp), which gives the same bits.
#include "bailuxsko/kernels/cholesky.hpp"

#include "bailuxsko/kernels/cholesky_strips.hpp"
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

constexpr std::size_t height = Strips::height;

/// The upper triangle of A, mirrored, into strips.
void load(const aMatrix* A, const Strips& M)
{
    const std::size_t last = M.m_n - 1;
    for (std::size_t s = 0; s < M.count(); ++s) {
        const double* row[height]; // a row of the mirrored triangle is a column of the upper one
        for (std::size_t i = 0; i < height; ++i)
            row[i] = Efi::column(A, std::min(s * height + i, last));
        double* to = M.strip(s);
        for (std::size_t k = 0; k < s * height; ++k, to += height)
            for (std::size_t i = 0; i < height; ++i)
                to[i] = row[i][k];
        for (std::size_t k = 0; k < height; ++k, to += height)
            for (std::size_t i = 0; i < height; ++i)
                to[i] = row[std::max(i, k)][std::min(s * height + std::min(i, k), last)];
    }
}

/// L from its strips, with zeros above the diagonal.
void store(const Strips& M, aMatrix* L)
{
    for (std::size_t j = 0; j < M.m_n; ++j) {
        double* const to = Efi::column(L, j);
        std::fill_n(to, j, 0.0);
        std::size_t i = j;
        for (; i < M.m_n && i % height != 0; ++i)
            to[i] = M.strip(i / height)[j * height + i % height];
        for (; i + height <= M.m_n; i += height)
            std::copy_n(M.strip(i / height) + j * height, height, to + i);
        for (; i < M.m_n; ++i)
            to[i] = M.strip(i / height)[j * height + i % height];
    }
}

/// L of the matrix whose upper triangle is A's; both may be one record.
void factorise(EfiCallContext* ctx, const aMatrix* A, aMatrix* L)
{
    if (A->m_rows == 0)
        return;
    require_real_array(A);
    const Strips M{.m_elements = Efi::uncleared_doubles(ctx, Strips::size(A->m_rows)), .m_n = A->m_rows};
    load(A, M);
    if (!at_level(factorise_strips_baseline, factorise_strips_avx2, factorise_strips_avx512)(M))
        Efi::Throw(msg::non_positive_definite_matrix, -1);
    store(M, L);
}

} // namespace

void choldc(EfiCallContext* ctx, aMatrix* A)
{
    factorise(ctx, A, A);
}

aMatrix* cholesky(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_rows != A->m_cols)
        Efi::Throw(msg::must_be_square, 1);
    double* const elements = Efi::uncleared_doubles(ctx, std::uint64_t{A->m_rows} * A->m_rows);
    aMatrix* const L = aMatrix::mk(ctx->m_arena, A->m_rows, A->m_rows, elements, nullptr);
    factorise(ctx, A, L);
    return L;
}

} // namespace native
