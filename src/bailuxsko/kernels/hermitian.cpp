// Eigenvalues of a Hermitian matrix: Householder reflections from the last row upwards leave a real tridiagonal matrix
// (Martin, Reinsch and Wilkinson, Numerische Mathematik 11, 1968; HTRIDI of EISPACK is the complex form), whose
// eigenvalues the rational QL algorithm finds (Reinsch, Algorithm 464, CACM 16, 1973; TQLRAT of EISPACK).
// Ours: only the squares of the subdiagonal are kept, for the phases that would make it real belong to eigenvectors.
// What EISPACK reads along rows of the lower triangle is read down columns of the upper one, and both triangles are
// kept up, so that all elements of a column change side by side.
#include "bailuxsko/kernels/hermitian.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/modulus.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace native {
namespace {

constexpr double eps = 2.220446049250313e-16;
constexpr int max_steps = 30; // for one eigenvalue

/// A complex vector.
struct Vector {
    double* re;
    double* im;
};

/// What a reflection works with: the reflected vector u and q, which takes part in the change of the matrix.
struct Workspace {
    Vector u;
    Vector q;
};

/// Copies `count` elements above the diagonal of column `count`, divided by the sum of their parts' magnitudes.
/// Returns that sum; where it is 0.0 nothing is divided.
[[gnu::always_inline]] inline double copy_scaled(const aMatrix* A, std::size_t count, const Vector& u)
{
    const double* const re = Efi::column(A, count);
    const double* const im = Efi::column_i(A, count);
    double scale = 0.0;
    for (std::size_t k = 0; k < count; ++k)
        scale += std::fabs(re[k]) + std::fabs(im[k]);
    if (scale == 0.0)
        return scale;
    for (std::size_t k = 0; k < count; ++k) {
        u.re[k] = re[k] / scale;
        u.im[k] = im[k] / scale;
    }
    return scale;
}

/// q = A * u / h - (u^H * A * u / (2 h^2)) * u, of the leading `count` rows and columns.
[[gnu::always_inline]] inline void form_change(const aMatrix* A, std::size_t count, double h, const Workspace& W)
{
    double* const __restrict q_re = W.q.re;
    double* const __restrict q_im = W.q.im;
    std::fill_n(q_re, count, 0.0);
    std::fill_n(q_im, count, 0.0);
    for (std::size_t j = 0; j < count; ++j) {
        const double* const re = Efi::column(A, j);
        const double* const im = Efi::column_i(A, j);
        const double x = W.u.re[j];
        const double y = W.u.im[j];
        for (std::size_t k = 0; k < count; ++k) {
            q_re[k] += re[k] * x - im[k] * y;
            q_im[k] += re[k] * y + im[k] * x;
        }
    }
    double product = 0.0; // of u^H and q: real, A being Hermitian
    for (std::size_t k = 0; k < count; ++k) {
        q_re[k] /= h;
        q_im[k] /= h;
        product += W.u.re[k] * q_re[k] + W.u.im[k] * q_im[k];
    }
    const double half = product / (h + h);
    for (std::size_t k = 0; k < count; ++k) {
        q_re[k] -= half * W.u.re[k];
        q_im[k] -= half * W.u.im[k];
    }
}

/// A = A - q * u^H - u * q^H, in the leading `count` rows and columns.
[[gnu::always_inline]] inline void apply_change(aMatrix* A, std::size_t count, const Workspace& W)
{
    const double* const u_re = W.u.re;
    const double* const u_im = W.u.im;
    const double* const q_re = W.q.re;
    const double* const q_im = W.q.im;
    for (std::size_t j = 0; j < count; ++j) {
        double* const __restrict re = Efi::column(A, j);
        double* const __restrict im = Efi::column_i(A, j);
        const double ur = u_re[j];
        const double ui = u_im[j];
        const double qr = q_re[j];
        const double qi = q_im[j];
        for (std::size_t k = 0; k < count; ++k) {
            re[k] -= (q_re[k] * ur + q_im[k] * ui) + (u_re[k] * qr + u_im[k] * qi);
            im[k] -= (q_im[k] * ur - q_re[k] * ui) + (u_im[k] * qr - u_re[k] * qi);
        }
    }
}

/// The diagonal and the squared subdiagonal, e2[i] to the left of d[i], of the tridiagonal form; A is overwritten.
[[gnu::always_inline]] inline void reduce(aMatrix* A, double* d, double* e2, const Workspace& W)
{
    for (std::size_t i = A->m_rows; i-- > 0;) {
        d[i] = Efi::at(A, i, i);
        e2[i] = 0.0;
        const double scale = copy_scaled(A, i, W.u);
        if (scale == 0.0)
            continue; // row 0, or there is nothing to reflect
        double h = 0.0;
        for (std::size_t k = 0; k < i; ++k)
            h += W.u.re[k] * W.u.re[k] + W.u.im[k] * W.u.im[k];
        e2[i] = scale * scale * h;
        if (i == 1)
            continue; // one element is left beside the diagonal: it only lacks a phase
        const double g = std::sqrt(h);
        double& last_re = W.u.re[i - 1];
        double& last_im = W.u.im[i - 1];
        const double f = modulus(last_re, last_im);
        if (f == 0.0) {
            last_re = g;
        } else {
            h += f * g;
            const double stretch = 1.0 + g / f;
            last_re *= stretch;
            last_im *= stretch;
        }
        form_change(A, i, h, W);
        apply_change(A, i, W);
    }
}

void reduce_baseline(aMatrix* A, double* d, double* e2, const Workspace& W)
{
    reduce(A, d, e2, W);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void reduce_avx2(aMatrix* A, double* d, double* e2, const Workspace& W)
{
    reduce(A, d, e2, W);
}
#else
constexpr auto reduce_avx2 = reduce_baseline;
#endif

/// A tridiagonal matrix on its way to its eigenvalues.
struct Tridiagonal {
    double* d;  // the diagonal less `shift`; the first ones are eigenvalues already, in ascending order
    double* e2; // squares of the elements beside the diagonal, e2[i] between d[i] and d[i + 1]
    std::size_t n;
    double shift = 0.0;
    double negligible = 0.0;         // elements beside the diagonal of at most this
    double negligible_squared = 0.0; // and their squares
};

/// One step of the rational QL algorithm on rows l to m. True when the element beside d[l] has become negligible.
bool step(Tridiagonal& T, std::size_t l, std::size_t m)
{
    double* const d = T.d;
    double* const e2 = T.e2;
    const double s0 = std::sqrt(e2[l]);
    const double old = d[l];
    const double p0 = (d[l + 1] - old) / (2.0 * s0);
    d[l] = s0 / (p0 + std::copysign(modulus(p0, 1.0), p0));
    const double shift = old - d[l];
    for (std::size_t i = l + 1; i < T.n; ++i)
        d[i] -= shift;
    T.shift += shift;

    const auto nonzero = [&](double x) { return x == 0.0 ? T.negligible : x; }; // as a divisor
    double g = nonzero(d[m]);
    double h = g;
    double s = 0.0;
    for (std::size_t i = m; i-- > l;) {
        const double p = g * h;
        const double r = p + e2[i];
        e2[i + 1] = s * r;
        s = e2[i] / r;
        d[i + 1] = h + s * (h + d[i]);
        g = nonzero(d[i] - e2[i] / g);
        h = g * (p / r); // not (g * p) / r: a product of three leaves the range of numbers first
    }
    e2[l] = s * g;
    d[l] = h;
    if (h == 0.0 || std::fabs(e2[l]) <= std::fabs(T.negligible_squared / h)) // no product that could underflow
        return true;
    e2[l] *= h;
    return e2[l] == 0.0;
}

/// Turns the diagonal into the eigenvalues in ascending order.
void find_eigenvalues(Tridiagonal T)
{
    for (std::size_t l = 0; l < T.n; ++l) {
        const double size = eps * (std::fabs(T.d[l]) + std::sqrt(T.e2[l]));
        if (T.negligible <= size) {
            T.negligible = size;
            T.negligible_squared = size * size;
        }
        std::size_t m = l;
        while (m + 1 < T.n &&
               !(T.e2[m] <= T.negligible_squared)) // nothing stands beside the last, whatever NaN there is
            ++m;
        for (int steps = 0; m != l; ++steps) {
            if (steps == max_steps)
                Efi::Throw(msg::too_many_iterations, -1);
            if (step(T, l, m))
                break;
        }
        const double found = T.d[l] + T.shift;
        std::size_t place = l;
        for (; place > 0 && T.d[place - 1] > found; --place)
            T.d[place] = T.d[place - 1];
        T.d[place] = found;
    }
}

} // namespace

void herm_eigenvalues(EfiCallContext* ctx, aMatrix* A, double* eigenvalues)
{
    require_square(A);
    require_real_array(A);
    aMatrix hermitian = *A;
    Efi::make_complex(ctx, &hermitian);
    const std::size_t n = A->m_rows;
    const auto vector = [&] { return Efi::uncleared_doubles(ctx, n); };
    double* const e2 = vector();
    const Workspace W{.u = {.re = vector(), .im = vector()}, .q = {.re = vector(), .im = vector()}};
    at_level(reduce_baseline, reduce_avx2)(&hermitian, eigenvalues, e2, W);
    std::copy(e2 + 1, e2 + n, e2);
    e2[n - 1] = 0.0;
    find_eigenvalues({.d = eigenvalues, .e2 = e2, .n = n});
}

} // namespace native
