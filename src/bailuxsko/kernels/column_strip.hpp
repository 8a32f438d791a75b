#pragma once

#include "bailuxsko/kernels/side_by_side.hpp"

#include <algorithm>
#include <cstddef>

/// A few neighbouring columns side by side: a vector holds the elements of one row, so that each column's sum or
/// rotation keeps its own order. A strip that reaches beyond the last column repeats it; what is computed there
/// is computed twice and stored twice, equal.
namespace native {

template <class Vector>
struct ColumnStrip {
    static constexpr std::size_t width = side_by_side::lanes<Vector>;

    double* m_columns[width];

    /// Columns `first` and on, of which `end` is the first that is not there.
    ColumnStrip(double* a, std::size_t ld, std::size_t first, std::size_t end)
    {
#pragma GCC unroll 4
        for (std::size_t c = 0; c < width; ++c)
            m_columns[c] = a + std::min(first + c, end - 1) * ld;
    }

    /// The elements of row i.
    [[gnu::always_inline]] void load_row(std::size_t i, Vector& row) const
    {
#pragma GCC unroll 4
        for (std::size_t c = 0; c < width; ++c)
            row[c] = m_columns[c][i];
    }
    [[gnu::always_inline]] void store_row(std::size_t i, const Vector& row) const
    {
#pragma GCC unroll 4
        for (std::size_t c = 0; c < width; ++c)
            m_columns[c][i] = row[c];
    }
    /// The elements of as many rows as there are columns, from row i on.
    [[gnu::always_inline]] void load_rows(std::size_t i, Vector (&rows)[width]) const
    {
#pragma GCC unroll 4
        for (std::size_t c = 0; c < width; ++c)
            side_by_side::load(rows[c], m_columns[c] + i);
        side_by_side::transpose(rows);
    }
    [[gnu::always_inline]] void store_rows(std::size_t i, Vector (&rows)[width]) const
    {
        side_by_side::transpose(rows);
#pragma GCC unroll 4
        for (std::size_t c = 0; c < width; ++c)
            side_by_side::store(rows[c], m_columns[c] + i);
    }
};

} // namespace native
