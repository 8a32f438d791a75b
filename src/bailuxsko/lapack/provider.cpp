#include "bailuxsko/lapack/provider.hpp"

#include "efiutl/block_pool.hpp"
#include "efiutl/thread_count.hpp"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <limits>
#include <mutex>
#include <new>

// Null where the provider is not OpenBLAS.
extern "C" {
[[gnu::weak]] void openblas_set_num_threads(int count);
[[gnu::weak]] int openblas_get_num_threads();
}

namespace lapack {

namespace {

constexpr std::size_t cache_line = 64;

std::atomic<int> threads_last_set{1};

/// Stands right before each block, so that `MKL_free` knows what to give back.
struct BlockHead {
    void* block;
    std::size_t bytes;
};

void set_provider_threads(int count) noexcept
{
    if (!openblas_set_num_threads || openblas_get_num_threads() == count)
        return;
    static std::mutex one_at_a_time;
    const std::lock_guard lock(one_at_a_time);
    openblas_set_num_threads(count);
}

/// At load: as many threads as processors, and no adjustment by the provider.
struct Start {
    Start() noexcept
    {
        MKL_Set_Num_Threads(static_cast<int>(utl::GetNumberOfProcessors()));
        MKL_Set_Dynamic(0);
    }
};

const Start start;

} // namespace

int MKL_Get_Max_Threads() noexcept
{
    return threads_last_set.load(std::memory_order_relaxed);
}

int most_provider_threads() noexcept
{
    static const int processors = static_cast<int>(utl::GetNumberOfProcessors());
    return processors;
}

void MKL_Set_Num_Threads(int count) noexcept
{
    if (count < 1)
        return;
    threads_last_set.store(count, std::memory_order_relaxed);
    set_provider_threads(std::min(count, most_provider_threads()));
}

void MKL_Set_Dynamic(int) noexcept {}

void MKL_Free_Buffers() noexcept {}

void* MKL_malloc(std::size_t bytes, int alignment) noexcept
{
    const std::size_t step = std::max(cache_line, static_cast<std::size_t>(alignment));
    // Blocks come in steps of 16 bytes, so that at least as many of the margin stay behind the last element.
    const std::size_t margin = sizeof(BlockHead) + step;
    if (bytes > std::numeric_limits<std::size_t>::max() - margin)
        return nullptr;
    try {
        void* const block = Efi::block_pool::take(bytes + margin);
        const auto first = reinterpret_cast<std::uintptr_t>(block) + sizeof(BlockHead);
        const std::uintptr_t aligned = (first + step - 1) / step * step;
        new (reinterpret_cast<void*>(aligned - sizeof(BlockHead))) BlockHead{.block = block, .bytes = bytes + margin};
        return reinterpret_cast<void*>(aligned);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void MKL_free(void* block) noexcept
{
    if (!block)
        return;
    const BlockHead head = static_cast<const BlockHead*>(block)[-1];
    Efi::block_pool::give(head.block, head.bytes);
}

} // namespace lapack
