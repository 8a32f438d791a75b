#pragma once

#include "bailuxsko/kernels/number_tests.hpp"
#include "efiutl/api.hpp"

#include <cstddef>
#include <cstdint>

namespace native {

/// How many numbers a search looks at in one call, at most.
inline constexpr std::size_t most_searched = 1024;

/// The places where the test holds, ascending, written to `places`; gives their number.
/// @param im      null where all imaginary parts are 0
/// @param count   up to `most_searched`
/// @param places  room for `count` of them
BAILUXSKO_API std::size_t find(const NumberTest& test, const double* re, const double* im, std::size_t count,
                               std::uint16_t* places) noexcept;

/// The smallest distance of a finite number from the target, if it is below `best`; else `best`.
/// @param best  finite, not negative
BAILUXSKO_API double nearest_distance(const double* numbers, std::size_t count, double target, double best) noexcept;

} // namespace native
