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

/// Neighbouring vectors, one at a time: loading a whole array that was copied in halves would wait for both.
template <class Vector, std::size_t count>
[[gnu::always_inline]] inline void load(Vector (&v)[count], const double* from)
{
    for (std::size_t i = 0; i < count; ++i)
        load(v[i], from + i * lanes<Vector>);
}

template <class Vector, std::size_t count>
[[gnu::always_inline]] inline void store(const Vector (&v)[count], double* to)
{
    for (std::size_t i = 0; i < count; ++i)
        store(v[i], to + i * lanes<Vector>);
}

/// As many columns as there are rows in a vector: afterwards x[r] holds row r.
template <class Vector>
[[gnu::always_inline]] inline void transpose(Vector (&x)[lanes<Vector>])
{
    if constexpr (lanes<Vector> == 2) {
        const Vector row0 = __builtin_shufflevector(x[0], x[1], 0, 2);
        x[1] = __builtin_shufflevector(x[0], x[1], 1, 3);
        x[0] = row0;
    } else {
        static_assert(lanes<Vector> == 4);
        const Vector even01 = __builtin_shufflevector(x[0], x[1], 0, 4, 2, 6);
        const Vector odd01 = __builtin_shufflevector(x[0], x[1], 1, 5, 3, 7);
        const Vector even23 = __builtin_shufflevector(x[2], x[3], 0, 4, 2, 6);
        const Vector odd23 = __builtin_shufflevector(x[2], x[3], 1, 5, 3, 7);
        x[0] = __builtin_shufflevector(even01, even23, 0, 1, 4, 5);
        x[1] = __builtin_shufflevector(odd01, odd23, 0, 1, 4, 5);
        x[2] = __builtin_shufflevector(even01, even23, 2, 3, 6, 7);
        x[3] = __builtin_shufflevector(odd01, odd23, 2, 3, 6, 7);
    }
}

} // namespace native::side_by_side
