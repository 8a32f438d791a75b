#include "bailuxsko/kernels/levels.hpp"

#include <algorithm>

namespace native {

Level highest_level() noexcept
{
#if defined(__x86_64__)
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx512f"))
        return Level::avx512;
    if (__builtin_cpu_supports("avx2"))
        return Level::avx2;
#endif
    return Level::baseline;
}

Level fastest_level() noexcept
{
#if defined(__x86_64__)
    // Measured: where multiplications and additions have units of their own, two vectors of avx2 do as much as one of
    // avx512, and the smaller tile wins; where they share units, avx512 multiplies and adds a third more.
    if (__builtin_cpu_is("intel"))
        return highest_level();
#endif
    return std::min(highest_level(), Level::avx2);
}

std::atomic<Level> kernel_level{fastest_level()};

} // namespace native
