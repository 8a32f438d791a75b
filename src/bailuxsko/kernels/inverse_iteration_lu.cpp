// Crout's factorisation with implicitly scaled rows and the solution that goes with it, for a complex matrix in rows
// (Press et al., Numerical Recipes, section 2.3).
// Ours: every element takes its products in ascending k, so that eliminating row by row gives the sums of Crout's
// method bit for bit; of equally scaled rows the last is the pivot row; a zero pivot becomes a tiny one.
#include "bailuxsko/kernels/inverse_iteration_lu.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/side_by_side.hpp"
#include "bailuxsko/kernels/tiles_complex.hpp"

#include "efiutl/complex_division.hpp"
#include "efiutl/records.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace native {
namespace {

constexpr double tiny_pivot = 1e-20;
constexpr int zero_row = 1;
constexpr int zero_diagonal = 2;
constexpr int no_memory = 10;

/// Stands for "none met yet" where the number of the first element of a right-hand side that is not zero is kept. It is
/// a number as any other: in a system of more than 7777 unknowns the element of this number is never the first one.
constexpr std::size_t none_yet = 7777;

constexpr std::size_t panel = 32;            // columns eliminated together
constexpr std::size_t smallest_blocked = 64; // from here on panels pay

/// What a panel's rows of U and the tiles of products need.
constexpr std::size_t workspace(std::size_t n)
{
    return 2 * panel * n + tiles::complex_workspace(n, panel);
}

/// A square matrix in rows, and what its factorisation gathers.
struct Rows {
    double** m_re;
    double** m_im;
    std::size_t m_n;
    int* m_exchanged;
    double* m_parity;
    double* m_scale;
    double* m_work;
};

double modulus_of_squares(double re, double im)
{
    return std::sqrt(re * re + im * im);
}

/// The reciprocal of every row's largest modulus; false when a row holds nothing but zeros.
bool scale_rows(const Rows& A)
{
    for (std::size_t i = 0; i < A.m_n; ++i) {
        double big = 0.0;
        for (std::size_t j = 0; j < A.m_n; ++j) {
            const double m = modulus_of_squares(A.m_re[i][j], A.m_im[i][j]);
            big = m > big ? m : big;
        }
        if (big == 0.0)
            return false;
        A.m_scale[i] = 1.0 / big;
    }
    return true;
}

/// The row of the largest scaled modulus in column k, from row k on; the last of equals wins.
std::size_t find_pivot(const Rows& A, std::size_t k)
{
    double best = 0.0;
    std::size_t p = k;
    for (std::size_t i = k; i < A.m_n; ++i) {
        const double t = A.m_scale[i] * modulus_of_squares(A.m_re[i][k], A.m_im[i][k]);
        if (t >= best) {
            best = t;
            p = i;
        }
    }
    return p;
}

/// From column `from` to before `to`, row i loses a multiple of row k.
[[gnu::always_inline]] inline void subtract_multiple(const Rows& A, std::size_t i, std::size_t k, std::size_t from,
                                                     std::size_t to)
{
    const double* const u_re = A.m_re[k];
    const double* const u_im = A.m_im[k];
    double* const __restrict a_re = A.m_re[i];
    double* const __restrict a_im = A.m_im[i];
    const double l_re = a_re[k];
    const double l_im = a_im[k];
    for (std::size_t j = from; j < to; ++j) {
        a_re[j] -= l_re * u_re[j] - l_im * u_im[j];
        a_im[j] -= l_re * u_im[j] + l_im * u_re[j];
    }
}

/// Step k in the columns of a panel, up to before `to`: the multipliers, and what they leave of the rows below.
[[gnu::always_inline]] inline void eliminate_below(const Rows& A, std::size_t k, std::size_t to)
{
    aComplex reciprocal;
    Efi::cpxd(1.0, 0.0, A.m_re[k][k], A.m_im[k][k], reciprocal.m_re, reciprocal.m_im);
    for (std::size_t i = k + 1; i < A.m_n; ++i) {
        const double re = A.m_re[i][k];
        const double im = A.m_im[i][k];
        A.m_re[i][k] = re * reciprocal.m_re - im * reciprocal.m_im;
        A.m_im[i][k] = re * reciprocal.m_im + im * reciprocal.m_re;
        subtract_multiple(A, i, k, k + 1, to);
    }
}

/// Steps `from` to before `to`: all that they do to their own columns, then the rows of U that they give the columns to
/// their right.
[[gnu::always_inline]] inline void eliminate_panel(const Rows& A, std::size_t from, std::size_t to)
{
    for (std::size_t k = from; k < to; ++k) {
        const std::size_t p = find_pivot(A, k);
        if (p != k) {
            std::swap(A.m_re[k], A.m_re[p]);
            std::swap(A.m_im[k], A.m_im[p]);
            std::swap(A.m_scale[k], A.m_scale[p]);
            *A.m_parity = -*A.m_parity;
        }
        A.m_exchanged[k] = static_cast<int>(p);
        if (A.m_re[k][k] == 0.0 && A.m_im[k][k] == 0.0)
            A.m_re[k][k] = tiny_pivot;
        if (k + 1 < A.m_n)
            eliminate_below(A, k, to);
    }
    if (to < A.m_n)
        for (std::size_t i = from + 1; i < to; ++i)
            for (std::size_t k = from; k < i; ++k)
                subtract_multiple(A, i, k, to, A.m_n);
}

void eliminate_panel_baseline(const Rows& A, std::size_t from, std::size_t to)
{
    eliminate_panel(A, from, to);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void eliminate_panel_avx2(const Rows& A, std::size_t from, std::size_t to)
{
    eliminate_panel(A, from, to);
}
#else
constexpr auto eliminate_panel_avx2 = eliminate_panel_baseline;
#endif

/// What steps `from` to before `to` leave of the rows and columns behind them. The tiles of products take their left
/// factor in columns, so a row of ours is a column to them: it loses the panel's rows of U times its own multipliers.
template <class Vector>
[[gnu::always_inline]] inline void subtract_products(const Rows& A, std::size_t from, std::size_t to)
{
    const std::size_t left = A.m_n - to;
    const auto multipliers = [&](std::size_t i) { return tiles::Parts{A.m_re[to + i] + from, A.m_im[to + i] + from}; };
    const auto row = [&](std::size_t i) { return tiles::WritableParts{A.m_re[to + i] + to, A.m_im[to + i] + to}; };
    double* const upper_re = A.m_work;
    double* const upper_im = A.m_work + panel * A.m_n;
    for (std::size_t k = from; k < to; ++k) {
        std::copy(A.m_re[k] + to, A.m_re[k] + A.m_n, upper_re + (k - from) * left);
        std::copy(A.m_im[k] + to, A.m_im[k] + A.m_n, upper_im + (k - from) * left);
    }
    tiles::rows_of_complex_product<tiles::Update::subtract, Vector>(
        {upper_re, upper_im}, left, 0, left, left, to - from, multipliers, row, A.m_work + 2 * panel * A.m_n);
}

void subtract_products_baseline(const Rows& A, std::size_t from, std::size_t to)
{
    subtract_products<side_by_side::Two>(A, from, to);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void subtract_products_avx2(const Rows& A, std::size_t from, std::size_t to)
{
    subtract_products<side_by_side::Four>(A, from, to);
}

[[gnu::target("avx512f")]] void subtract_products_avx512(const Rows& A, std::size_t from, std::size_t to)
{
    subtract_products<side_by_side::Eight>(A, from, to);
}
#else
constexpr auto subtract_products_avx2 = subtract_products_baseline;
constexpr auto subtract_products_avx512 = subtract_products_baseline;
#endif

void eliminate(const Rows& A, std::size_t width)
{
    for (std::size_t from = 0; from < A.m_n; from += width) {
        const std::size_t to = std::min(from + width, A.m_n);
        at_level(eliminate_panel_baseline, eliminate_panel_avx2)(A, from, to);
        if (to < A.m_n)
            at_level(subtract_products_baseline, subtract_products_avx2, subtract_products_avx512)(A, from, to);
    }
}

} // namespace

int Lludcmp(EfiCallContext* ctx, double** re, double** im, std::uint32_t n, int* exchanged, double* parity)
{
    const bool blocked = n >= smallest_blocked;
    const Rows A{.m_re = re,
                 .m_im = im,
                 .m_n = n,
                 .m_exchanged = exchanged,
                 .m_parity = parity,
                 .m_scale = doubles_or_null(ctx, n),
                 .m_work = blocked ? doubles_or_null(ctx, workspace(n)) : nullptr};
    if (A.m_scale == nullptr || (blocked && A.m_work == nullptr))
        return no_memory;
    *parity = 1.0;
    if (!scale_rows(A))
        return zero_row;
    eliminate(A, blocked ? panel : n);
    return 0;
}

int Llubksb(double* const* re, double* const* im, std::uint32_t n, const int* exchanged, double* b_re, double* b_im)
{
    std::size_t first = none_yet;
    for (std::size_t i = 0; i < n; ++i) {
        const auto p = static_cast<std::size_t>(exchanged[i]);
        aComplex sum{.m_re = b_re[p], .m_im = b_im[p]};
        b_re[p] = b_re[i];
        b_im[p] = b_im[i];
        if (first != none_yet) {
            for (std::size_t j = first; j < i; ++j) {
                sum.m_re -= re[i][j] * b_re[j] - im[i][j] * b_im[j];
                sum.m_im -= re[i][j] * b_im[j] + im[i][j] * b_re[j];
            }
        } else if (sum.m_re != 0.0 || sum.m_im != 0.0) {
            first = i;
        }
        b_re[i] = sum.m_re;
        b_im[i] = sum.m_im;
    }
    for (std::size_t i = n; i-- > 0;) {
        aComplex sum{.m_re = b_re[i], .m_im = b_im[i]};
        for (std::size_t j = i + 1; j < n; ++j) {
            sum.m_re -= re[i][j] * b_re[j] - im[i][j] * b_im[j];
            sum.m_im -= re[i][j] * b_im[j] + im[i][j] * b_re[j];
        }
        if (re[i][i] == 0.0 && im[i][i] == 0.0)
            return zero_diagonal;
        Efi::cpxd(sum.m_re, sum.m_im, re[i][i], im[i][i], b_re[i], b_im[i]);
    }
    return 0;
}

} // namespace native
