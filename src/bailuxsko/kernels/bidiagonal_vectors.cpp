// U and V from the reflections, the last one first. The columns of either are independent of each other, so eight of
// them at a time take all the reflections, each of which makes the next one's sums on its way.
#include "bailuxsko/kernels/bidiagonal.hpp"

#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/side_by_side.hpp"
#include "efiutl/columns.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

using side_by_side::Four;
using side_by_side::Two;

constexpr std::size_t block = 8; // columns side by side

/// The reflections from the left, as they make U.
struct FromTheLeft {
    aMatrix* m_U;
    const double* m_w;

    std::size_t rows() const { return m_U->m_rows; }
    bool reflects(std::size_t i) const { return m_w[i] != 0.0; }
    const double* with(std::size_t i) const { return Efi::column(m_U, i); } ///< what sums are made with
    const double* by(std::size_t i) const { return with(i); }               ///< what is added
    /// One quotient after the other: the product of the divisors can underflow.
    double factor(std::size_t i, double sum) const { return sum / with(i)[i] / m_w[i]; }
    double row(std::size_t i, double factor) const { return 0.0 + factor * by(i)[i]; }
    double first(std::size_t i, std::size_t k) const { return reflects(i) ? by(i)[k] / m_w[i] : 0.0; }
    double diagonal(std::size_t i) const { return first(i, i) + 1.0; }
};

/// The reflections from the right, as they make V.
struct FromTheRight {
    aMatrix* m_V;
    const double* m_e;
    const double* m_added; ///< n by n: each reflection over its leading element and e

    std::size_t rows() const { return m_V->m_rows; }
    bool reflects(std::size_t i) const { return i + 1 < rows() && m_e[i + 1] != 0.0; }
    const double* with(std::size_t i) const { return Efi::column(m_V, i); }
    const double* by(std::size_t i) const { return m_added + i * rows(); }
    double factor(std::size_t, double sum) const { return sum; }
    double row(std::size_t, double) const { return 0.0; }
    double first(std::size_t, std::size_t) const { return 0.0; }
    double diagonal(std::size_t) const { return 1.0; }
};

/// Columns m_from to m_from + m_count - 1, row by row, eight numbers a row.
struct Block {
    std::size_t m_from;
    std::size_t m_count;
    double* m_rows;

    double* row(std::size_t k) const { return m_rows + k * block; }
};

/// The reflections whose own columns the block holds: each meets the columns to its right, then its own begins.
template <class Reflections>
[[gnu::always_inline]] inline void begin_columns(const Reflections& H, const Block& B)
{
    for (std::size_t own = B.m_count; own-- > 0;) {
        const std::size_t i = B.m_from + own;
        double sums[block] = {};
        double* const row = B.row(i);
        std::fill(row + own, row + B.m_count, 0.0);
        if (H.reflects(i)) {
            const double* const with = H.with(i);
            const double* const by = H.by(i);
            for (std::size_t k = i + 1; k < H.rows(); ++k)
                for (std::size_t c = own + 1; c < B.m_count; ++c)
                    sums[c] += with[k] * B.row(k)[c];
            for (std::size_t c = own + 1; c < B.m_count; ++c) {
                sums[c] = H.factor(i, sums[c]);
                row[c] = H.row(i, sums[c]);
            }
            for (std::size_t k = i + 1; k < H.rows(); ++k)
                for (std::size_t c = own + 1; c < B.m_count; ++c)
                    B.row(k)[c] += sums[c] * by[k];
        }
        row[own] = H.diagonal(i);
        for (std::size_t k = i + 1; k < H.rows(); ++k)
            B.row(k)[own] = H.first(i, k);
    }
}

/// Adds `factors` times `by`, if there is one, to the rows from `first` on.
template <class Vector>
[[gnu::always_inline]] inline void add(const Block& B, std::size_t first, std::size_t end, const double* factors,
                                       const double* by)
{
    if (by != nullptr)
        for (std::size_t k = first; k < end; ++k)
            for (std::size_t c = 0; c < block; ++c)
                B.row(k)[c] += factors[c] * by[k];
}

/// Adds the rows from `first` on times `with` to the sums; before that, adds `factors` times `by` to each if asked to.
template <class Vector, bool adding>
[[gnu::always_inline]] inline void sum(const Block& B, std::size_t first, std::size_t end, const double* factors,
                                       const double* by, const double* with, double* sums)
{
    constexpr std::size_t width = side_by_side::lanes<Vector>;
    constexpr std::size_t vectors = block / width;
    Vector f[vectors];
    Vector s[vectors];
#pragma GCC unroll 8
    for (std::size_t g = 0; g < vectors; ++g) {
        side_by_side::load(f[g], factors + g * width);
        side_by_side::load(s[g], sums + g * width);
    }
    for (std::size_t k = first; k < end; ++k) {
#pragma GCC unroll 8
        for (std::size_t g = 0; g < vectors; ++g) {
            Vector x;
            side_by_side::load(x, B.row(k) + g * width);
            if constexpr (adding) {
                x += f[g] * by[k];
                side_by_side::store(x, B.row(k) + g * width);
            }
            s[g] += x * with[k];
        }
    }
#pragma GCC unroll 8
    for (std::size_t g = 0; g < vectors; ++g)
        side_by_side::store(s[g], sums + g * width);
}

/// The reflections left of the block, which meet all its columns.
template <class Vector, class Reflections>
[[gnu::always_inline]] inline void reflect_block(const Reflections& H, const Block& B)
{
    double sums[block] = {};
    double factors[block] = {};
    const double* by = nullptr; // of the reflection before, whose additions are still to be made
    for (std::size_t i = B.m_from; i-- > 0;) {
        if (!H.reflects(i)) {
            add<Vector>(B, i + 2, H.rows(), factors, by);
            by = nullptr;
            std::fill_n(B.row(i), block, 0.0);
            continue;
        }
        // Rows from i + 2 on are still to take the additions of reflection i + 1; its own row, i + 1, has taken them.
        const double* const with = H.with(i);
        std::fill_n(sums, block, 0.0);
        if (by == nullptr) {
            sum<Vector, false>(B, i + 1, H.rows(), factors, by, with, sums);
        } else {
            sum<Vector, false>(B, i + 1, i + 2, factors, by, with, sums);
            sum<Vector, true>(B, i + 2, H.rows(), factors, by, with, sums);
        }
        by = H.by(i);
        for (std::size_t c = 0; c < block; ++c) {
            factors[c] = H.factor(i, sums[c]);
            B.row(i)[c] = H.row(i, factors[c]);
        }
    }
    add<Vector>(B, 1, H.rows(), factors, by);
}

/// From the last block to the first: a block needs the reflections up to its own, and takes their place.
template <class Vector, class Reflections>
[[gnu::always_inline]] inline void accumulate(const Reflections& H, aMatrix* M, double* rows)
{
    const std::size_t n = M->m_cols;
    for (std::size_t blocks = (n + block - 1) / block; blocks-- > 0;) {
        const Block B = {.m_from = blocks * block, .m_count = std::min(block, n - blocks * block), .m_rows = rows};
        begin_columns(H, B);
        for (std::size_t k = B.m_from; k < H.rows(); ++k)
            std::fill(B.row(k) + B.m_count, B.row(k) + block, B.row(k)[B.m_count - 1]); // the surplus repeats the last
        reflect_block<Vector>(H, B);
        for (std::size_t c = 0; c < B.m_count; ++c)
            for (std::size_t k = 0; k < H.rows(); ++k)
                Efi::at(M, k, B.m_from + c) = B.row(k)[c];
    }
}

void left_baseline(const FromTheLeft& H, aMatrix* U, double* rows)
{
    accumulate<Two>(H, U, rows);
}
void right_baseline(const FromTheRight& H, aMatrix* V, double* rows)
{
    accumulate<Two>(H, V, rows);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void left_avx2(const FromTheLeft& H, aMatrix* U, double* rows)
{
    accumulate<Four>(H, U, rows);
}
[[gnu::target("avx2")]] void right_avx2(const FromTheRight& H, aMatrix* V, double* rows)
{
    accumulate<Four>(H, V, rows);
}
#else
constexpr auto left_avx2 = left_baseline;
constexpr auto right_avx2 = right_baseline;
#endif

} // namespace

void accumulate_V(EfiCallContext* ctx, const Bidiagonal& B, aMatrix* V)
{
    const std::size_t n = B.m_n;
    double* const added = Efi::uncleared_doubles(ctx, std::uint64_t{n} * n);
    for (std::size_t i = 0; i + 1 < n; ++i)
        if (B.m_e[i + 1] != 0.0)
            for (std::size_t k = i + 1; k < n; ++k) // one quotient after the other, as in U
                added[k + i * n] = Efi::at(V, k, i) / Efi::at(V, i + 1, i) / B.m_e[i + 1];
    const FromTheRight H = {.m_V = V, .m_e = B.m_e, .m_added = added};
    at_level(right_baseline, right_avx2)(H, V, Efi::uncleared_doubles(ctx, n * block));
}

void accumulate_U(EfiCallContext* ctx, const Bidiagonal& B, aMatrix* U)
{
    const FromTheLeft H = {.m_U = U, .m_w = B.m_w};
    at_level(left_baseline, left_avx2)(H, U, Efi::uncleared_doubles(ctx, std::uint64_t{U->m_rows} * block));
}

} // namespace native
