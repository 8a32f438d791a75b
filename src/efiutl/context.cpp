#include "efiutl/context.hpp"

#include "efiutl/arena_testing.hpp"
#include "efiutl/block_pool.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/poison.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr std::size_t grain = 16; // everything an arena hands out begins at a multiple of this
constexpr std::size_t block_header_bytes = 64;
constexpr std::size_t block_bytes = std::size_t{32} << 10;
constexpr std::size_t largest_shared_array = block_bytes / 4; // larger ones get a block of their own
constexpr std::size_t largest_request = std::numeric_limits<std::size_t>::max() / 2;

struct ThreadState {
    std::size_t m_fail_at; // 0: never
    long m_arenas;
    long m_blocks;
};
constinit thread_local ThreadState thread_state{};

/// Bytes rounded up to the grain, at least one; an absurd count, the saturated one included, is refused.
std::size_t whole_grains(std::size_t bytes)
{
    if (bytes > largest_request)
        Efi::Throw(msg::out_of_memory, -1);
    return std::max(grain, (bytes + grain - 1) & ~(grain - 1));
}

} // namespace

struct IquAllocator::Block {
    Block* m_next;
    std::size_t m_bytes;  // header included
    bool m_has_one_array; // made for it, and holding nothing else

    std::byte* begin() noexcept { return reinterpret_cast<std::byte*>(this) + block_header_bytes; }
    std::byte* end() noexcept { return reinterpret_cast<std::byte*>(this) + m_bytes; }
};

IquAllocator::IquAllocator() noexcept
    : m_cursor(m_first_block + first_block_bytes), m_limit(m_first_block),
      m_requests_until_failure(thread_state.m_fail_at)
{
    static_assert(sizeof(Block) <= block_header_bytes && first_block_bytes % grain == 0);
    ++thread_state.m_arenas;
    Efi::poison(m_first_block, first_block_bytes);
}

IquAllocator::~IquAllocator()
{
    while (m_blocks != nullptr) {
        Block* const block = m_blocks;
        m_blocks = block->m_next;
        --thread_state.m_blocks;
        Efi::block_pool::give(block, block->m_bytes);
    }
    Efi::unpoison(m_first_block, first_block_bytes);
    --thread_state.m_arenas;
}

void IquAllocator::count_request()
{
    if (--m_requests_until_failure == 0) // begins at 0, and so never comes back to it, unless a test asks for a failure
        Efi::Throw(msg::out_of_memory, -1);
}

IquAllocator::Block* IquAllocator::add_block(std::size_t bytes, bool for_one_array)
{
    try {
        m_blocks = new (Efi::block_pool::take(bytes))
            Block{.m_next = m_blocks, .m_bytes = bytes, .m_has_one_array = for_one_array};
    } catch (const std::bad_alloc&) {
        Efi::Throw(msg::out_of_memory, -1);
    }
    ++thread_state.m_blocks;
    Efi::poison(m_blocks->begin(), bytes - block_header_bytes);
    return m_blocks;
}

std::byte* IquAllocator::take(std::size_t bytes)
{
    const std::size_t size = whole_grains(bytes) + Efi::red_zone_bytes;
    std::byte* array = m_limit;
    if (size > static_cast<std::size_t>(m_cursor - m_limit)) {
        if (size > largest_shared_array) {
            array = add_block(block_header_bytes + size, true)->begin();
            Efi::unpoison(array, bytes);
            return array;
        }
        Block* const block = add_block(block_bytes, false);
        array = block->begin();
        m_cursor = block->end();
    }
    m_limit = array + size;
    Efi::unpoison(array, bytes);
    return array;
}

void* IquAllocator::allocate_array(std::size_t bytes)
{
    count_request();
    return std::memset(take(bytes), 0, bytes);
}

void* IquAllocator::allocate_uncleared(std::size_t bytes)
{
    count_request();
    return take(bytes);
}

void* IquAllocator::carve(std::size_t bytes)
{
    count_request();
    const std::size_t size = whole_grains(bytes);
    if (size > static_cast<std::size_t>(m_cursor - m_limit))
        NewBuf(bytes);
    else
        m_cursor -= size;
    Efi::unpoison(m_cursor, bytes);
    return m_cursor;
}

void IquAllocator::NewBuf(std::size_t bytes)
{
    count_request();
    const std::size_t size = whole_grains(bytes);
    Block* const block = add_block(std::max(block_bytes, block_header_bytes + size), false);
    m_limit = block->begin();
    m_cursor = block->end() - size;
    Efi::unpoison(m_cursor, bytes);
}

IquAllocator::Adopted IquAllocator::adopt(const void* array, std::size_t bytes) noexcept
{
    if (bytes <= largest_shared_array)
        return {};
    for (Block** link = &m_blocks; *link != nullptr; link = &(*link)->m_next) {
        Block* const block = *link;
        if (block->begin() != array)
            continue;
        if (!block->m_has_one_array || block->m_bytes / 4 * 3 > bytes)
            return {};
        *link = block->m_next;
        --thread_state.m_blocks;
        return {.m_block = block, .m_bytes = block->m_bytes};
    }
    return {};
}

double* IquAllocator::copy_array(const aMatrix& A, const double* source, bool with_data)
{
    const std::size_t rows = A.m_rows;
    const std::size_t bytes = Efi::bytes_of_doubles(static_cast<std::uint64_t>(A.m_rows) * A.m_cols);
    if (source == nullptr && bytes != 0)
        return nullptr;
    if (!with_data)
        return static_cast<double*>(allocate_array(bytes));
    double* const copy = static_cast<double*>(allocate_uncleared(bytes));
    if (bytes == 0)
        return copy;
    if (A.m_anr == A.m_rows) {
        std::memcpy(copy, source, bytes);
    } else {
        for (std::size_t j = 0; j < A.m_cols; ++j)
            std::copy_n(source + j * A.m_anr, rows, copy + j * rows);
    }
    return copy;
}

void IquAllocator::cp(const Anyval* source, Anyval** destination, bool with_data, bool /*shared*/)
{
    if (!Efi::is_matrix(source)) {
        // A whole slot, though a number fills its first half only: the pointer handed out is one to either kind.
        Anyval* const number = new (carve(sizeof(Anyval))) Anyval{};
        if (with_data)
            number->m_number = source->m_number;
        *destination = number;
        return;
    }
    const aMatrix& A = source->m_matrix;
    double* const real = copy_array(A, A.m_rv, with_data);
    double* const imaginary = A.m_iv != nullptr ? copy_array(A, A.m_iv, with_data) : nullptr;
    *destination = reinterpret_cast<Anyval*>(aMatrix::mk(this, A.m_rows, A.m_cols, real, imaginary));
}

namespace Efi {

FailArenaAt::FailArenaAt(std::size_t k) noexcept : m_before(thread_state.m_fail_at)
{
    thread_state.m_fail_at = k;
}

FailArenaAt::~FailArenaAt()
{
    thread_state.m_fail_at = m_before;
}

LiveArenas live_arenas() noexcept
{
    return {.m_arenas = thread_state.m_arenas, .m_blocks = thread_state.m_blocks};
}

} // namespace Efi
