#pragma once

#include "bailuxsko/kernels/bidiagonal.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cmath>
#include <cstddef>
#include <limits>

/// The second half of the singular value decomposition: an upper bidiagonal matrix is made diagonal by implicitly
/// shifted QR sweeps (Golub and Reinsch, Numerische Mathematik 14, 1970, section 3).
/// Ours: squares that are not finite are "overflow", and such as vanish are kept from it; 100 sweeps a value; the
/// vectors are the caller's business, who is told of every rotation.
namespace native {

/// What is told of the rotations, here when only the values are wanted. Those of a sweep over the block l to k are of
/// columns l and l + 1 of V and of U, then l + 1 and l + 2, and so on; those of a cancellation of columns l - 1 and l,
/// l + 1, ... of U; (x, z) becomes (x * c + z * s, z * c - x * s).
struct NoVectors {
    void begin_sweep(std::size_t, std::size_t) {}
    void begin_cancellation(std::size_t, std::size_t) {}
    void rotate_V(double, double) {}
    void rotate_U(double, double) {}
    void negate_V(std::size_t) {}
};

inline constexpr int max_sweeps = 100; // for one singular value

/// sqrt(a^2 + b^2), unscaled. @throws "overflow" (-1) if a square is not finite; a sum that is not is only a flag
inline double rotation_length(double a, double b)
{
    constexpr double largest = std::numeric_limits<double>::max();
    const double a2 = a * a;
    const double b2 = b * b;
    if (std::fabs(a2) > largest || std::fabs(b2) > largest)
        Efi::Throw(msg::overflow, -1);
    return std::sqrt(a2 + b2);
}

/// Where the block that ends at k begins, and whether w above it is negligible, so that e(l) must be cancelled.
struct Split {
    std::size_t m_l;
    bool m_cancel;
};

inline Split splitting_search(const Bidiagonal& B, std::size_t k)
{
    for (std::size_t l = k; l > 0; --l) {
        if (std::fabs(B.m_e[l]) <= B.m_negligible)
            return {.m_l = l, .m_cancel = false};
        if (std::fabs(B.m_w[l - 1]) <= B.m_negligible)
            return {.m_l = l, .m_cancel = true};
    }
    return {.m_l = 0, .m_cancel = false}; // e(0) is 0, and not compared: a tolerance that is NaN ends here too
}

/// Rotates e(l) away, along row l - 1, whose diagonal element is negligible.
template <class Vectors>
void cancel(const Bidiagonal& B, std::size_t l, std::size_t k, Vectors& vectors)
{
    vectors.begin_cancellation(l, k);
    double c = 0.0;
    double s = 1.0;
    for (std::size_t i = l; i <= k; ++i) {
        const double f = s * B.m_e[i];
        B.m_e[i] = c * B.m_e[i];
        if (std::fabs(f) <= B.m_negligible)
            break;
        const double g = B.m_w[i];
        const double h = rotation_length(f, g);
        B.m_w[i] = h;
        c = g / h;
        s = -f / h;
        vectors.rotate_U(c, s);
    }
}

/// The shift, from the bottom 2 by 2 minor, as the first rotation of a sweep needs it.
inline double shift(const Bidiagonal& B, std::size_t l, std::size_t k)
{
    const double x = B.m_w[l];
    const double y = B.m_w[k - 1];
    const double z = B.m_w[k];
    const double g = B.m_e[k - 1];
    const double h = B.m_e[k];
    const double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2.0 * h * y);
    const double root = std::sqrt(f * f + 1.0);
    return ((x - z) * (x + z) + h * (y / (f + (f < 0.0 ? -root : root)) - h)) / x;
}

/// One QR sweep over the block l to k: each step chases the bulge with a rotation from the right, then one from the
/// left. A length of zero leaves the left one as the right one was: any will do. The right one's is divided by.
template <class Vectors>
void sweep(const Bidiagonal& B, std::size_t l, std::size_t k, Vectors& vectors)
{
    vectors.begin_sweep(l, k);
    double f = shift(B, l, k);
    double x = B.m_w[l];
    double c = 1.0;
    double s = 1.0;
    for (std::size_t i = l + 1; i <= k; ++i) {
        double g = B.m_e[i];
        double y = B.m_w[i];
        double h = s * g;
        g = c * g;
        double z = rotation_length(f, h);
        B.m_e[i - 1] = z;
        c = f / z;
        s = h / z;
        f = x * c + g * s;
        g = g * c - x * s;
        h = y * s;
        y = y * c;
        vectors.rotate_V(c, s);
        z = rotation_length(f, h);
        B.m_w[i - 1] = z;
        if (z != 0.0) {
            c = f / z;
            s = h / z;
        }
        f = c * g + s * y;
        x = c * y - s * g;
        vectors.rotate_U(c, s);
    }
    B.m_e[l] = 0.0;
    B.m_e[k] = f;
    B.m_w[k] = x;
}

/// Brings elements up to around 1, by a power of two and so without a rounding, when all are so small that products of
/// two would lose digits. Other elements stay, and so do the bits of all that is made from them.
/// @return  the power of two
inline double scale_up(Bidiagonal& B)
{
    constexpr double eps = std::numeric_limits<double>::epsilon();
    constexpr double small = 0x1p-400;
    constexpr double step = 0x1p500;
    double power = 1.0;
    // A tolerance that is NaN is left as it is; it is not compared, which would be a fault of its own. One of zero may
    // be too small for a number: only where nothing but zeros is found it stays.
    while (std::isless(B.m_negligible, eps * small)) {
        double largest = 0.0;
        for (std::size_t k = 0; k < B.m_n; ++k) {
            B.m_w[k] *= step;
            B.m_e[k] *= step;
            const double sum = std::fabs(B.m_w[k]) + std::fabs(B.m_e[k]);
            largest = std::isgreater(sum, largest) ? sum : largest;
        }
        if (largest == 0.0)
            break;
        B.m_negligible = eps * largest;
        power *= step;
    }
    return power;
}

/// Leaves the singular values, none of them negative, in w. @throws "overflow" (-1), "too many iterations" (-1)
template <class Vectors>
void diagonalise(Bidiagonal B, Vectors& vectors)
{
    const double power = scale_up(B);
    for (std::size_t k = B.m_n; k-- > 0;) {
        for (int sweeps = 0;; ++sweeps) {
            const Split split = splitting_search(B, k);
            if (split.m_cancel)
                cancel(B, split.m_l, k, vectors);
            if (split.m_l == k)
                break;
            if (sweeps == max_sweeps)
                Efi::Throw(msg::too_many_iterations, -1);
            sweep(B, split.m_l, k, vectors);
        }
        if (B.m_w[k] < 0.0) {
            B.m_w[k] = -B.m_w[k];
            vectors.negate_V(k);
        }
    }
    if (power != 1.0)
        for (std::size_t k = 0; k < B.m_n; ++k)
            B.m_w[k] /= power;
}

} // namespace native
