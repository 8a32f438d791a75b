#pragma once

#include "efiutl/api.hpp"

#include <cstddef>

/// Stretches of known bytes on either side of each array that LAPACK works on, in debug and sanitized builds and where
/// BAILUXSKO_GUARD_ZONES asks for them: the provider is not built by us, so no sanitizer sees it write beyond an end.
namespace lapack::guard_zone {

/// Bytes on either side; 0 in a build without zones.
BAILUXSKO_API std::size_t bytes() noexcept;

/// What to ask for where an array of `length` bytes is wanted; the count that stands for "more than there is" (all
/// bits set) stays as it is.
BAILUXSKO_API std::size_t with_zones(std::size_t length) noexcept;

/// Lays the zones into a block of with_zones(length) bytes; the array between them.
BAILUXSKO_API void* lay(void* block, std::size_t length) noexcept;

/// The block of the array again. Where a zone has changed there is no way to go on: says so on standard error and ends
/// the process.
BAILUXSKO_API void* check(void* array, std::size_t length) noexcept;

} // namespace lapack::guard_zone
