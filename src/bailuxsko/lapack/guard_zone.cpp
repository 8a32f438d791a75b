#include "bailuxsko/lapack/guard_zone.hpp"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace lapack::guard_zone {

namespace {

#if defined(BAILUXSKO_GUARD_ZONES)
constexpr std::size_t zone = 64; // a cache line keeps the array's alignment
#else
constexpr std::size_t zone = 0;
#endif

/// As part of a double a small number: what only reads beyond an end does no harm.
constexpr std::byte mark{0xA5};

bool is_whole(const std::byte* first) noexcept
{
    return std::all_of(first, first + zone, [](std::byte b) { return b == mark; });
}

[[noreturn]] void end_process(const char* side, std::size_t length) noexcept
{
    std::fprintf(stderr, "LAPACK wrote %s an array of %zu bytes\n", side, length);
    std::abort();
}

} // namespace

std::size_t bytes() noexcept
{
    return zone;
}

std::size_t with_zones(std::size_t length) noexcept
{
    return length > ~std::size_t{0} - 2 * zone ? length : length + 2 * zone;
}

void* lay(void* block, std::size_t length) noexcept
{
    auto* const first = static_cast<std::byte*>(block);
    std::fill_n(first, zone, mark);
    std::fill_n(first + zone + length, zone, mark);
    return first + zone;
}

void* check(void* array, std::size_t length) noexcept
{
    auto* const first = static_cast<std::byte*>(array);
    if (!is_whole(first - zone))
        end_process("before", length);
    if (!is_whole(first + length))
        end_process("beyond", length);
    return first - zone;
}

} // namespace lapack::guard_zone
