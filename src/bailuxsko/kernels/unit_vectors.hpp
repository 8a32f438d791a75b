#pragma once

#include <cstddef>
#include <utility>

namespace native {

/// Writes the columns of P into X, which is n by n and zero: the exchanges of rows bring the 1 of unit vector j to row
/// p, and column_of[p] tells where that column stands.
/// @param first_row  the number of the first row in `pivots`
inline void set_unit_vectors(std::size_t n, const double* pivots, double first_row, double* X, double** column_of)
{
    // Exchanging the rows of all unit vectors at once: position p holds the vector whose 1 has come there.
    for (std::size_t j = 0; j < n; ++j)
        column_of[j] = X + j * n;
    for (std::size_t k = 0; k < n; ++k)
        std::swap(column_of[k], column_of[static_cast<std::size_t>(pivots[k] - first_row)]);
    for (std::size_t p = 0; p < n; ++p)
        column_of[p][p] = 1.0;
}

} // namespace native
