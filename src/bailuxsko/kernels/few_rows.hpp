#pragma once

#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cstddef>

/// Products whose left factor has few rows: the sums of one to four columns stay in registers from the first to the
/// last term, and nothing is packed.
namespace native::few_rows {

using side_by_side::Eight;
using side_by_side::Four;
using side_by_side::lanes;
using side_by_side::load;
using side_by_side::store;

/// One array of each factor and of the product, which is m by n and packed.
struct Factors {
    const double* A;
    std::size_t lda;
    const double* B;
    std::size_t ldb;
    double* C;
    std::size_t m;
    std::size_t n;
    std::size_t depth;
};

/// With more rows tiles are faster.
inline constexpr std::size_t most_rows = 16;
/// A left factor of fewer rows than a vector is copied, with its last row repeated, if it has at most so many columns.
inline constexpr std::size_t most_copied_columns = 16;
/// What may be written behind the last element of the product.
inline constexpr std::size_t most_surplus = 3;

/// Whether there is a form for the shape here.
constexpr bool suits(std::size_t m, std::size_t depth)
{
    return m >= lanes<Four> ? m <= most_rows : m > 0 && depth <= most_copied_columns;
}

/// Columns j to j + cols of the product. Where the rows fill no whole number of vectors, the last vector reaches back
/// into the one before it: both have the same sums there.
template <class Vector, std::size_t vectors, std::size_t cols>
[[gnu::always_inline]] inline void multiply_columns(const Factors& F, std::size_t j)
{
    const auto row = [&](std::size_t v) { return v + 1 < vectors ? v * lanes<Vector> : F.m - lanes<Vector>; };
    const double* a = F.A;
    const double* const b = F.B + j * F.ldb;
    Vector sum[cols][vectors];
    for (std::size_t c = 0; c < cols; ++c)
        for (std::size_t v = 0; v < vectors; ++v)
            sum[c][v] = Vector{};
    for (std::size_t k = 0; k < F.depth; ++k, a += F.lda) {
        Vector column[vectors];
        for (std::size_t v = 0; v < vectors; ++v)
            load(column[v], a + row(v));
        for (std::size_t c = 0; c < cols; ++c)
            for (std::size_t v = 0; v < vectors; ++v)
                sum[c][v] += column[v] * b[k + c * F.ldb];
    }
    for (std::size_t c = 0; c < cols; ++c)
        for (std::size_t v = 0; v < vectors; ++v)
            store(sum[c][v], F.C + (j + c) * F.m + row(v));
}

template <class Vector, std::size_t vectors>
[[gnu::always_inline]] inline void multiply_vectors(const Factors& F)
{
    std::size_t j = 0;
    if constexpr (vectors <= 3) // the sums of four higher columns leave no register for the factors
        for (; j + 4 <= F.n; j += 4)
            multiply_columns<Vector, vectors, 4>(F, j);
    for (; j + 2 <= F.n; j += 2)
        multiply_columns<Vector, vectors, 2>(F, j);
    if (j < F.n)
        multiply_columns<Vector, vectors, 1>(F, j);
}

/// Column k of a left factor with at most as many rows as a vector has, the last row repeated: zeros in its place
/// would raise flags that the factor does not (0 times infinity).
[[gnu::always_inline]] inline void load_repeating(Four& column, const Factors& F, std::size_t k)
{
    for (std::size_t i = 0; i < lanes<Four>; ++i)
        column[i] = F.A[k * F.lda + std::min(i, F.m - 1)];
}

/// At most 4 rows, and so many columns in the left factor: all of it in registers. A column of the product overwrites
/// the surplus of the one before it.
template <std::size_t depth>
[[gnu::always_inline]] inline void multiply_smallest(const Factors F)
{
    Four A[depth];
    for (std::size_t k = 0; k < depth; ++k)
        load_repeating(A[k], F, k);
    for (std::size_t j = 0; j < F.n; ++j) {
        Four sum = {};
        for (std::size_t k = 0; k < depth; ++k)
            sum += A[k] * F.B[k + j * F.ldb];
        store(sum, F.C + j * F.m);
    }
}

/// Fewer than 4 rows, and at most most_copied_columns columns in the left factor.
[[gnu::always_inline]] inline void multiply_copied(const Factors& F)
{
    Four A[most_copied_columns];
    for (std::size_t k = 0; k < F.depth; ++k)
        load_repeating(A[k], F, k);
    for (std::size_t j = 0; j < F.n; ++j) {
        Four sum = {};
        for (std::size_t k = 0; k < F.depth; ++k)
            sum += A[k] * F.B[k + j * F.ldb];
        store(sum, F.C + j * F.m);
    }
}

/// The product of factors that suit, with vectors of at most the given kind.
template <class Widest>
[[gnu::always_inline]] inline void multiply(const Factors& F)
{
    if (F.m <= 4 && F.depth == 2)
        return multiply_smallest<2>(F);
    if (F.m <= 4 && F.depth == 3)
        return multiply_smallest<3>(F);
    if (F.m <= 4 && F.depth == 4)
        return multiply_smallest<4>(F);
    if (F.m < 4)
        return multiply_copied(F);
    if constexpr (lanes<Widest> == lanes<Eight>) {
        if (F.m == 8)
            return multiply_vectors<Eight, 1>(F);
        if (F.m > 8)
            return multiply_vectors<Eight, 2>(F);
    }
    if (F.m == 4)
        return multiply_vectors<Four, 1>(F);
    if (F.m <= 8)
        return multiply_vectors<Four, 2>(F);
    if (F.m <= 12)
        return multiply_vectors<Four, 3>(F);
    return multiply_vectors<Four, 4>(F);
}

} // namespace native::few_rows
