#include "efiutl/records.hpp"

#include "efiutl/context.hpp"

#include <bit>
#include <cstring>
#include <new>

namespace {

constexpr std::uint64_t exponent_bits = 0x7FF0000000000000U;

} // namespace

const double aMatrix::m_zero = 0.0;

aMatrix* aMatrix::mk(IquAllocator* arena, std::uint32_t rows, std::uint32_t cols, double* real, double* imaginary)
{
    return new (arena->carve(sizeof(aMatrix)))
        aMatrix{.m_anr = rows, .m_tag = tag, .m_rows = rows, .m_cols = cols, .m_rv = real, .m_iv = imaginary};
}

namespace Efi {

bool is_matrix(const Anyval* value) noexcept
{
    constexpr std::uint32_t tag_bits = 0x7FFC0000U; // those of the upper half that tell the tag from other NaNs
    std::uint64_t head;                             // copied, as it may be a double or two integers
    std::memcpy(&head, value, sizeof head);
    return (static_cast<std::uint32_t>(head >> 32) & tag_bits) == aMatrix::tag;
}

double ptr_nan() noexcept
{
    return std::bit_cast<double>(ptr_nan_bits);
}

bool isPtrNan(double x) noexcept
{
    return std::bit_cast<std::uint64_t>(x) == ptr_nan_bits;
}

bool ISFINITE(double x) noexcept
{
    // By the bits: a comparison would raise the invalid flag on a NaN.
    return (std::bit_cast<std::uint64_t>(x) & exponent_bits) != exponent_bits;
}

} // namespace Efi
