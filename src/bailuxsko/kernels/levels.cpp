#include "bailuxsko/kernels/levels.hpp"

namespace native {

Level highest_level() noexcept
{
#if defined(__x86_64__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2"))
        return Level::avx2;
#endif
    return Level::baseline;
}

std::atomic<Level> kernel_level{highest_level()};

} // namespace native
