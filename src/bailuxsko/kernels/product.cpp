// Matrix products: small ones column by column, large ones in tiles that stay in registers (Goto and van de Geijn,
// Anatomy of high-performance matrix multiplication, ACM TOMS 34, 2008).
// Ours: every element's sum starts at +0.0 and takes its terms in ascending k, so that both forms give the same bits.
#include "bailuxsko/kernels/product.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/tiles.hpp"
#include "bailuxsko/kernels/tiles_complex.hpp"
#include "efiutl/columns.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

/// One array of each factor and of the product, which is m by n and packed.
struct RealFactors {
    const double* A;
    std::size_t lda;
    const double* B;
    std::size_t ldb;
    double* C;
    std::size_t m;
    std::size_t n;
    std::size_t depth;
};

/// With so few rows a tile would mostly repeat them.
constexpr std::size_t rows_for_tiles = 17;

/// A left factor of at most so many columns is small enough to be copied with its rows filled up to whole vectors.
constexpr std::size_t smallest_depth = 16;
constexpr std::size_t columns_at_once = 4;

/// What multiply_small writes behind the last element of the product.
constexpr std::size_t most_surplus = 3;

/// A left factor of at most 4 * vectors rows and smallest_depth columns, all of whose sums for some columns stay in
/// registers. The rows that fill the last vector repeat the last real one, columns beyond the edge the last column.
template <std::size_t vectors>
[[gnu::always_inline]] inline void multiply_small(const RealFactors& F)
{
    using tiles::Four;
    Four A[smallest_depth][vectors];
    for (std::size_t k = 0; k < F.depth; ++k)
        for (std::size_t i = 0; i < 4 * vectors; ++i)
            A[k][i / 4][i % 4] = F.A[k * F.lda + std::min(i, F.m - 1)];
    for (std::size_t j = 0; j < F.n; j += columns_at_once) {
        Four sum[columns_at_once][vectors] = {};
        for (std::size_t k = 0; k < F.depth; ++k)
            for (std::size_t c = 0; c < columns_at_once; ++c) {
                const double b = F.B[k + std::min(j + c, F.n - 1) * F.ldb];
                for (std::size_t v = 0; v < vectors; ++v)
                    sum[c][v] += A[k][v] * b;
            }
        for (std::size_t c = 0; c < std::min(columns_at_once, F.n - j); ++c)
            for (std::size_t v = 0; v < vectors; ++v) // the surplus goes where the next column will stand
                __builtin_memcpy(F.C + (j + c) * F.m + 4 * v, &sum[c][v], sizeof(Four));
    }
}

/// By the number of vectors that hold a column of the left factor.
[[gnu::always_inline]] inline void multiply_few_rows(const RealFactors& F)
{
    if (F.m <= 4)
        multiply_small<1>(F);
    else if (F.m <= 8)
        multiply_small<2>(F);
    else
        multiply_small<3>(F);
}

[[gnu::always_inline]] inline void multiply_columns(const RealFactors& F)
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
[[gnu::always_inline]] inline void multiply_tiles(const RealFactors& F, double* packed)
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

void few_rows_baseline(const RealFactors& F)
{
    multiply_few_rows(F);
}
void columns_baseline(const RealFactors& F)
{
    multiply_columns(F);
}
void tiles_baseline(const RealFactors& F, double* packed)
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
[[gnu::target("avx2")]] void few_rows_avx2(const RealFactors& F)
{
    multiply_few_rows(F);
}
[[gnu::target("avx2")]] void columns_avx2(const RealFactors& F)
{
    multiply_columns(F);
}
[[gnu::target("avx2")]] void tiles_avx2(const RealFactors& F, double* packed)
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
[[gnu::target("avx512f")]] void tiles_avx512(const RealFactors& F, double* packed)
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
constexpr auto tiles_avx512 = tiles_baseline;
constexpr auto complex_tiles_avx512 = complex_tiles_baseline;
#endif

double* real_product(EfiCallContext* ctx, const aMatrix* A, const double* a, const aMatrix* B, const double* b)
{
    double* const c = Efi::uncleared_doubles(ctx, std::uint64_t{A->m_rows} * B->m_cols + most_surplus);
    const RealFactors F{
        .A = a, .lda = A->m_anr, .B = b, .ldb = B->m_anr, .C = c, .m = A->m_rows, .n = B->m_cols, .depth = A->m_cols};
    if (F.m == 0) // a vector of surplus rows would be more than most_surplus
        return c;
    if (F.m <= 12 && F.depth <= smallest_depth)
        at_level(few_rows_baseline, few_rows_avx2)(F);
    else if (F.m < rows_for_tiles)
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
        if (A->m_rows < rows_for_tiles)
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
