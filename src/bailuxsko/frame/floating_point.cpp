#include "bailuxsko/frame/floating_point.hpp"

#if defined(__x86_64__)

#include <immintrin.h>

namespace Efi::fp {

namespace {

// The SSE control and status register: flags in bits 0..5, exception masks in bits 7..12, both in the order
// invalid, denormal, zero divide, overflow, underflow, inexact.
constexpr std::uint32_t flag_bits = 0x3F;
constexpr std::uint32_t mask_shift = 7;
constexpr std::uint32_t mask_bits = flag_bits << mask_shift;

/// From the register's order to that of the function interface.
constexpr std::uint32_t to_interface(std::uint32_t bits) noexcept
{
    return ((bits & 0x01) << 4) | ((bits & 0x02) << 18) | ((bits & 0x04) << 1) | ((bits & 0x08) >> 1) |
           ((bits & 0x10) >> 3) | ((bits & 0x20) >> 5);
}

/// And back.
constexpr std::uint32_t from_interface(std::uint32_t bits) noexcept
{
    return ((bits & invalid) >> 4) | ((bits & denormal) >> 18) | ((bits & zero_divide) >> 1) |
           ((bits & overflow) << 1) | ((bits & underflow) << 3) | ((bits & inexact) << 5);
}

static_assert(from_interface(to_interface(flag_bits)) == flag_bits);
static_assert(to_interface(flag_bits) == exception_masks);

} // namespace

std::uint32_t _clearfp() noexcept
{
    const std::uint32_t state = _mm_getcsr();
    // Reading is cheap, writing is not: leave a register that is clear already.
    if ((state & flag_bits) != 0)
        _mm_setcsr(state & ~flag_bits);
    return to_interface(state & flag_bits);
}

std::uint32_t _statusfp() noexcept
{
    return to_interface(_mm_getcsr() & flag_bits);
}

int _controlfp_s(std::uint32_t* current, std::uint32_t control, std::uint32_t mask) noexcept
{
    std::uint32_t state = _mm_getcsr();
    const std::uint32_t selected = from_interface(mask & exception_masks) << mask_shift;
    const std::uint32_t wanted = (from_interface(control & exception_masks) << mask_shift) & selected;
    if ((state & selected) != wanted) {
        state = (state & ~selected) | wanted;
        _mm_setcsr(state);
    }
    *current = to_interface((state >> mask_shift) & flag_bits);
    return 0;
}

std::uint32_t begin() noexcept
{
    const std::uint32_t state = _mm_getcsr();
    if ((state & flag_bits) != 0)
        _mm_setcsr(state & ~flag_bits);
    return state & ~flag_bits;
}

std::uint32_t end(std::uint32_t control) noexcept
{
    // An operation still under way that sets a flag makes some processors throw away all that they have begun when the
    // register is read, which costs several times what waiting for it does.
    _mm_lfence();
    const std::uint32_t state = _mm_getcsr();
    const std::uint32_t wanted = (state & ~(flag_bits | mask_bits)) | (control & mask_bits);
    if (state != wanted)
        _mm_setcsr(wanted);
    return to_interface(state & flag_bits);
}

} // namespace Efi::fp

#else

#include <cfenv>

namespace Efi::fp {

namespace {

std::uint32_t to_interface(int bits) noexcept
{
    std::uint32_t result = 0;
    result |= (bits & FE_INEXACT) != 0 ? inexact : 0U;
    result |= (bits & FE_UNDERFLOW) != 0 ? underflow : 0U;
    result |= (bits & FE_OVERFLOW) != 0 ? overflow : 0U;
    result |= (bits & FE_DIVBYZERO) != 0 ? zero_divide : 0U;
    result |= (bits & FE_INVALID) != 0 ? invalid : 0U;
    return result;
}

int from_interface(std::uint32_t bits) noexcept
{
    int result = 0;
    result |= (bits & inexact) != 0 ? FE_INEXACT : 0;
    result |= (bits & underflow) != 0 ? FE_UNDERFLOW : 0;
    result |= (bits & overflow) != 0 ? FE_OVERFLOW : 0;
    result |= (bits & zero_divide) != 0 ? FE_DIVBYZERO : 0;
    result |= (bits & invalid) != 0 ? FE_INVALID : 0;
    return result;
}

} // namespace

std::uint32_t _clearfp() noexcept
{
    const std::uint32_t flags = _statusfp();
    std::feclearexcept(FE_ALL_EXCEPT);
    return flags;
}

std::uint32_t _statusfp() noexcept
{
    return to_interface(std::fetestexcept(FE_ALL_EXCEPT));
}

int _controlfp_s(std::uint32_t* current, std::uint32_t control, std::uint32_t mask) noexcept
{
    // Enabled traps are unmasked exceptions; the C library knows no denormal exception.
    const int selected = from_interface(mask);
    feenableexcept(from_interface(~control) & selected);
    fedisableexcept(from_interface(control) & selected);
    *current = to_interface(FE_ALL_EXCEPT & ~fegetexcept()) | denormal;
    return 0;
}

std::uint32_t begin() noexcept
{
    _clearfp();
    std::uint32_t control = 0;
    _controlfp_s(&control, 0, 0);
    return control;
}

std::uint32_t end(std::uint32_t control) noexcept
{
    const std::uint32_t flags = _clearfp();
    _controlfp_s(&control, control, exception_masks);
    return flags;
}

} // namespace Efi::fp

#endif
