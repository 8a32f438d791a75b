#pragma once

#include "bailuxsko/lapack/guard_zone.hpp"
#include "efiutl/context.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lapack {

/// Asks for an array that is written before it is read.
struct Uncleared {};
inline constexpr Uncleared uncleared{};

/// The bytes of an array in the arena. Room is counted in doubles: a complex number takes two, an int one too. A count
/// that would overflow asks for the largest size, which no arena can give.
template <class T>
constexpr std::size_t arena_bytes(std::uint64_t count) noexcept
{
    constexpr std::uint64_t doubles = (sizeof(T) + sizeof(double) - 1) / sizeof(double);
    return count > ~std::uint64_t{0} / doubles ? ~std::size_t{0} : Efi::bytes_of_doubles(count * doubles);
}

/// An array for LAPACK in the call's arena, which it goes with; between guard zones in debug builds. T is double,
/// MKL_Complex16 or int.
template <class T>
class ArenaArray {
public:
    /// Zeros. @throws "out of memory" (-1), as a native error
    ArenaArray(EfiCallContext* ctx, std::uint64_t count) : ArenaArray(ctx, count, uncleared)
    {
        std::memset(static_cast<void*>(m_first), 0, m_bytes);
    }

    ArenaArray(EfiCallContext* ctx, std::uint64_t count, Uncleared) : m_bytes(arena_bytes<T>(count))
    {
        void* const block = ctx->m_arena->allocate_uncleared(guard_zone::with_zones(m_bytes));
        m_first = static_cast<T*>(guard_zone::lay(block, m_bytes));
    }

    ArenaArray(const ArenaArray&) = delete;
    ArenaArray& operator=(const ArenaArray&) = delete;
    ~ArenaArray() { guard_zone::check(m_first, m_bytes); }

    T* get() const noexcept { return m_first; }

private:
    std::size_t m_bytes;
    T* m_first;
};

} // namespace lapack
