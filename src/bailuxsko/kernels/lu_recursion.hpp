#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

/// Gaussian elimination by recursion on columns, real or complex: the left half is factored, what it leaves of the
/// right half is a product in tiles, and the right half is factored (Toledo, Locality of reference in LU decomposition
/// with partial pivoting, SIAM J. Matrix Anal. Appl. 18, 1997). Every element takes its updates in ascending k, so that
/// it has the bits of the plain loops.
namespace native {

inline constexpr std::size_t narrowest_range = 16; ///< so many columns are factored step by step
inline constexpr std::size_t rows_at_a_leaf = 16;  ///< so many rows of U are solved without another product

/// Some columns, or the steps that eliminate them: from m_from to before m_to.
struct Range {
    std::size_t m_from;
    std::size_t m_to;

    std::size_t size() const { return m_to - m_from; }
    /// Where the second half begins; the first is a multiple of the narrowest range.
    std::size_t middle() const
    {
        return m_from + (size() / 2 + narrowest_range - 1) / narrowest_range * narrowest_range;
    }
};

/// What the recursion ends in, at one instruction level.
template <class Elimination>
struct Leaves {
    /// The steps of a narrow range, as far as its own columns are concerned; false at a pivot of exactly zero.
    bool (*m_eliminate)(const Elimination& E, Range steps);
    /// The few rows of U that these steps give the columns to their right.
    void (*m_solve)(const Elimination& E, Range steps, Range columns);
    /// What the steps leave of the given rows in the columns to their right.
    void (*m_subtract)(const Elimination& E, Range steps, Range rows, Range columns, double* packed);
    /// The steps' exchanges of rows in columns that they did not reach.
    void (*m_exchange)(const Elimination& E, Range steps, Range columns);
};

template <class Elimination>
class Recursion {
public:
    /// @param packed  the workspace of the products
    Recursion(const Elimination& E, const Leaves<Elimination>& leaves, double* packed)
        : m_E(E), m_leaves(leaves), m_packed(packed)
    {
    }

    /// All steps of a range, as far as its own columns are concerned; false at a pivot of exactly zero.
    bool eliminate(Range steps) const
    {
        if (steps.size() <= narrowest_range)
            return m_leaves.m_eliminate(m_E, steps);
        const Range left{steps.m_from, steps.middle()};
        const Range right{steps.middle(), steps.m_to};
        if (!eliminate(left))
            return false;
        m_leaves.m_exchange(m_E, left, right);
        solve(left, right);
        m_leaves.m_subtract(m_E, left, {left.m_to, m_E.m_n}, right, m_packed);
        if (!eliminate(right))
            return false;
        m_leaves.m_exchange(m_E, right, left);
        return true;
    }

private:
    /// The rows of U that these steps give the columns to their right.
    void solve(Range steps, Range columns) const
    {
        if (steps.size() <= rows_at_a_leaf) {
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
    const Leaves<Elimination>& m_leaves;
    double* m_packed;
};

/// Carries out exchanges of rows in some columns, which stand ld apart: row k goes where pivot_row(k) says.
template <class PivotRow>
void exchange_in_columns(double* first_column, std::size_t ld, std::size_t columns, Range steps, PivotRow pivot_row)
{
    constexpr std::size_t at_once = 64;
    std::uint32_t pivots[at_once];
    for (std::size_t from = steps.m_from; from < steps.m_to; from += at_once) {
        const std::size_t count = std::min(at_once, steps.m_to - from);
        for (std::size_t k = 0; k < count; ++k)
            pivots[k] = static_cast<std::uint32_t>(pivot_row(from + k));
        for (std::size_t j = 0; j < columns; ++j) {
            double* const c = first_column + j * ld;
            for (std::size_t k = 0; k < count; ++k)
                std::swap(c[from + k], c[pivots[k]]);
        }
    }
}

} // namespace native
