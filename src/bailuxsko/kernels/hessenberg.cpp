// Reduction to upper Hessenberg form by Householder reflections, the complex form of `orthes` (Martin and Wilkinson,
// Handbook for Automatic Computation II, contribution II/13).
// Ours: the elements of a column, or of a row, are summed up from the last one to the first, several columns or rows
// side by side, so that each has the bits of the plain loops. A real matrix is reduced in real arithmetic, with the
// +0.0 that zero imaginary parts would add where it can turn -0.0 into 0.0.
#include "bailuxsko/kernels/hessenberg.hpp"

#include "bailuxsko/kernels/column_strip.hpp"
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/modulus.hpp"
#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace native {
namespace {

constexpr std::size_t rows_at_once = 64; // their sums stay in the first cache
constexpr std::size_t strips = 2;

/// The matrix, and I - u u* / h, which acts on rows and columns m to m_end - 1.
struct Reflection {
    double* m_re;
    double* m_im;
    std::size_t m_ld;
    std::size_t m_n;
    std::size_t m_first; // m
    std::size_t m_end;
    double* m_u_re;
    double* m_u_im;
    double m_h;
};

/// The products of u* with the columns from j on, from the last element to the first. Two strips side by side: while
/// the sums of one wait for their last term, those of the other take theirs.
template <class Vector, bool is_complex>
[[gnu::always_inline]] inline void products_with_columns(const Reflection& R, std::size_t j, double* f_re, double* f_im)
{
    constexpr std::size_t width = side_by_side::lanes<Vector>;
    const ColumnStrip<Vector> re[strips] = {{R.m_re, R.m_ld, j, R.m_n}, {R.m_re, R.m_ld, j + width, R.m_n}};
    double* const a_im = is_complex ? R.m_im : R.m_re; // of a real matrix nobody reads it
    const ColumnStrip<Vector> im[strips] = {{a_im, R.m_ld, j, R.m_n}, {a_im, R.m_ld, j + width, R.m_n}};
    Vector sum_re[strips] = {};
    Vector sum_im[strips] = {};
    const auto add = [&](std::size_t s, std::size_t i, const Vector& row_re, const Vector& row_im) {
        const double u_re = R.m_u_re[i];
        if constexpr (is_complex) {
            const double u_im = R.m_u_im[i];
            sum_re[s] = sum_re[s] + row_re * u_re + row_im * u_im;
            sum_im[s] = sum_im[s] + row_im * u_re - row_re * u_im;
        } else {
            sum_re[s] = sum_re[s] + row_re * u_re;
        }
    };
    std::size_t i = R.m_end;
    for (; i - R.m_first >= width; i -= width) {
#pragma GCC unroll 2
        for (std::size_t s = 0; s < strips; ++s) {
            Vector rows_re[width];
            Vector rows_im[width] = {};
            re[s].load_rows(i - width, rows_re);
            if constexpr (is_complex)
                im[s].load_rows(i - width, rows_im);
#pragma GCC unroll 4
            for (std::size_t r = width; r > 0; --r)
                add(s, i - width + r - 1, rows_re[r - 1], rows_im[r - 1]);
        }
    }
    while (i-- > R.m_first) {
#pragma GCC unroll 2
        for (std::size_t s = 0; s < strips; ++s) {
            Vector row_re;
            Vector row_im{};
            re[s].load_row(i, row_re);
            if constexpr (is_complex)
                im[s].load_row(i, row_im);
            add(s, i, row_re, row_im);
        }
    }
#pragma GCC unroll 2
    for (std::size_t s = 0; s < strips; ++s) {
        sum_re[s] /= R.m_h;
        sum_im[s] /= R.m_h;
        side_by_side::store(sum_re[s], f_re + s * width);
        side_by_side::store(sum_im[s], f_im + s * width);
    }
}

/// A column loses f times u.
template <bool is_complex>
[[gnu::always_inline]] inline void subtract_multiple(const Reflection& R, std::size_t j, double f_re, double f_im)
{
    const double* const u_re = R.m_u_re;
    const double* const u_im = R.m_u_im;
    double* const __restrict re = R.m_re + j * R.m_ld;
    if constexpr (is_complex) {
        double* const __restrict im = R.m_im + j * R.m_ld;
        for (std::size_t i = R.m_first; i < R.m_end; ++i) {
            re[i] = re[i] - f_re * u_re[i] + f_im * u_im[i];
            im[i] = im[i] - f_re * u_im[i] - f_im * u_re[i];
        }
    } else {
        for (std::size_t i = R.m_first; i < R.m_end; ++i)
            re[i] = re[i] - f_re * u_re[i] + 0.0;
    }
}

/// (I - u u* / h) * A, in columns m to the last.
template <class Vector, bool is_complex>
[[gnu::always_inline]] inline void reflect_from_left(const Reflection& R)
{
    constexpr std::size_t width = strips * side_by_side::lanes<Vector>;
    for (std::size_t j = R.m_first; j < R.m_n; j += width) {
        double f_re[width];
        double f_im[width];
        products_with_columns<Vector, is_complex>(R, j, f_re, f_im);
        for (std::size_t c = 0; c < std::min(width, R.m_n - j); ++c)
            subtract_multiple<is_complex>(R, j + c, f_re[c], f_im[c]);
    }
}

/// A * (I - u u* / h), in the rows before m_end, a few at a time.
template <bool is_complex>
[[gnu::always_inline]] inline void reflect_from_right(const Reflection& R)
{
    for (std::size_t i = 0; i < R.m_end; i += rows_at_once) {
        const std::size_t rows = std::min(rows_at_once, R.m_end - i);
        double f_re[rows_at_once] = {};
        double f_im[rows_at_once] = {};
        for (std::size_t j = R.m_end; j-- > R.m_first;) {
            const double u_re = R.m_u_re[j];
            const double u_im = R.m_u_im[j];
            const double* const re = R.m_re + j * R.m_ld + i;
            const double* const im = R.m_im + j * R.m_ld + i;
            for (std::size_t r = 0; r < rows; ++r)
                if constexpr (is_complex) {
                    f_re[r] = f_re[r] + u_re * re[r] - u_im * im[r];
                    f_im[r] = f_im[r] + u_re * im[r] + u_im * re[r];
                } else {
                    f_re[r] = f_re[r] + u_re * re[r];
                }
        }
        for (std::size_t r = 0; r < rows; ++r) {
            f_re[r] /= R.m_h;
            f_im[r] /= R.m_h;
        }
        for (std::size_t j = R.m_first; j < R.m_end; ++j) {
            const double u_re = R.m_u_re[j];
            const double u_im = R.m_u_im[j];
            double* const __restrict re = R.m_re + j * R.m_ld + i;
            double* const __restrict im = R.m_im + j * R.m_ld + i;
            for (std::size_t r = 0; r < rows; ++r)
                if constexpr (is_complex) {
                    re[r] = re[r] - f_re[r] * u_re - f_im[r] * u_im;
                    im[r] = im[r] + f_re[r] * u_im - f_im[r] * u_re;
                } else {
                    re[r] = re[r] - f_re[r] * u_re;
                }
        }
    }
}

template <class Vector>
[[gnu::always_inline]] inline void reflect(const Reflection& R)
{
    if (R.m_im != nullptr) {
        reflect_from_left<Vector, true>(R);
        reflect_from_right<true>(R);
    } else {
        reflect_from_left<Vector, false>(R);
        reflect_from_right<false>(R);
    }
}

void reflect_baseline(const Reflection& R)
{
    reflect<side_by_side::Two>(R);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]]
#endif
void reflect_avx2(const Reflection& R)
{
    reflect<side_by_side::Four>(R);
}

/// Column m - 1 below its subdiagonal goes, by one reflection; a column that has nothing there stays as it is.
void clear_column(Reflection R)
{
    const std::size_t m = R.m_first;
    double* const re = R.m_re + (m - 1) * R.m_ld;
    double* const im = R.m_im == nullptr ? nullptr : R.m_im + (m - 1) * R.m_ld;
    const auto imaginary = [im](std::size_t i) { return im == nullptr ? 0.0 : im[i]; };
    double scale = 0.0;
    for (std::size_t i = m; i < R.m_end; ++i)
        scale += std::fabs(re[i]) + std::fabs(imaginary(i));
    if (scale == 0.0)
        return;
    double h = 0.0;
    for (std::size_t i = R.m_end; i-- > m;) {
        R.m_u_re[i] = re[i] / scale;
        R.m_u_im[i] = imaginary(i) / scale;
        h += R.m_u_re[i] * R.m_u_re[i] + R.m_u_im[i] * R.m_u_im[i];
    }
    double g = std::sqrt(h);
    const double f = modulus(R.m_u_re[m], R.m_u_im[m]);
    if (f == 0.0) {
        R.m_u_re[m] = g;
        re[m] = scale;
    } else {
        h += f * g;
        g /= f;
        R.m_u_re[m] *= 1.0 + g;
        R.m_u_im[m] *= 1.0 + g;
    }
    R.m_h = h;
    at_level(reflect_baseline, reflect_avx2)(R);
    R.m_u_re[m] *= scale;
    R.m_u_im[m] *= scale;
    re[m] *= -g;
    if (im != nullptr)
        im[m] *= -g;
}

} // namespace

void reduce_to_hessenberg(aMatrix* A, const BalancedBlock& B, double* u_re, double* u_im)
{
    for (std::size_t m = B.m_low + 1; m + 1 < B.m_end; ++m)
        clear_column({.m_re = A->m_rv,
                      .m_im = A->m_iv,
                      .m_ld = A->m_anr,
                      .m_n = A->m_rows,
                      .m_first = m,
                      .m_end = B.m_end,
                      .m_u_re = u_re,
                      .m_u_im = u_im,
                      .m_h = 0.0});
}

} // namespace native
