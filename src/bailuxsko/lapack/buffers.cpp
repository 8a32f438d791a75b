#include "bailuxsko/lapack/buffers.hpp"

#include "bailuxhost/error.hpp"
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
    return Qud::fresh_numbers(buffer_bytes(count, sizeof(double)) / sizeof(double));
}

namespace detail {

void* take_buffer(std::size_t bytes)
{
    void* const buffer = routines().malloc(bytes, alignment);
    if (!buffer)
        raise_out_of_memory();
    return buffer;
}

void give_buffer(void* buffer) noexcept
{
    routines().free(buffer);
}

} // namespace detail

mkl_auto_rel::~mkl_auto_rel()
{
    routines().free_buffers();
}

} // namespace lapack
