#pragma once

#include <cstddef>

/// Doubles side by side in a register. Written out, because the vectoriser of GCC 12 fuses what it finds by itself. It
/// also copies an array of vectors in halves and through the stack: load and store one at a time, in a loop that is
/// unrolled.
namespace native::side_by_side {

using Two [[gnu::vector_size(16)]] = double;
using Four [[gnu::vector_size(32)]] = double;
using Eight [[gnu::vector_size(64)]] = double;

template <class Vector>
inline constexpr std::size_t lanes = sizeof(Vector) / sizeof(double);

template <class Vector>
[[gnu::always_inline]] inline void load(Vector& v, const double* from)
{
    __builtin_memcpy(&v, from, sizeof v);
}

template <class Vector>
[[gnu::always_inline]] inline void store(const Vector& v, double* to)
{
    __builtin_memcpy(to, &v, sizeof v);
}

} // namespace native::side_by_side
