#pragma once

#include "efiutl/api.hpp"

#include <cstddef>
#include <limits>
#include <new>

/// Recycled memory for the arenas and for the host's arrays. The first touch of a fresh page costs more than all
/// that a kernel does with it, so a block that is given back stays with the thread for its next call.
namespace Efi::block_pool {

/// Smaller blocks go straight to malloc, which is quick with them and does not give them back to the system.
inline constexpr std::size_t smallest_kept_block = std::size_t{32} << 10;
/// What one thread keeps at most; the blocks given back longest ago go first.
inline constexpr std::size_t kept_bytes_per_thread = std::size_t{64} << 20;
inline constexpr std::size_t kept_blocks_per_thread = 32;
/// From here on a fresh block starts on a huge page and asks for huge pages.
inline constexpr std::size_t huge_page = std::size_t{2} << 20;
inline constexpr std::size_t huge_page_threshold = std::size_t{4} << 20;

/// At least `bytes` bytes with whatever content, aligned for any object (to a cache line if the block can be kept).
/// @throws std::bad_alloc, also for more than half of the machine's memory, and where the blocks too large to be kept
///         would hold more than 7/8 of it together: an absurd size, or a matrix that doubles once too often, must
///         become an error here and not a killed process later
BAILUXSKO_API void* take(std::size_t bytes);

/// Gives back what `take(bytes)` handed out, on whatever thread; also when the thread's pool is already gone.
BAILUXSKO_API void give(void* block, std::size_t bytes) noexcept;

/// What `take(bytes)` really sets aside: from the smallest kept block on, eight sizes to each doubling.
BAILUXSKO_API std::size_t capacity(std::size_t bytes) noexcept;

/// Bytes that the calling thread keeps at the moment.
BAILUXSKO_API std::size_t kept_bytes() noexcept;

/// Gives all that the calling thread keeps back to the system.
BAILUXSKO_API void release() noexcept;

} // namespace Efi::block_pool

namespace Efi {

/// The pool as a standard allocator: std::allocate_shared_for_overwrite<double[]>(pool_allocator<double>{}, n).
template <typename T>
struct pool_allocator {
    using value_type = T;

    pool_allocator() noexcept = default;
    template <typename U>
    pool_allocator(const pool_allocator<U>&) noexcept
    {
    }

    T* allocate(std::size_t count)
    {
        static_assert(alignof(T) <= alignof(std::max_align_t));
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T))
            throw std::bad_alloc();
        return static_cast<T*>(block_pool::take(count * sizeof(T)));
    }
    void deallocate(T* block, std::size_t count) noexcept { block_pool::give(block, count * sizeof(T)); }

    template <typename U>
    bool operator==(const pool_allocator<U>&) const noexcept
    {
        return true;
    }
};

} // namespace Efi
