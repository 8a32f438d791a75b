#pragma once

#include "efiutl/api.hpp"
#include "efiutl/records.hpp"

#include <cstddef>
#include <cstdint>

/// The arena of one call: every record and work buffer of the call is carved from it and goes with it.
/// Its first block lies inside the object, so that a call on small matrices takes nothing from the heap;
/// larger blocks come from the thread's kept blocks (see efiutl/block_pool.hpp).
class BAILUXSKO_API IquAllocator {
public:
    static constexpr std::size_t first_block_bytes = 8192;

    IquAllocator() noexcept;
    ~IquAllocator();
    IquAllocator(const IquAllocator&) = delete;
    IquAllocator& operator=(const IquAllocator&) = delete;

    /// At least `bytes` bytes of zeros, aligned for doubles, valid until the arena goes.
    /// @throws "out of memory" (-1), also for the saturated count (all bits set)
    void* allocate_array(std::size_t bytes);

    /// The same without the zeros, for a result that is about to be written whole.
    void* allocate_uncleared(std::size_t bytes);

    /// A small record of whatever content, carved downwards from the cursor; calls NewBuf where there is no room.
    /// @throws "out of memory" (-1)
    void* carve(std::size_t bytes);

    /// Supplies a fresh block and leaves the cursor at a free slot of `bytes` bytes in it.
    /// @throws "out of memory" (-1)
    void NewBuf(std::size_t bytes);

    /// Copies a value, record and arrays, into the arena; the copy's leading dimension is its row count, and it has
    /// an imaginary array exactly when the source has one. An absent real array stays absent, unless there is no
    /// element. The flags are those of the function interface: the first asks for the data (zeros otherwise), the
    /// second, that the arrays be shared, is never set and not looked at.
    /// @throws "out of memory" (-1)
    void cp(const Anyval* source, Anyval** destination, bool with_data, bool shared);

    /// A block that has left its arena, to be given back to the pool when its array is done with; null for none.
    struct Adopted {
        void* m_block = nullptr;
        std::size_t m_bytes = 0;
    };

    /// Lets a large array of the arena outlive it, so that a result need not be copied out. Answers null, and changes
    /// nothing, unless `array` begins a block of its own that is not much larger than its `bytes`.
    Adopted adopt(const void* array, std::size_t bytes) noexcept;

private:
    struct Block;

    void count_request();
    Block* add_block(std::size_t bytes, bool for_one_array);
    std::byte* take(std::size_t bytes);
    double* copy_array(const aMatrix& A, const double* source, bool with_data);

    std::byte* m_cursor;                  // records are carved downwards from here ...
    std::byte* m_limit;                   // ... and must not reach below this; arrays grow upwards from it
    Block* m_blocks = nullptr;            // blocks beyond the first one, newest first
    std::size_t m_requests_until_failure; // counted down; see FailArenaAt
    alignas(16) std::byte m_first_block[first_block_bytes];
};

/// What an entry operation makes on its stack for one call and every native routine gets as its first argument.
struct EfiCallContext {
    EfiCallContext() noexcept : m_arena(&m_allocator) {}
    EfiCallContext(const EfiCallContext&) = delete;
    EfiCallContext& operator=(const EfiCallContext&) = delete;

    IquAllocator m_allocator;
    IquAllocator* m_arena; ///< the only way by which native routines reach the arena
    void* m_reserved = nullptr;
};

namespace Efi {

/// Bytes of `count` doubles; a count that would overflow asks for the largest size, which no arena can give.
constexpr std::size_t bytes_of_doubles(std::uint64_t count) noexcept
{
    return (count >> 61) != 0 ? ~std::size_t{0} : static_cast<std::size_t>(count * sizeof(double));
}

/// `count` doubles from the call's arena, zero-filled.
inline double* doubles(EfiCallContext* ctx, std::uint64_t count)
{
    return static_cast<double*>(ctx->m_arena->allocate_array(bytes_of_doubles(count)));
}

/// `count` doubles from the call's arena whose content is whatever was there: write them all.
inline double* uncleared_doubles(EfiCallContext* ctx, std::uint64_t count)
{
    return static_cast<double*>(ctx->m_arena->allocate_uncleared(bytes_of_doubles(count)));
}

} // namespace Efi
