#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

#include <cstddef>
#include <span>

namespace Efi {

/// The one unit of all arguments, or the marker of texts when all are texts or arrays of texts.
/// @throws "vector must have uniform dimension or all strings" (k), "cannot mix scalar and string for this function"
///         (-1), "unit mismatch" (k)
BAILUXSKO_API Qud::Dim UniformArgumentDimension(std::span<const Qud::Handle> values);

/// Whether all arguments are numbers or matrices of numbers.
BAILUXSKO_API bool allNumbers(std::span<const Qud::Handle> values);

/// Whether all arguments are texts or matrices without a number: their elements may still be arrays.
BAILUXSKO_API bool allStrings(std::span<const Qud::Handle> values);

/// The smallest of rows by cols numbers whose first stands at a[offset], columns `stride` apart; at least one number.
/// The search starts with the first number, or with 0 when that is a NaN, and a number takes over only when it is
/// smaller: no other NaN ever wins, and of equal zeros the first stays.
BAILUXSKO_API double vecmin(const double* a, std::size_t offset, std::size_t cols, std::size_t rows,
                            std::size_t stride);

/// The largest, found in the same way.
BAILUXSKO_API double vecmax(const double* a, std::size_t offset, std::size_t cols, std::size_t rows,
                            std::size_t stride);

} // namespace Efi
