#pragma once

#include "efiutl/api.hpp"

#include <cstdint>

/// The floating-point environment of the running thread, by the operations and in the encoding of the function
/// interface. On x86-64 they work on the SSE control and status register directly (the portable functions also reload
/// the x87 environment, which costs ten times as much and which no worker uses); elsewhere on <cfenv>.
namespace Efi::fp {

// status and exception-mask bits share one encoding
inline constexpr std::uint32_t inexact = 0x1;
inline constexpr std::uint32_t underflow = 0x2;
inline constexpr std::uint32_t overflow = 0x4;
inline constexpr std::uint32_t zero_divide = 0x8;
inline constexpr std::uint32_t invalid = 0x10;
inline constexpr std::uint32_t denormal = 0x80000;
inline constexpr std::uint32_t exception_masks = 0x8001F;

/// Clears the status flags and returns those that were set.
BAILUXSKO_API std::uint32_t _clearfp() noexcept;
/// The status flags.
BAILUXSKO_API std::uint32_t _statusfp() noexcept;
/// Writes the control bits that `mask` selects (0: none) and hands out the control word as it then is: a set bit means
/// that the exception is masked. Returns 0.
BAILUXSKO_API int _controlfp_s(std::uint32_t* current, std::uint32_t control, std::uint32_t mask) noexcept;

/// The two looks of the guard, each one read and at most one write of the register: a read behind a write waits for it
/// longer than small workers take. `begin` clears the flags and answers the exception masks for `end`, which answers
/// the flags that are set, clears them and puts the masks back.
BAILUXSKO_API std::uint32_t begin() noexcept;
BAILUXSKO_API std::uint32_t end(std::uint32_t control) noexcept;

} // namespace Efi::fp
