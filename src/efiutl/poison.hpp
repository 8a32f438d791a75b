#pragma once

#include <cstddef>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/asan_interface.h>
#endif

/// Under the address sanitizer, memory that is kept but belongs to nobody is out of bounds; elsewhere nothing happens.
namespace Efi {

#if defined(__SANITIZE_ADDRESS__)
/// Left between two pieces of an arena, so that a write past the end of one does not land in the next.
inline constexpr std::size_t red_zone_bytes = 16;

inline void poison(const void* begin, std::size_t bytes) noexcept
{
    __asan_poison_memory_region(begin, bytes);
}

inline void unpoison(const void* begin, std::size_t bytes) noexcept
{
    __asan_unpoison_memory_region(begin, bytes);
}
#else
inline constexpr std::size_t red_zone_bytes = 0;

inline void poison(const void*, std::size_t) noexcept {}
inline void unpoison(const void*, std::size_t) noexcept {}
#endif

} // namespace Efi
