// The eigenvalues of a complex upper Hessenberg matrix by the QR algorithm with explicit shifts: the unitary form of
// `comlr` (Martin and Wilkinson, Handbook for Automatic Computation II, contribution II/16).
// Ours: a subdiagonal element is negligible when eps times its neighbours is not smaller than it; each eigenvalue may
// take 31 steps, the others whatever they took; the exceptional shift takes what lies outside of the matrix for zero.
#include "bailuxsko/kernels/complex_qr.hpp"

#include "bailuxsko/kernels/complex_qr_step.hpp"
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/modulus.hpp"
#include "bailuxsko/kernels/smith_division.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace native {
namespace {

constexpr double eps = 2.220446049250313e-16; // of double precision
constexpr int max_steps = 31;                 // for one eigenvalue

aComplex element(const aMatrix* A, std::size_t i, std::size_t j)
{
    return {.m_re = Efi::at(A, i, j), .m_im = Efi::at_i(A, i, j)};
}

/// The root whose real part is not negative; of a negative number +i times something, whatever the sign of its zero.
aComplex principal_root(double re, double im)
{
    const double s = std::sqrt(0.5 * (modulus(re, im) + std::fabs(re)));
    if (re > 0.0)
        return {.m_re = s, .m_im = 0.5 * (im / s)};
    const double signed_s = im < 0.0 ? -s : s;
    return {.m_re = re < 0.0 ? 0.5 * (im / signed_s) : s, .m_im = signed_s};
}

/// Makes the subdiagonal real, by unit factors on rows and columns.
void make_subdiagonal_real(aMatrix* A, const BalancedBlock& B)
{
    if (A->m_iv == nullptr)
        return;
    for (std::size_t i = B.m_low + 1; i < B.m_end; ++i) {
        const double re = Efi::at(A, i, i - 1);
        const double im = Efi::at_i(A, i, i - 1);
        if (im == 0.0)
            continue;
        const double norm = modulus(re, im);
        const aComplex y{.m_re = re / norm, .m_im = im / norm};
        Efi::at(A, i, i - 1) = norm;
        Efi::at_i(A, i, i - 1) = 0.0;
        for (std::size_t j = i; j < B.m_end; ++j)
            multiply(Efi::at(A, i, j), Efi::at_i(A, i, j), {.m_re = y.m_re, .m_im = -y.m_im});
        for (std::size_t j = B.m_low; j < std::min(i + 2, B.m_end); ++j)
            multiply(Efi::at(A, j, i), Efi::at_i(A, j, i), y);
    }
}

/// The first row of the part that ends with row `last` and has no negligible subdiagonal element.
std::size_t first_row(const aMatrix* A, const BalancedBlock& B, std::size_t last)
{
    for (std::size_t l = last; l > B.m_low; --l) {
        const double neighbours = std::fabs(Efi::at(A, l - 1, l - 1)) + std::fabs(Efi::at_i(A, l - 1, l - 1)) +
                                  std::fabs(Efi::at(A, l, l)) + std::fabs(Efi::at_i(A, l, l));
        if (eps * neighbours >= std::fabs(Efi::at(A, l, l - 1)))
            return l;
    }
    return B.m_low;
}

/// That eigenvalue of the last two rows and columns which is nearer to the last element.
aComplex nearest_eigenvalue(const aMatrix* A, std::size_t last)
{
    const aComplex s = element(A, last, last);
    const aComplex above = element(A, last - 1, last);
    const aComplex left = element(A, last - 1, last - 1);
    const double sub = Efi::at(A, last, last - 1);
    const aComplex x{.m_re = above.m_re * sub, .m_im = above.m_im * sub};
    if (x.m_re == 0.0 && x.m_im == 0.0)
        return s;
    const aComplex y{.m_re = (left.m_re - s.m_re) / 2.0, .m_im = (left.m_im - s.m_im) / 2.0};
    aComplex z = principal_root(y.m_re * y.m_re - y.m_im * y.m_im + x.m_re, 2.0 * y.m_re * y.m_im + x.m_im);
    if (y.m_re * z.m_re + y.m_im * z.m_im < 0.0)
        z = {.m_re = -z.m_re, .m_im = -z.m_im};
    const aComplex q = SmithDivisor(y.m_re + z.m_re, y.m_im + z.m_im).quotient(x.m_re, x.m_im);
    return {.m_re = s.m_re - q.m_re, .m_im = s.m_im - q.m_im};
}

/// The shift of a step; after ten that led nowhere an exceptional one.
aComplex shift(const aMatrix* A, std::size_t last, int steps)
{
    if (steps != 10 && steps != 20)
        return nearest_eigenvalue(A, last);
    const double above = last >= 2 ? std::fabs(Efi::at(A, last - 1, last - 2)) : 0.0;
    return {.m_re = std::fabs(Efi::at(A, last, last - 1)) + above, .m_im = 0.0};
}

void subtract_shift(aMatrix* A, std::size_t low, std::size_t last, aComplex s)
{
    for (std::size_t i = low; i <= last; ++i) {
        Efi::at(A, i, i) -= s.m_re;
        Efi::at_i(A, i, i) -= s.m_im;
    }
}

} // namespace

void complex_qr(EfiCallContext* ctx, aMatrix* A, const BalancedBlock& B, double* w_re, double* w_im, double* sines)
{
    make_subdiagonal_real(A, B);
    for (std::size_t i = 0; i < A->m_rows; ++i)
        if (i < B.m_low || i >= B.m_end) {
            const aComplex isolated = element(A, i, i);
            w_re[i] = isolated.m_re;
            w_im[i] = isolated.m_im;
        }
    const auto qr_step = at_level(qr_step_baseline, qr_step_avx2);
    aComplex total{}; // of the shifts
    int steps = 0;
    for (std::size_t end = B.m_end; end > B.m_low;) {
        const std::size_t last = end - 1;
        const std::size_t first = first_row(A, B, last);
        if (first == last) {
            const aComplex found = element(A, last, last);
            w_re[last] = found.m_re + total.m_re;
            w_im[last] = found.m_im + total.m_im;
            --end;
            steps = 0;
            continue;
        }
        if (steps == max_steps)
            Efi::Throw(msg::too_many_iterations, -1);
        const aComplex s = shift(A, last, steps);
        Efi::make_complex(ctx, A); // the first rotation of the step has a sine to store
        subtract_shift(A, B.m_low, last, s);
        total = {.m_re = total.m_re + s.m_re, .m_im = total.m_im + s.m_im};
        qr_step({.m_re = A->m_rv,
                 .m_im = A->m_iv,
                 .m_ld = A->m_anr,
                 .m_first = first,
                 .m_last = last,
                 .m_x_re = w_re, // not yet the place of eigenvalues, up to row `last`
                 .m_x_im = w_im,
                 .m_sines = sines});
        ++steps;
    }
}

} // namespace native
