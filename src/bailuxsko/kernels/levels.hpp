#pragma once

#include "efiutl/api.hpp"

#include <atomic>

/// Instruction levels. A fast kernel is one always-inlined body with a named instance for each level; all instances
/// give the same bits, so a level without fused multiply-add is the highest there is.
namespace native {

enum class Level { baseline, avx2 };

/// The highest level that this processor has.
BAILUXSKO_API Level highest_level() noexcept;

/// The level that kernels run at, chosen at load; a test may set any up to the highest.
BAILUXSKO_API extern std::atomic<Level> kernel_level;

/// The instance for the current level.
template <typename Function>
Function* at_level(Function* baseline, Function* avx2) noexcept
{
    return kernel_level.load(std::memory_order_relaxed) == Level::avx2 ? avx2 : baseline;
}

} // namespace native
