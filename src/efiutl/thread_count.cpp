#include "efiutl/thread_count.hpp"

#include <algorithm>
#include <thread>

#if defined(__linux__)
#include <sched.h>
#endif

namespace utl {

std::uint32_t GetNumberOfProcessors() noexcept
{
#if defined(__linux__)
    // A machine of more processors than the fixed set holds makes the call fail: then count them all.
    cpu_set_t allowed;
    CPU_ZERO(&allowed);
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0)
        return static_cast<std::uint32_t>(std::max(1, CPU_COUNT(&allowed)));
#endif
    return std::max(1U, std::thread::hardware_concurrency());
}

} // namespace utl

namespace Efi {

std::atomic<std::uint32_t> MKL_NUM_THREADS{utl::GetNumberOfProcessors()};

} // namespace Efi
