// Gaussian elimination of a complex matrix with implicitly scaled rows (Golub and Van Loan, Matrix Computations,
// sections 3.2 and 3.4), column by column through memory.
// Ours: other than in the real routine the first of equally scaled rows is the pivot row, pivots are counted from 1,
// and the strict test knows no threshold. Multipliers are quotients by Smith's method.
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/kernels/lu_steps.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace native {
namespace {

/// Both parts of a square matrix.
struct BothParts {
    double* m_re;
    double* m_im;
    std::size_t m_ld;
    std::size_t m_n;

    double re(std::size_t i, std::size_t j) const { return m_re[i + j * m_ld]; }
    double im(std::size_t i, std::size_t j) const { return m_im[i + j * m_ld]; }
    void store(std::size_t i, std::size_t j, double re, double im) const
    {
        m_re[i + j * m_ld] = re;
        m_im[i + j * m_ld] = im;
    }
};

/// A square matrix that came without an imaginary array, and gets one with the first imaginary part that is not zero.
/// Until then imaginary parts are read as +0.0, whatever the sign of the zeros that would have been stored.
struct RealSoFar {
    EfiCallContext* m_ctx;
    aMatrix* m_A;
    std::size_t m_n;

    double re(std::size_t i, std::size_t j) const { return Efi::at(m_A, i, j); }
    double im(std::size_t i, std::size_t j) const
    {
        return m_A->m_iv != nullptr ? Efi::at_i(m_A, i, j) : aMatrix::m_zero;
    }
    void store(std::size_t i, std::size_t j, double re, double im) const
    {
        Efi::at(m_A, i, j) = re;
        Efi::store_i(m_ctx, m_A, i, j, im);
    }
};

/// sqrt(re^2 + im^2) without squaring anything larger than 1.
[[gnu::always_inline]] inline double modulus(double re, double im)
{
    const double a = std::fabs(re);
    const double b = std::fabs(im);
    if (re == 0.0)
        return b;
    if (im == 0.0)
        return a;
    if (a > b)
        return a * std::sqrt(1.0 + (b / a) * (b / a));
    return b * std::sqrt(1.0 + (a / b) * (a / b));
}

template <typename Matrix>
[[gnu::always_inline]] inline double modulus(const Matrix& A, std::size_t i, std::size_t j)
{
    return modulus(A.re(i, j), A.im(i, j));
}

/// The reciprocal of every row's largest modulus; false when a row holds nothing but zeros.
template <typename Matrix>
[[gnu::always_inline]] inline bool scale_rows(const Matrix& A, double* scale)
{
    std::fill_n(scale, A.m_n, 0.0);
    for (std::size_t j = 0; j < A.m_n; ++j)
        for (std::size_t i = 0; i < A.m_n; ++i) {
            const double m = modulus(A, i, j);
            scale[i] = m > scale[i] ? m : scale[i];
        }
    if (std::find(scale, scale + A.m_n, 0.0) != scale + A.m_n)
        return false;
    for (std::size_t i = 0; i < A.m_n; ++i)
        scale[i] = 1.0 / scale[i];
    return true;
}

/// The row of the largest scaled modulus in column k, from row k on; the first of equals wins. Row k stays where no
/// modulus is a number.
template <typename Matrix>
[[gnu::always_inline]] inline std::size_t find_pivot(const Matrix& A, const double* scale, std::size_t k)
{
    raise_flags_of(modulus(A, k, k) * scale[k]); // in the last step there is nothing to compare it with
    double best = -1.0;
    std::size_t p = k;
    for (std::size_t i = k; i < A.m_n; ++i) {
        const double t = modulus(A, i, k) * scale[i];
        if (t > best) {
            best = t;
            p = i;
        }
    }
    return p;
}

template <typename Matrix>
[[gnu::always_inline]] inline void exchange_rows(const Matrix& A, std::size_t k, std::size_t p)
{
    for (std::size_t j = 0; j < A.m_n; ++j) {
        const double re = A.re(k, j);
        const double im = A.im(k, j);
        A.store(k, j, A.re(p, j), A.im(p, j));
        A.store(p, j, re, im);
    }
}

/// Division by the pivot c + i d, by Smith's method.
struct SmithDivisor {
    bool m_by_real; // the real part is the larger one
    double m_ratio;
    double m_den;

    SmithDivisor(double c, double d) : m_by_real(std::fabs(c) >= std::fabs(d))
    {
        m_ratio = m_by_real ? d / c : c / d;
        m_den = m_by_real ? c + m_ratio * d : m_ratio * c + d;
    }
    aComplex quotient(double x, double y) const
    {
        if (m_by_real)
            return {.m_re = (x + m_ratio * y) / m_den, .m_im = (y - m_ratio * x) / m_den};
        return {.m_re = (m_ratio * x + y) / m_den, .m_im = (m_ratio * y - x) / m_den};
    }
};

/// The multipliers of column k.
[[gnu::always_inline]] inline void form_multipliers(const BothParts& A, std::size_t k)
{
    double* const re = A.m_re + k * A.m_ld;
    double* const im = A.m_im + k * A.m_ld;
    const SmithDivisor pivot(re[k], im[k]);
    for (std::size_t i = k + 1; i < A.m_n; ++i) {
        const aComplex m = pivot.quotient(re[i], im[i]);
        re[i] = m.m_re;
        im[i] = m.m_im;
    }
}

/// What step k leaves of column j.
[[gnu::always_inline]] inline void subtract_multiple(const BothParts& A, std::size_t k, std::size_t j)
{
    const double* const l_re = A.m_re + k * A.m_ld;
    const double* const l_im = A.m_im + k * A.m_ld;
    double* const __restrict c_re = A.m_re + j * A.m_ld;
    double* const __restrict c_im = A.m_im + j * A.m_ld;
    const double u_re = c_re[k];
    const double u_im = c_im[k];
    for (std::size_t i = k + 1; i < A.m_n; ++i) {
        c_re[i] -= l_re[i] * u_re - l_im[i] * u_im;
        c_im[i] -= l_re[i] * u_im + l_im[i] * u_re;
    }
}

[[gnu::always_inline]] inline void eliminate_below(const BothParts& A, std::size_t k)
{
    form_multipliers(A, k);
    for (std::size_t j = k + 1; j < A.m_n; ++j)
        subtract_multiple(A, k, j);
}

/// Row by row, as in the textbook: the order decides which zeros are dropped before the array is there.
void eliminate_below(const RealSoFar& A, std::size_t k)
{
    const SmithDivisor pivot(A.re(k, k), A.im(k, k));
    for (std::size_t i = k + 1; i < A.m_n; ++i) {
        const aComplex m = pivot.quotient(A.re(i, k), A.im(i, k));
        A.store(i, k, m.m_re, m.m_im);
        for (std::size_t j = k + 1; j < A.m_n; ++j) {
            const double re = A.re(i, k) * A.re(k, j) - A.im(i, k) * A.im(k, j);
            const double im = A.re(i, k) * A.im(k, j) + A.im(i, k) * A.re(k, j);
            A.store(i, j, A.re(i, j) - re, A.im(i, j) - im);
        }
    }
}

/// All steps; false at a row of zeros and at a pivot both of whose parts are exactly zero.
template <typename Matrix>
[[gnu::always_inline]] inline bool eliminate(const Matrix& A, double* scale, double* pivots1, double* sign)
{
    if (!scale_rows(A, scale))
        return false;
    for (std::size_t k = 0; k < A.m_n; ++k) {
        const std::size_t p = find_pivot(A, scale, k);
        if (p != k) {
            exchange_rows(A, k, p);
            *sign = -*sign;
            scale[p] = scale[k];
        }
        if (pivots1 != nullptr)
            pivots1[k] = static_cast<double>(p + 1);
        if (A.re(k, k) == 0.0 && A.im(k, k) == 0.0)
            return false;
        if (k + 1 < A.m_n) // else there is nothing to divide, and the pivot is not looked at
            eliminate_below(A, k);
        scale[k] = largest(A.m_n - k - 1, 1.0, [&](std::size_t i) { return modulus(A, k + 1 + i, k); });
    }
    return true;
}

bool eliminate_baseline(const BothParts& A, double* scale, double* pivots1, double* sign)
{
    return eliminate(A, scale, pivots1, sign);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool eliminate_avx2(const BothParts& A, double* scale, double* pivots1, double* sign)
{
    return eliminate(A, scale, pivots1, sign);
}
#else
constexpr auto eliminate_avx2 = eliminate_baseline;
#endif

/// The largest modulus of U(k, j) times the growth bound of step k, over all steps but the last. The strict test has
/// no use for it.
double growth(const aMatrix* A, const double* bound)
{
    const std::size_t n = A->m_rows;
    double g = 0.0;
    for (std::size_t j = 0; j < n; ++j)
        g = largest(std::min(j + 1, n - 1), g,
                    [=](std::size_t k) { return modulus(Efi::at(A, k, j), Efi::at_i(A, k, j)) * bound[k]; });
    return g;
}

/// Every element of the diagonal is final at its own step, so one test after the last step refuses the same matrices
/// as one at every step. The squares may vanish although the element is not zero: that is refused too.
bool passes_strict_test(const aMatrix* A)
{
    for (std::size_t i = 0; i < A->m_rows; ++i) {
        const double re = Efi::at(A, i, i);
        const double im = Efi::at_i(A, i, i);
        if (std::sqrt(re * re + im * im) == 0.0)
            return false;
    }
    return true;
}

} // namespace

void clu_decomp(EfiCallContext* ctx, aMatrix* A, double* pivots, double* sign, bool strict)
{
    *sign = 1.0;
    require_square(A);
    if (A->m_rv == nullptr)
        Efi::Throw(msg::unknown_error, -1);
    double* const scale = Efi::uncleared_doubles(ctx, A->m_rows);
    const bool regular =
        A->m_iv != nullptr
            ? at_level(eliminate_baseline, eliminate_avx2)(
                  {.m_re = A->m_rv, .m_im = A->m_iv, .m_ld = A->m_anr, .m_n = A->m_rows}, scale, pivots, sign)
            : eliminate(RealSoFar{.m_ctx = ctx, .m_A = A, .m_n = A->m_rows}, scale, pivots, sign);
    if (!regular)
        Efi::Throw(msg::singular_matrix, -1);
    raise_flags_of(growth(A, scale));
    if (strict && !passes_strict_test(A))
        Efi::Throw(msg::singular_matrix, -1);
}

} // namespace native
