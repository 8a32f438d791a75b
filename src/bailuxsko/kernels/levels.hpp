#pragma once

#include "efiutl/api.hpp"

#include <atomic>

/// Instruction levels. A fast kernel is one always-inlined body with a named instance for each level; all instances
/// give the same bits. None has a fused multiply-add: a product and a sum are two roundings everywhere. Only
/// loops whose vectors are written out, the tiles of products and the strips of rows and columns, have an instance for
/// avx512: what the vectoriser of GCC 12 finds by itself there it fuses.
namespace native {

enum class Level { baseline, avx2, avx512 };

/// The highest level that this processor has.
BAILUXSKO_API Level highest_level() noexcept;

/// The level that is fastest on this processor: avx512 where its vectors are worth more than those of avx2.
BAILUXSKO_API Level fastest_level() noexcept;

/// The level that kernels run at, the fastest from load on; a test may set any up to the highest.
BAILUXSKO_API extern std::atomic<Level> kernel_level;

/// The instance for the current level.
template <typename Function>
Function* at_level(Function* baseline, Function* avx2) noexcept
{
    return kernel_level.load(std::memory_order_relaxed) >= Level::avx2 ? avx2 : baseline;
}

template <typename Function>
Function* at_level(Function* baseline, Function* avx2, Function* avx512) noexcept
{
    return kernel_level.load(std::memory_order_relaxed) >= Level::avx512 ? avx512 : at_level(baseline, avx2);
}

} // namespace native
