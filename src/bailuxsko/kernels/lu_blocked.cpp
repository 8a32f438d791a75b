// Gaussian elimination by recursion on columns: the left half is factored, what it leaves of the right half is a
// product in tiles, and the right half is factored (Toledo, Locality of reference in LU decomposition with partial
// pivoting, SIAM J. Matrix Anal. Appl. 18, 1997).
// Ours: every element takes its updates in ascending k, each with a rounding after the product and one after the
// difference, so that every element has the bits of the plain loops.
#include "bailuxsko/kernels/lu_elimination.hpp"
#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace native {
namespace {

constexpr std::size_t narrowest = 16;       // columns that are factored step by step
constexpr std::size_t rows_by_columns = 16; // rows of U that are solved column by column
constexpr std::size_t columns_side_by_side = 16;

/// Some columns, or the steps that eliminate them: from m_from to before m_to.
struct Range {
    std::size_t m_from;
    std::size_t m_to;

    std::size_t size() const { return m_to - m_from; }
    /// The first half, a multiple of the narrowest range.
    std::size_t middle() const { return m_from + (size() / 2 + narrowest - 1) / narrowest * narrowest; }
};

/// Carries out the exchanges of rows of these steps in columns that they did not reach.
void exchange_in_columns(const Elimination& E, Range steps, Range columns)
{
    constexpr std::size_t at_once = 64;
    std::uint32_t pivots[at_once];
    for (std::size_t from = steps.m_from; from < steps.m_to; from += at_once) {
        const std::size_t count = std::min(at_once, steps.m_to - from);
        for (std::size_t k = 0; k < count; ++k)
            pivots[k] = static_cast<std::uint32_t>(E.m_pivots[from + k]);
        for (std::size_t j = columns.m_from; j < columns.m_to; ++j) {
            double* const c = E.column(j);
            for (std::size_t k = 0; k < count; ++k)
                std::swap(c[from + k], c[pivots[k]]);
        }
    }
}

/// What `steps` leave of the given rows in the columns to their right.
template <class Vector>
[[gnu::always_inline]] inline void subtract_steps(const Elimination& E, Range steps, Range rows, Range columns,
                                                  double* packed)
{
    tiles::rows_of_product<tiles::Update::subtract, Vector>(
        E.column(steps.m_from), E.m_ld, rows.m_from, rows.m_to, columns.size(), steps.size(),
        [&](std::size_t j) { return E.column(columns.m_from + j) + steps.m_from; },
        [&](std::size_t j) { return E.column(columns.m_from + j); }, packed);
}

/// The few rows of U that these steps give the columns to their right, many columns side by side: a row of them is a
/// few vectors, and every element takes its terms in ascending k. Beyond the edge the last column is repeated.
template <class Vector>
[[gnu::always_inline]] inline void solve_rows(const Elimination& E, Range steps, Range columns)
{
    constexpr std::size_t w = tiles::width<Vector>;
    constexpr std::size_t vectors = columns_side_by_side / w;
    const std::size_t count = steps.size();
    double L[rows_by_columns][rows_by_columns];
    for (std::size_t k = 0; k < count; ++k)
        for (std::size_t i = k + 1; i < count; ++i)
            L[i][k] = E.column(steps.m_from + k)[steps.m_from + i];
    for (std::size_t first = columns.m_from; first < columns.m_to; first += columns_side_by_side) {
        const std::size_t real = std::min(columns_side_by_side, columns.m_to - first);
        double* from[columns_side_by_side];
        for (std::size_t j = 0; j < columns_side_by_side; ++j)
            from[j] = E.column(first + std::min(j, real - 1)) + steps.m_from;
        Vector rows[rows_by_columns][vectors];
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t j = 0; j < columns_side_by_side; ++j)
                rows[i][j / w][j % w] = from[j][i];
        for (std::size_t i = 1; i < count; ++i) {
            Vector row[vectors];
            for (std::size_t v = 0; v < vectors; ++v)
                row[v] = rows[i][v];
            for (std::size_t k = 0; k < i; ++k)
                for (std::size_t v = 0; v < vectors; ++v)
                    row[v] -= rows[k][v] * L[i][k];
            for (std::size_t v = 0; v < vectors; ++v)
                rows[i][v] = row[v];
        }
        for (std::size_t j = 0; j < real; ++j)
            for (std::size_t i = 1; i < count; ++i)
                from[j][i] = rows[i][j / w][j % w];
    }
}

/// What the recursion ends in, at one level.
struct Leaves {
    bool (*m_eliminate)(const Elimination& E, Range steps);
    void (*m_solve)(const Elimination& E, Range steps, Range columns);
    void (*m_subtract)(const Elimination& E, Range steps, Range rows, Range columns, double* packed);
};

bool eliminate_at_baseline(const Elimination& E, Range steps)
{
    return eliminate_columns(E, steps.m_from, steps.m_to);
}
void solve_at_baseline(const Elimination& E, Range steps, Range columns)
{
    solve_rows<tiles::Two>(E, steps, columns);
}
void subtract_at_baseline(const Elimination& E, Range steps, Range rows, Range columns, double* packed)
{
    subtract_steps<tiles::Two>(E, steps, rows, columns, packed);
}
constexpr Leaves baseline{eliminate_at_baseline, solve_at_baseline, subtract_at_baseline};

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool eliminate_at_avx2(const Elimination& E, Range steps)
{
    return eliminate_columns(E, steps.m_from, steps.m_to);
}
[[gnu::target("avx2")]] void solve_at_avx2(const Elimination& E, Range steps, Range columns)
{
    solve_rows<tiles::Four>(E, steps, columns);
}
[[gnu::target("avx2")]] void subtract_at_avx2(const Elimination& E, Range steps, Range rows, Range columns,
                                              double* packed)
{
    subtract_steps<tiles::Four>(E, steps, rows, columns, packed);
}
constexpr Leaves avx2{eliminate_at_avx2, solve_at_avx2, subtract_at_avx2};
#else
constexpr Leaves avx2 = baseline;
#endif

/// The elimination as a recursion over leaves of one level.
class Recursion {
public:
    Recursion(const Elimination& E, const Leaves& leaves, double* packed) : m_E(E), m_leaves(leaves), m_packed(packed)
    {
    }

    /// All steps of a range, as far as its own columns are concerned; false at a pivot of exactly zero.
    bool eliminate(Range steps) const
    {
        if (steps.size() <= narrowest)
            return m_leaves.m_eliminate(m_E, steps);
        const Range left{steps.m_from, steps.middle()};
        const Range right{steps.middle(), steps.m_to};
        if (!eliminate(left))
            return false;
        exchange_in_columns(m_E, left, right);
        solve(left, right);
        m_leaves.m_subtract(m_E, left, {left.m_to, m_E.m_n}, right, m_packed);
        if (!eliminate(right))
            return false;
        exchange_in_columns(m_E, right, left);
        return true;
    }

private:
    /// The rows of U that these steps give the columns to their right.
    void solve(Range steps, Range columns) const
    {
        if (steps.size() <= rows_by_columns) {
            m_leaves.m_solve(m_E, steps, columns);
            return;
        }
        const Range upper{steps.m_from, steps.middle()};
        const Range lower{steps.middle(), steps.m_to};
        solve(upper, columns);
        m_leaves.m_subtract(m_E, upper, lower, columns, m_packed);
        solve(lower, columns);
    }

    const Elimination& m_E;
    const Leaves& m_leaves;
    double* m_packed;
};

} // namespace

std::size_t blocked_workspace(std::size_t n)
{
    return tiles::workspace(n, n);
}

bool eliminate_blocked_baseline(const Elimination& E, double* packed)
{
    return Recursion(E, baseline, packed).eliminate({0, E.m_n});
}

bool eliminate_blocked_avx2(const Elimination& E, double* packed)
{
    return Recursion(E, avx2, packed).eliminate({0, E.m_n});
}

} // namespace native
