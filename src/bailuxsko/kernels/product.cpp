// Matrix products: small ones column by column, large ones in tiles that stay in registers (Goto and van de Geijn,
// Anatomy of high-performance matrix multiplication, ACM TOMS 34, 2008).
// Ours: every element's sum starts at +0.0 and takes its terms in ascending k, so that both forms give the same bits.
#include "bailuxsko/kernels/product.hpp"

#include "bailuxsko/kernels/few_rows.hpp"
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/tiles.hpp"
#include "bailuxsko/kernels/tiles_complex.hpp"
#include "efiutl/columns.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

using few_rows::Factors;

[[gnu::always_inline]] inline void multiply_columns(const Factors& F)
{
    for (std::size_t j = 0; j < F.n; ++j) {
        double* const __restrict c = F.C + j * F.m;
        std::fill_n(c, F.m, 0.0);
        for (std::size_t k = 0; k < F.depth; ++k) {
            const double* const a = F.A + k * F.lda;
            const double b = F.B[k + j * F.ldb];
            for (std::size_t i = 0; i < F.m; ++i)
                c[i] += a[i] * b;
        }
    }
}

template <class Vector>
[[gnu::always_inline]] inline void multiply_tiles(const Factors& F, double* packed)
{
    tiles::rows_of_product<tiles::Update::product, Vector>(
        F.A, F.lda, 0, F.m, F.n, F.depth, [&](std::size_t j) { return F.B + j * F.ldb; },
        [&](std::size_t j) { return F.C + j * F.m; }, packed);
}

/// Both arrays of two complex factors.
struct ComplexFactors {
    const aMatrix* A;
    const aMatrix* B;
    aMatrix* C;
};

[[gnu::always_inline]] inline void multiply_complex_columns(const ComplexFactors& F)
{
    const std::size_t m = F.A->m_rows;
    for (std::size_t j = 0; j < F.B->m_cols; ++j) {
        double* const __restrict re = Efi::column(F.C, j);
        double* const __restrict im = Efi::column_i(F.C, j);
        std::fill_n(re, m, 0.0);
        std::fill_n(im, m, 0.0);
        for (std::size_t k = 0; k < F.A->m_cols; ++k) {
            const double* const a_re = Efi::column(F.A, k);
            const double* const a_im = Efi::column_i(F.A, k);
            const double b_re = Efi::at(F.B, k, j);
            const double b_im = Efi::at_i(F.B, k, j);
            for (std::size_t i = 0; i < m; ++i) {
                re[i] += a_re[i] * b_re - a_im[i] * b_im;
                im[i] += a_re[i] * b_im + a_im[i] * b_re;
            }
        }
    }
}

template <class Vector>
[[gnu::always_inline]] inline void multiply_complex_tiles(const ComplexFactors& F, double* packed)
{
    tiles::rows_of_complex_product<tiles::Update::product, Vector>(
        {F.A->m_rv, F.A->m_iv}, F.A->m_anr, 0, F.A->m_rows, F.B->m_cols, F.A->m_cols,
        [&](std::size_t j) {
            return tiles::Parts{Efi::column(F.B, j), Efi::column_i(F.B, j)};
        },
        [&](std::size_t j) {
            return tiles::WritableParts{Efi::column(F.C, j), Efi::column_i(F.C, j)};
        },
        packed);
}

void few_rows_baseline(const Factors& F)
{
    few_rows::multiply<few_rows::Four>(F);
}
void columns_baseline(const Factors& F)
{
    multiply_columns(F);
}
void tiles_baseline(const Factors& F, double* packed)
{
    multiply_tiles<tiles::Two>(F, packed);
}
void complex_baseline(const ComplexFactors& F)
{
    multiply_complex_columns(F);
}
void complex_tiles_baseline(const ComplexFactors& F, double* packed)
{
    multiply_complex_tiles<tiles::Two>(F, packed);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void few_rows_avx2(const Factors& F)
{
    few_rows::multiply<few_rows::Four>(F);
}
[[gnu::target("avx2")]] void columns_avx2(const Factors& F)
{
    multiply_columns(F);
}
[[gnu::target("avx2")]] void tiles_avx2(const Factors& F, double* packed)
{
    multiply_tiles<tiles::Four>(F, packed);
}
[[gnu::target("avx2")]] void complex_avx2(const ComplexFactors& F)
{
    multiply_complex_columns(F);
}
[[gnu::target("avx2")]] void complex_tiles_avx2(const ComplexFactors& F, double* packed)
{
    multiply_complex_tiles<tiles::Four>(F, packed);
}
[[gnu::target("avx512f")]] void few_rows_avx512(const Factors& F)
{
    few_rows::multiply<few_rows::Eight>(F);
}
[[gnu::target("avx512f")]] void tiles_avx512(const Factors& F, double* packed)
{
    multiply_tiles<tiles::Eight>(F, packed);
}
[[gnu::target("avx512f")]] void complex_tiles_avx512(const ComplexFactors& F, double* packed)
{
    multiply_complex_tiles<tiles::Eight>(F, packed);
}
#else
constexpr auto few_rows_avx2 = few_rows_baseline;
constexpr auto columns_avx2 = columns_baseline;
constexpr auto tiles_avx2 = tiles_baseline;
constexpr auto complex_avx2 = complex_baseline;
constexpr auto complex_tiles_avx2 = complex_tiles_baseline;
constexpr auto few_rows_avx512 = few_rows_baseline;
constexpr auto tiles_avx512 = tiles_baseline;
constexpr auto complex_tiles_avx512 = complex_tiles_baseline;
#endif

double* real_product(EfiCallContext* ctx, const aMatrix* A, const double* a, const aMatrix* B, const double* b)
{
    double* const c = Efi::uncleared_doubles(ctx, std::uint64_t{A->m_rows} * B->m_cols + few_rows::most_surplus);
    const Factors F{
        .A = a, .lda = A->m_anr, .B = b, .ldb = B->m_anr, .C = c, .m = A->m_rows, .n = B->m_cols, .depth = A->m_cols};
    if (few_rows::suits(F.m, F.depth))
        at_level(few_rows_baseline, few_rows_avx2, few_rows_avx512)(F);
    else if (F.m <= few_rows::most_rows || F.depth == 0) // without terms no tile would be written
        at_level(columns_baseline, columns_avx2)(F);
    else
        at_level(tiles_baseline, tiles_avx2, tiles_avx512)(F,
                                                           Efi::uncleared_doubles(ctx, tiles::workspace(F.m, F.depth)));
    return c;
}

} // namespace

aMatrix* product(EfiCallContext* ctx, const aMatrix* A, const aMatrix* B)
{
    if (A->m_iv != nullptr && B->m_iv != nullptr) {
        const std::uint64_t count = std::uint64_t{A->m_rows} * B->m_cols;
        double* const re = Efi::uncleared_doubles(ctx, count);
        double* const im = Efi::uncleared_doubles(ctx, count);
        aMatrix* const C = aMatrix::mk(ctx->m_arena, A->m_rows, B->m_cols, re, im);
        const ComplexFactors F{.A = A, .B = B, .C = C};
        if (A->m_rows <= few_rows::most_rows || A->m_cols == 0)
            at_level(complex_baseline, complex_avx2)(F);
        else
            at_level(complex_tiles_baseline, complex_tiles_avx2, complex_tiles_avx512)(
                F, Efi::uncleared_doubles(ctx, tiles::complex_workspace(A->m_rows, A->m_cols)));
        return C;
    }
    double* const re = real_product(ctx, A, A->m_rv, B, B->m_rv);
    double* im = nullptr;
    if (A->m_iv != nullptr)
        im = real_product(ctx, A, A->m_iv, B, B->m_rv);
    else if (B->m_iv != nullptr)
        im = real_product(ctx, A, A->m_rv, B, B->m_iv);
    return aMatrix::mk(ctx->m_arena, A->m_rows, B->m_cols, re, im);
}

void drop_zero_imaginary(aMatrix* A)
{
    if (A->m_iv == nullptr)
        return;
    for (std::size_t j = 0; j < A->m_cols; ++j)
        for (std::size_t i = 0; i < A->m_rows; ++i)
            if (Efi::at_i(A, i, j) != 0.0)
                return;
    A->m_iv = nullptr;
}

} // namespace native
