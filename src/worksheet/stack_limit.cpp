#include "worksheet/stack_limit.hpp"

#include <pthread.h>

#include <algorithm>
#include <cstddef>

namespace worksheet {

namespace {

/// What every thread has left when a worksheet starts on it.
constexpr std::uintptr_t surely_there = 32 * 1024;
/// Kept for library functions and LAPACK, which know no limit; of a small stack a third.
constexpr std::uintptr_t kept_free = 512 * 1024;

std::uintptr_t true_floor() noexcept
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return 0;
    void* lowest = nullptr;
    std::size_t bytes = 0;
    const bool known = pthread_attr_getstack(&attributes, &lowest, &bytes) == 0;
    pthread_attr_destroy(&attributes);
    if (!known)
        return 0;
    return reinterpret_cast<std::uintptr_t>(lowest) + std::min<std::uintptr_t>(kept_free, bytes / 3);
}

} // namespace

StackLimit::StackLimit() noexcept : m_floor(reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0)) - surely_there)
{
}

bool StackLimit::is_below_true_floor(std::uintptr_t here) noexcept
{
    if (!m_is_true) {
        m_floor = true_floor();
        m_is_true = true;
    }
    return here < m_floor;
}

} // namespace worksheet
