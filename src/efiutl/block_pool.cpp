#include "efiutl/block_pool.hpp"

#include "efiutl/poison.hpp"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

namespace Efi::block_pool {
namespace {

constexpr std::size_t cache_line = 64;
constexpr int sizes_per_doubling_log2 = 3;

struct Kept {
    void* m_block;
    std::size_t m_capacity;
};

/// One thread's kept blocks, the one given back longest ago first. Needs no destructor and starts as zeros, so it can
/// be used until the thread's storage itself is gone, by static destructors too.
struct Pool {
    Kept m_kept[kept_blocks_per_thread];
    std::size_t m_count;
    std::size_t m_bytes;
    bool m_closed; // the thread is about to end: nothing is kept any more

    void forget(std::size_t i) noexcept
    {
        m_bytes -= m_kept[i].m_capacity;
        std::copy(m_kept + i + 1, m_kept + m_count, m_kept + i);
        --m_count;
    }

    void free_oldest() noexcept
    {
        const Kept oldest = m_kept[0];
        forget(0);
        unpoison(oldest.m_block, oldest.m_capacity);
        std::free(oldest.m_block);
    }

    void free_all() noexcept
    {
        while (m_count > 0)
            free_oldest();
    }
};

constinit thread_local Pool pool{};

/// Empties the thread's pool when the thread ends.
struct Closer {
    Closer() noexcept = default;
    Closer(const Closer&) = delete;
    Closer& operator=(const Closer&) = delete;
    ~Closer()
    {
        pool.free_all();
        pool.m_closed = true;
    }
};

std::size_t memory_of_machine() noexcept
{
    static const std::size_t all = [] {
        const long pages = sysconf(_SC_PHYS_PAGES);
        const long page = sysconf(_SC_PAGESIZE);
        return pages > 0 && page > 0 ? static_cast<std::size_t>(pages) * static_cast<std::size_t>(page)
                                     : std::size_t{1} << 41;
    }();
    return all;
}

/// Blocks too large to be kept, of all threads: what they hold together.
constinit std::atomic<std::size_t> large_bytes{0};

bool is_large(std::size_t size) noexcept
{
    return size > kept_bytes_per_thread;
}

void reserve_large(std::size_t size)
{
    if (large_bytes.fetch_add(size, std::memory_order_relaxed) + size > memory_of_machine() / 8 * 7) {
        large_bytes.fetch_sub(size, std::memory_order_relaxed);
        throw std::bad_alloc();
    }
}

void release_large(std::size_t size) noexcept
{
    large_bytes.fetch_sub(size, std::memory_order_relaxed);
}

void* fresh(std::size_t bytes)
{
    const bool huge = bytes >= huge_page_threshold;
    void* block = nullptr;
    if (posix_memalign(&block, huge ? huge_page : cache_line, bytes) != 0)
        throw std::bad_alloc();
    if (huge)
        madvise(block, bytes, MADV_HUGEPAGE); // a wish: whether it is granted changes nothing but time
    return block;
}

void* fresh_poisoned(std::size_t bytes, std::size_t size)
{
    void* const block = fresh(size);
    poison(static_cast<std::byte*>(block) + bytes, size - bytes);
    return block;
}

void* fresh_large(std::size_t bytes, std::size_t size)
{
    reserve_large(size);
    try {
        return fresh_poisoned(bytes, size);
    } catch (...) {
        release_large(size);
        throw;
    }
}

} // namespace

std::size_t capacity(std::size_t bytes) noexcept
{
    if (bytes < smallest_kept_block)
        return bytes;
    const std::size_t step = std::bit_floor(bytes) >> sizes_per_doubling_log2;
    return (bytes + step - 1) & ~(step - 1);
}

void* take(std::size_t bytes)
{
    if (bytes < smallest_kept_block) {
        if (void* const block = std::malloc(std::max<std::size_t>(bytes, 1)))
            return block;
        throw std::bad_alloc();
    }
    if (bytes > memory_of_machine() / 2)
        throw std::bad_alloc();
    const std::size_t wanted = capacity(bytes);
    if (is_large(wanted))
        return fresh_large(bytes, wanted);
    for (std::size_t i = pool.m_count; i-- > 0;) // the newest first: its memory is the likeliest to be in a cache
        if (pool.m_kept[i].m_capacity == wanted) {
            void* const block = pool.m_kept[i].m_block;
            pool.forget(i);
            unpoison(block, bytes);
            return block;
        }
    return fresh_poisoned(bytes, wanted);
}

void give(void* block, std::size_t bytes) noexcept
{
    if (block == nullptr)
        return;
    const std::size_t size = capacity(bytes);
    if (is_large(size))
        release_large(size);
    if (bytes < smallest_kept_block || is_large(size) || pool.m_closed) {
        unpoison(block, size);
        std::free(block);
        return;
    }
    static thread_local const Closer closer;
    while (pool.m_count == kept_blocks_per_thread || pool.m_bytes + size > kept_bytes_per_thread)
        pool.free_oldest();
    poison(block, size);
    pool.m_kept[pool.m_count++] = {.m_block = block, .m_capacity = size};
    pool.m_bytes += size;
}

std::size_t kept_bytes() noexcept
{
    return pool.m_bytes;
}

void release() noexcept
{
    pool.free_all();
}

} // namespace Efi::block_pool
