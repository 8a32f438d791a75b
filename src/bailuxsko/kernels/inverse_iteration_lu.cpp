// Crout's factorisation with implicitly scaled rows and the solution that goes with it, for a complex matrix in rows
// (Press et al., Numerical Recipes, section 2.3).
// Ours: every element takes its products in ascending k, so that eliminating row by row gives the sums of Crout's
// method bit for bit; of equally scaled rows the last is the pivot row; a zero pivot becomes a tiny one.
#include "bailuxsko/kernels/inverse_iteration_lu.hpp"

#include "bailuxsko/kernels/levels.hpp"

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

struct Rows {
    double** m_re;
    double** m_im;
    std::size_t m_n;
    double* m_scale;
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

/// A row loses a multiple of row k.
[[gnu::always_inline]] inline void subtract_multiple(const Rows& A, std::size_t i, std::size_t k)
{
    const double* const u_re = A.m_re[k];
    const double* const u_im = A.m_im[k];
    double* const __restrict a_re = A.m_re[i];
    double* const __restrict a_im = A.m_im[i];
    const double l_re = a_re[k];
    const double l_im = a_im[k];
    for (std::size_t j = k + 1; j < A.m_n; ++j) {
        a_re[j] -= l_re * u_re[j] - l_im * u_im[j];
        a_im[j] -= l_re * u_im[j] + l_im * u_re[j];
    }
}

[[gnu::always_inline]] inline void eliminate_below(const Rows& A, std::size_t k)
{
    aComplex reciprocal;
    Efi::cpxd(1.0, 0.0, A.m_re[k][k], A.m_im[k][k], reciprocal.m_re, reciprocal.m_im);
    for (std::size_t i = k + 1; i < A.m_n; ++i) {
        const double re = A.m_re[i][k];
        const double im = A.m_im[i][k];
        A.m_re[i][k] = re * reciprocal.m_re - im * reciprocal.m_im;
        A.m_im[i][k] = re * reciprocal.m_im + im * reciprocal.m_re;
        subtract_multiple(A, i, k);
    }
}

[[gnu::always_inline]] inline void eliminate(const Rows& A, int* exchanged, double* parity)
{
    for (std::size_t k = 0; k < A.m_n; ++k) {
        const std::size_t p = find_pivot(A, k);
        if (p != k) {
            std::swap(A.m_re[k], A.m_re[p]);
            std::swap(A.m_im[k], A.m_im[p]);
            std::swap(A.m_scale[k], A.m_scale[p]);
            *parity = -*parity;
        }
        exchanged[k] = static_cast<int>(p);
        if (A.m_re[k][k] == 0.0 && A.m_im[k][k] == 0.0)
            A.m_re[k][k] = tiny_pivot;
        if (k + 1 < A.m_n)
            eliminate_below(A, k);
    }
}

void eliminate_baseline(const Rows& A, int* exchanged, double* parity)
{
    eliminate(A, exchanged, parity);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void eliminate_avx2(const Rows& A, int* exchanged, double* parity)
{
    eliminate(A, exchanged, parity);
}
#else
constexpr auto eliminate_avx2 = eliminate_baseline;
#endif

} // namespace

int Lludcmp(EfiCallContext* ctx, double** re, double** im, std::uint32_t n, int* exchanged, double* parity)
{
    const Rows A{.m_re = re, .m_im = im, .m_n = n, .m_scale = doubles_or_null(ctx, n)};
    if (A.m_scale == nullptr)
        return no_memory;
    *parity = 1.0;
    if (!scale_rows(A))
        return zero_row;
    at_level(eliminate_baseline, eliminate_avx2)(A, exchanged, parity);
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
