// Gaussian elimination of a complex matrix with implicitly scaled rows (Golub and Van Loan, Matrix Computations,
// sections 3.2 and 3.4), column by column through memory.
// Ours: other than in the real routine the first of equally scaled rows is the pivot row, pivots are counted from 1,
// and the strict test knows no threshold. Multipliers are quotients by Smith's method.
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/kernels/lu_complex_steps.hpp"
#include "bailuxsko/kernels/record_checks.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace native {
namespace {

/// From here on packing pays for itself.
constexpr std::size_t smallest_blocked = 40;

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

double modulus_of(const RealSoFar& A, std::size_t i, std::size_t j)
{
    return quiet_modulus(A.re(i, j), A.im(i, j));
}

/// The reciprocal of every row's largest modulus; false when a row holds nothing but zeros.
bool scale_rows(const RealSoFar& A, double* scale)
{
    for (std::size_t i = 0; i < A.m_n; ++i) {
        const double most = largest(A.m_n, 0.0, [&](std::size_t j) { return modulus_of(A, i, j); });
        if (most == 0.0)
            return false;
        scale[i] = 1.0 / most;
    }
    return true;
}

/// The row of the largest scaled modulus in column k, from row k on; the first of equals wins. Row k stays where no
/// modulus is a number.
std::size_t find_pivot(const RealSoFar& A, const double* scale, std::size_t k)
{
    double best = -1.0;
    std::size_t p = k;
    for (std::size_t i = k; i < A.m_n; ++i) {
        const double t = modulus_of(A, i, k) * scale[i];
        if (t > best) {
            best = t;
            p = i;
        }
    }
    return p;
}

void exchange_rows(const RealSoFar& A, std::size_t k, std::size_t p)
{
    for (std::size_t j = 0; j < A.m_n; ++j) {
        const double re = A.re(k, j);
        const double im = A.im(k, j);
        A.store(k, j, A.re(p, j), A.im(p, j));
        A.store(p, j, re, im);
    }
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
bool eliminate(const RealSoFar& A, double* scale, double* pivots1, double* sign)
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
        scale[k] = largest(A.m_n - k - 1, 1.0, [&](std::size_t i) { return modulus_of(A, k + 1 + i, k); });
    }
    return true;
}

bool eliminate_both_parts(EfiCallContext* ctx, ComplexElimination E)
{
    const bool blocked = E.m_n >= smallest_blocked;
    if (blocked && E.m_pivots1 == nullptr) // exchanges are carried out later, outside a range's own columns
        E.m_pivots1 = Efi::uncleared_doubles(ctx, E.m_n);
    if (!blocked)
        return at_level(eliminate_complex_baseline, eliminate_complex_avx2)(E);
    double* const packed = Efi::uncleared_doubles(ctx, blocked_complex_workspace(E.m_n));
    return at_level(eliminate_complex_blocked_baseline, eliminate_complex_blocked_avx2,
                    eliminate_complex_blocked_avx512)(E, packed);
}

/// The largest modulus of U(k, j) times the growth bound of step k. The strict test has no use for it.
double growth(const ComplexElimination& E)
{
    if (E.m_im != nullptr)
        return at_level(complex_growth_baseline, complex_growth_avx2)(E);
    double g = 0.0;
    for (std::size_t j = 0; j < E.m_n; ++j)
        g = largest(std::min(j + 1, E.m_n - 1), g, [&](std::size_t k) { return std::fabs(E.re(j)[k]) * E.m_scale[k]; });
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
    require_real_array(A);
    const std::size_t n = A->m_rows;
    ComplexElimination E{.m_re = A->m_rv,
                         .m_im = A->m_iv,
                         .m_ld = A->m_anr,
                         .m_n = n,
                         .m_scale = Efi::uncleared_doubles(ctx, n),
                         .m_moduli = Efi::uncleared_doubles(ctx, n),
                         .m_pivots1 = pivots,
                         .m_sign = sign};
    const bool regular = A->m_iv != nullptr
                             ? eliminate_both_parts(ctx, E)
                             : eliminate(RealSoFar{.m_ctx = ctx, .m_A = A, .m_n = n}, E.m_scale, pivots, sign);
    if (!regular)
        Efi::Throw(msg::singular_matrix, -1);
    E.m_im = A->m_iv; // which it may have got on the way
    raise_flags_of(growth(E));
    if (strict && !passes_strict_test(A))
        Efi::Throw(msg::singular_matrix, -1);
}

} // namespace native
