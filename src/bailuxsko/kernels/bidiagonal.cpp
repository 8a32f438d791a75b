#include "bailuxsko/kernels/bidiagonal.hpp"

#include "bailuxsko/kernels/bidiagonal_passes.hpp"
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/side_by_side.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace native {
namespace {

using bidiagonal::Remaining;
using Efi::at;
using Efi::column;
using side_by_side::Four;
using side_by_side::Two;

constexpr double eps = std::numeric_limits<double>::epsilon();

/// A Householder reflection: what its vector was divided by, zero if it is skipped; the element that it leaves, over
/// that; and what its sums are divided by.
struct Reflection {
    double m_scale = 0.0;
    double m_g = 0.0;
    double m_h = 0.0;

    explicit operator bool() const { return m_scale != 0.0; }
    double element() const { return m_scale * m_g; }
};

/// The high half of the element is all ones: the slot holds no number.
[[gnu::always_inline]] inline bool is_nested(double x)
{
    return std::bit_cast<std::uint64_t>(x) >> 32 == 0xFFFFFFFFU;
}

/// Turns x, whose magnitudes add up to `scale`, into the vector of its reflection.
[[gnu::always_inline]] inline Reflection reflect(double* x, std::size_t count, double scale)
{
    if (scale == 0.0)
        return {};
    for (std::size_t k = 0; k < count; ++k)
        x[k] /= scale;
    double s = 0.0;
    for (std::size_t k = 0; k < count; ++k)
        s += x[k] * x[k];
    const double f = x[0];
    const double g = f < 0.0 ? std::sqrt(s) : -std::sqrt(s);
    x[0] = f - g;
    return {.m_scale = scale, .m_g = g, .m_h = f * g - s};
}

[[gnu::always_inline]] inline Reflection reflect_column(aMatrix* A, std::size_t i, NestedElements nested)
{
    double* const x = column(A, i) + i;
    const std::size_t count = A->m_rows - i;
    double scale = 0.0;
    for (std::size_t k = 0; k < count; ++k) {
        if (nested == NestedElements::refused && is_nested(x[k]))
            Efi::Throw(msg::may_not_be_nested, -1);
        scale += std::fabs(x[k]);
    }
    return reflect(x, count, scale);
}

[[gnu::always_inline]] inline Reflection reflect_row(double* x, std::size_t count)
{
    double scale = 0.0;
    for (std::size_t k = 0; k < count; ++k)
        scale += std::fabs(x[k]);
    return reflect(x, count, scale);
}

[[gnu::always_inline]] inline void multiply(double* x, std::size_t count, double by)
{
    for (std::size_t k = 0; k < count; ++k)
        x[k] *= by;
}

/// Work arrays, each by row or by column.
struct Work {
    double* m_sums;  ///< of the columns with the reflection from the left; then those over its h
    double* m_next;  ///< the same for the next step
    double* m_row;   ///< the row that is reflected
    double* m_row_h; ///< its reflection over its h
    double* m_t;     ///< sums of the rows with it
};

/// Reflects row i, that is the columns from i + 1 on, and carries both reflections over to the rows below; makes the
/// next reflection from the left, and its sums, on the way.
template <class Vector>
[[gnu::always_inline]] inline Reflection step(aMatrix* A, std::size_t i, const Reflection& left, const Work& work,
                                              NestedElements nested, double* above, double* kept_row)
{
    const std::size_t n = A->m_cols;
    const std::size_t l = i + 1;
    double* const v = column(A, i);
    if (left)
        for (std::size_t j = l; j < n; ++j)
            work.m_sums[j] /= left.m_h;
    for (std::size_t j = l; j < n; ++j)
        work.m_row[j] = left ? at(A, i, j) + work.m_sums[j] * v[i] : at(A, i, j);
    const Reflection right = reflect_row(work.m_row + l, n - l);
    *above = right.element();

    const Remaining R = {.m_A = A->m_rv,
                         .m_ld = A->m_anr,
                         .m_first = l,
                         .m_end = A->m_rows,
                         .m_cols = n,
                         .m_v = left ? v : nullptr,
                         .m_f = work.m_sums,
                         .m_t = work.m_t,
                         .m_e = right ? work.m_row_h : nullptr};
    if (right) {
        for (std::size_t j = l; j < n; ++j)
            work.m_row_h[j] = work.m_row[j] / right.m_h;
        bidiagonal::sum_rows(R, work.m_row);
    }
    bidiagonal::update_column(R, l);
    const Reflection next = reflect_column(A, l, nested);
    bidiagonal::update<Vector>(R, l + 1, next ? column(A, l) : nullptr, work.m_next);
    if (right)
        multiply(work.m_row + l, n - l, right.m_scale);
    if (kept_row != nullptr)
        std::copy(work.m_row + l, work.m_row + n, kept_row + l);
    return next;
}

struct Reduction {
    aMatrix* m_A;
    double* m_w;
    double* m_e;
    NestedElements m_nested;
    aMatrix* m_rows;
};

/// The largest |w(i)| + |e(i)|.
template <class Vector>
[[gnu::always_inline]] inline double reduce(const Reduction& R, Work work)
{
    aMatrix* const A = R.m_A;
    const std::size_t n = A->m_cols;
    double largest = 0.0;
    double above = 0.0;
    Reflection left;
    for (std::size_t i = 0; i < n; ++i) {
        if (i == 0) {
            left = reflect_column(A, 0, R.m_nested);
            const Remaining whole = {.m_A = A->m_rv,
                                     .m_ld = A->m_anr,
                                     .m_first = 0,
                                     .m_end = A->m_rows,
                                     .m_cols = n,
                                     .m_v = nullptr,
                                     .m_f = nullptr,
                                     .m_t = nullptr,
                                     .m_e = nullptr};
            if (left)
                bidiagonal::update<Vector>(whole, 1, column(A, 0), work.m_sums);
        }
        R.m_e[i] = above;
        R.m_w[i] = left.element();
        Reflection next;
        above = 0.0;
        if (i + 1 < n)
            next = step<Vector>(A, i, left, work, R.m_nested, &above, R.m_rows ? column(R.m_rows, i) : nullptr);
        if (left)
            multiply(column(A, i) + i, A->m_rows - i, left.m_scale);
        const double x = std::fabs(R.m_w[i]) + std::fabs(R.m_e[i]);
        if (x > largest)
            largest = x;
        left = next;
        std::swap(work.m_sums, work.m_next);
    }
    return largest;
}

double reduce_baseline(const Reduction& R, const Work& work)
{
    return reduce<Two>(R, work);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] double reduce_avx2(const Reduction& R, const Work& work)
{
    return reduce<Four>(R, work);
}
#else
constexpr auto reduce_avx2 = reduce_baseline;
#endif

} // namespace

Bidiagonal bidiagonalise(EfiCallContext* ctx, aMatrix* A, double* w, double* e, NestedElements nested, aMatrix* rows)
{
    const std::size_t n = A->m_cols;
    const Work work = {.m_sums = Efi::uncleared_doubles(ctx, n),
                       .m_next = Efi::uncleared_doubles(ctx, n),
                       .m_row = Efi::uncleared_doubles(ctx, n),
                       .m_row_h = Efi::uncleared_doubles(ctx, n),
                       .m_t = Efi::uncleared_doubles(ctx, A->m_rows)};
    const Reduction R = {.m_A = A, .m_w = w, .m_e = e, .m_nested = nested, .m_rows = rows};
    const double largest = at_level(reduce_baseline, reduce_avx2)(R, work);
    return {.m_n = n, .m_w = w, .m_e = e, .m_negligible = eps * largest};
}

} // namespace native
