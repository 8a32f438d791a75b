#include "bailuxsko/lapack/buffers.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/lapack/guard_zone.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "efiutl/messages.hpp"

#include <limits>

namespace lapack {

namespace {

constexpr int alignment = 16;

[[noreturn]] void raise_out_of_memory()
{
    Evl::Run::AppException::Raise(msg::out_of_memory, -1);
}

} // namespace

std::size_t buffer_bytes(std::uint64_t count, std::size_t element_bytes)
{
    constexpr std::uint64_t most_bytes = std::numeric_limits<std::int32_t>::max();
    if (count > most_bytes / element_bytes)
        raise_out_of_memory();
    return static_cast<std::size_t>(count) * element_bytes;
}

Qud::FreshNumbers result_numbers(std::uint64_t count)
{
    const std::size_t bytes = buffer_bytes(count, sizeof(double));
    if (guard_zone::bytes() == 0)
        return Qud::fresh_numbers(bytes / sizeof(double));
    const Qud::FreshNumbers block = Qud::fresh_numbers(guard_zone::with_zones(bytes) / sizeof(double));
    auto* const array = static_cast<double*>(guard_zone::lay(block.get(), bytes));
    return {array, [block, bytes](double* numbers) { guard_zone::check(numbers, bytes); }};
}

namespace detail {

void* take_buffer(std::size_t bytes)
{
    void* const block = routines().malloc(guard_zone::with_zones(bytes), alignment);
    if (!block)
        raise_out_of_memory();
    return guard_zone::lay(block, bytes);
}

void give_buffer(void* buffer, std::size_t bytes) noexcept
{
    routines().free(buffer ? guard_zone::check(buffer, bytes) : nullptr);
}

} // namespace detail

mkl_auto_rel::~mkl_auto_rel()
{
    routines().free_buffers();
}

} // namespace lapack
