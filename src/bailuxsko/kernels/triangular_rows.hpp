#pragma once

#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cstddef>

/// Few rows of a triangular system with many right-hand sides: the sides stand side by side, so that a row of them is a
/// few vectors and no column waits for its own last component. Every element takes its terms in the order of the column
/// by column substitution. Beyond the edge the last side is repeated, and not stored.
namespace native::triangular {

inline constexpr std::size_t most_rows = 32;
inline constexpr std::size_t sides_at_once = 16;

enum class Triangle {
    unit_lower, ///< terms in ascending k, no division
    upper       ///< terms in descending k, then the division by the diagonal
};

/// The coefficients of the rows that are solved, a row behind the other.
using Coefficients = double[most_rows][most_rows];

/// Some sides, as many as `vectors` of them hold at most.
template <Triangle triangle, class Vector, std::size_t vectors, class Side>
[[gnu::always_inline]] inline void solve_sides(const Coefficients& t, std::size_t count, std::size_t first,
                                               std::size_t real, Side side)
{
    constexpr bool upper = triangle == Triangle::upper;
    constexpr std::size_t w = side_by_side::lanes<Vector>;
    double* from[vectors * w];
    for (std::size_t j = 0; j < vectors * w; ++j)
        from[j] = side(first + std::min(j, real - 1));
    Vector rows[most_rows][vectors];
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t j = 0; j < vectors * w; ++j)
            rows[i][j / w][j % w] = from[j][i];
    for (std::size_t step = 0; step < count; ++step) {
        const std::size_t i = upper ? count - 1 - step : step;
        Vector row[vectors];
        for (std::size_t v = 0; v < vectors; ++v)
            row[v] = rows[i][v];
        for (std::size_t before = 0; before < step; ++before) {
            const std::size_t k = upper ? count - 1 - before : before;
            for (std::size_t v = 0; v < vectors; ++v)
                row[v] -= rows[k][v] * t[i][k];
        }
        for (std::size_t v = 0; v < vectors; ++v)
            rows[i][v] = upper ? row[v] / t[i][i] : row[v];
    }
    for (std::size_t j = 0; j < real; ++j)
        for (std::size_t i = 0; i < count; ++i)
            from[j][i] = rows[i][j / w][j % w];
}

/// Solves `count` rows, at most most_rows, in place.
/// @param T     the triangle's first element, columns ld apart
/// @param side  side(j) points to the first of the rows in right-hand side j
template <Triangle triangle, class Vector, class Side>
[[gnu::always_inline]] inline void solve_rows(const double* T, std::size_t ld, std::size_t count, std::size_t sides,
                                              Side side)
{
    constexpr bool upper = triangle == Triangle::upper;
    constexpr std::size_t w = side_by_side::lanes<Vector>;
    Coefficients t;
    for (std::size_t k = 0; k < count; ++k)
        for (std::size_t i = upper ? 0 : k + 1; i < (upper ? k + 1 : count); ++i)
            t[i][k] = T[i + k * ld];
    std::size_t first = 0;
    for (; first + w < sides; first += sides_at_once)
        solve_sides<triangle, Vector, sides_at_once / w>(t, count, first, std::min(sides_at_once, sides - first), side);
    if (first < sides) // few enough for one vector
        solve_sides<triangle, Vector, 1>(t, count, first, sides - first, side);
}

} // namespace native::triangular
