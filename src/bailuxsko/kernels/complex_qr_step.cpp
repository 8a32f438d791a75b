// One step of the QR algorithm on a complex Hessenberg matrix: rotations of neighbouring rows make it triangular, then
// the same rotations turn the columns.
// Ours: rows are turned a strip of columns at a time, a column's elements in the order of the rotations, and columns a
// strip of rows at a time, so that each element has the bits of the plain loops.
#include "bailuxsko/kernels/complex_qr_step.hpp"

#include "bailuxsko/kernels/column_strip.hpp"
#include "bailuxsko/kernels/modulus.hpp"
#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cmath>

namespace native {
namespace {

constexpr std::size_t rows_at_once = 64; // two columns of so many rows stay in the first cache

/// Two elements, one above the other, turned by rotation k: a number or a vector of columns each.
template <class Number>
[[gnu::always_inline]] inline void turn_rows(const QrStep& S, std::size_t k, Number& y_re, Number& y_im, Number& z_re,
                                             Number& z_im)
{
    const double x_re = S.m_x_re[k];
    const double x_im = S.m_x_im[k];
    const double sine = S.m_sines[k];
    const Number upper_re = x_re * y_re + x_im * y_im + sine * z_re;
    const Number upper_im = x_re * y_im - x_im * y_re + sine * z_im;
    const Number lower_re = x_re * z_re - x_im * z_im - sine * y_re;
    const Number lower_im = x_re * z_im + x_im * z_re - sine * y_im;
    y_re = upper_re;
    y_im = upper_im;
    z_re = lower_re;
    z_im = lower_im;
}

/// Rotations m_first to before `end` on the columns of a strip: the lower element of one is the upper one of the next.
template <class Vector>
[[gnu::always_inline]] inline void turn_strip(const QrStep& S, const ColumnStrip<Vector>& re,
                                              const ColumnStrip<Vector>& im, std::size_t end)
{
    constexpr std::size_t width = side_by_side::lanes<Vector>;
    Vector y_re;
    Vector y_im;
    std::size_t k = S.m_first;
    re.load_row(k, y_re);
    im.load_row(k, y_im);
    for (; k + width <= end; k += width) {
        Vector rows_re[width];
        Vector rows_im[width];
        re.load_rows(k + 1, rows_re);
        im.load_rows(k + 1, rows_im);
#pragma GCC unroll 4
        for (std::size_t r = 0; r < width; ++r) {
            turn_rows(S, k + r, y_re, y_im, rows_re[r], rows_im[r]);
            std::swap(y_re, rows_re[r]);
            std::swap(y_im, rows_im[r]);
        }
        re.store_rows(k, rows_re);
        im.store_rows(k, rows_im);
    }
    for (; k < end; ++k) {
        Vector z_re;
        Vector z_im;
        re.load_row(k + 1, z_re);
        im.load_row(k + 1, z_im);
        turn_rows(S, k, y_re, y_im, z_re, z_im);
        re.store_row(k, y_re);
        im.store_row(k, y_im);
        y_re = z_re;
        y_im = z_im;
    }
    re.store_row(end, y_re);
    im.store_row(end, y_im);
}

/// Rotation k, which makes the subdiagonal element of column k vanish. The norm is the plain root of the squares.
[[gnu::always_inline]] inline void make_rotation(const QrStep& S, std::size_t k)
{
    const double sub = S.re(k + 1, k);
    const double d_re = S.re(k, k);
    const double d_im = S.im(k, k);
    const double norm = std::sqrt(d_re * d_re + d_im * d_im + sub * sub);
    S.m_x_re[k] = d_re / norm;
    S.m_x_im[k] = d_im / norm;
    S.m_sines[k] = sub / norm;
    S.re(k, k) = norm;
    S.im(k, k) = 0.0;
    S.re(k + 1, k) = 0.0;
    S.im(k + 1, k) = S.m_sines[k]; // whoever looks at the matrix afterwards finds it here
}

template <class Vector>
[[gnu::always_inline]] inline void turn_all_rows(const QrStep& S)
{
    constexpr std::size_t width = side_by_side::lanes<Vector>;
    const std::size_t end = S.m_last + 1;
    for (std::size_t j = S.m_first; j < end; j += width) {
        turn_strip<Vector>(S, {S.m_re, S.m_ld, j, end}, {S.m_im, S.m_ld, j, end}, j);
        for (std::size_t c = j; c < std::min(j + width, end); ++c) {
            for (std::size_t k = j; k < c; ++k)
                turn_rows(S, k, S.re(k, c), S.im(k, c), S.re(k + 1, c), S.im(k + 1, c));
            if (c < S.m_last)
                make_rotation(S, c);
        }
    }
}

/// Rows `first` to before `end` of columns k and k + 1, turned by rotation k; all of these rows lie above row k + 1.
[[gnu::always_inline]] inline void turn_columns(const QrStep& S, std::size_t k, std::size_t first, std::size_t end)
{
    const double x_re = S.m_x_re[k];
    const double x_im = S.m_x_im[k];
    const double sine = S.m_sines[k];
    double* const __restrict left_re = &S.re(0, k);
    double* const __restrict left_im = &S.im(0, k);
    double* const __restrict right_re = &S.re(0, k + 1);
    double* const __restrict right_im = &S.im(0, k + 1);
    for (std::size_t i = first; i < end; ++i) {
        const double y_re = left_re[i];
        const double y_im = left_im[i];
        const double z_re = right_re[i];
        const double z_im = right_im[i];
        left_im[i] = x_re * y_im + x_im * y_re + sine * z_im;
        left_re[i] = x_re * y_re - x_im * y_im + sine * z_re;
        right_re[i] = x_re * z_re + x_im * z_im - sine * y_re;
        right_im[i] = x_re * z_im - x_im * z_re - sine * y_im;
    }
}

/// Row k + 1 of the same columns. Its left element is real, and its imaginary slot keeps the sine.
[[gnu::always_inline]] inline void turn_corner(const QrStep& S, std::size_t k)
{
    const double x_re = S.m_x_re[k];
    const double x_im = S.m_x_im[k];
    const double sine = S.m_sines[k];
    const double y_re = S.re(k + 1, k);
    const double y_im = 0.0;
    const double z_re = S.re(k + 1, k + 1);
    const double z_im = S.im(k + 1, k + 1);
    S.re(k + 1, k) = x_re * y_re - x_im * y_im + sine * z_re;
    S.re(k + 1, k + 1) = x_re * z_re + x_im * z_im - sine * y_re;
    S.im(k + 1, k + 1) = x_re * z_im - x_im * z_re - sine * y_im;
}

[[gnu::always_inline]] inline void turn_all_columns(const QrStep& S)
{
    for (std::size_t i = S.m_first; i <= S.m_last; i += rows_at_once) {
        const std::size_t end = std::min(i + rows_at_once, S.m_last + 1);
        // Rotation k reaches down to row k + 1.
        for (std::size_t k = std::max(i, S.m_first + 1) - 1; k < S.m_last; ++k) {
            turn_columns(S, k, i, std::min(end, k + 1));
            if (k + 1 < end)
                turn_corner(S, k);
        }
    }
}

template <class Vector>
[[gnu::always_inline]] inline void qr_step(const QrStep& S)
{
    turn_all_rows<Vector>(S);
    const std::size_t last = S.m_last;
    const bool is_complex = S.im(last, last) != 0.0;
    aComplex factor{};
    if (is_complex) {
        const double norm = modulus(S.re(last, last), S.im(last, last));
        factor = {.m_re = S.re(last, last) / norm, .m_im = S.im(last, last) / norm};
        S.re(last, last) = norm;
        S.im(last, last) = 0.0;
    }
    turn_all_columns(S);
    if (is_complex)
        for (std::size_t i = S.m_first; i <= last; ++i)
            multiply(S.re(i, last), S.im(i, last), factor);
}

} // namespace

void qr_step_baseline(const QrStep& S)
{
    qr_step<side_by_side::Two>(S);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]]
#endif
void qr_step_avx2(const QrStep& S)
{
    qr_step<side_by_side::Four>(S);
}

} // namespace native
