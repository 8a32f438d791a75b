#pragma once

#include "efiutl/api.hpp"

#include <cstddef>
#include <cstdint>

namespace Efi {

/// Moves the rows or the columns of an array of rows by cols to the places that a permutation gives them.
/// Words are copied as they are, so that every NaN keeps its payload and a marked slot its mark.
/// @param stride       words from one column to the next, of both arrays
/// @param p            d != 0: row i of the destination is row p[i] of the source; 0: column j is column p[j]
BAILUXSKO_API void indexSort(std::size_t rows, std::size_t stride, std::size_t cols, const double* source,
                             double* destination, const std::uint32_t* p, int d);

} // namespace Efi
