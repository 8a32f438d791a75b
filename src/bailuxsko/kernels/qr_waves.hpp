#pragma once

#include "bailuxsko/kernels/qr_strips.hpp"
#include "bailuxsko/kernels/side_by_side.hpp"
#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cstddef>

/// Sweeps of rotations in a strip of eight columns, several in one pass: when the first sweep has rotated rows i - 1
/// and i, the second may rotate rows i and i + 1, the third rows i + 1 and i + 2, and so on (Van Zee, van de Geijn and
/// Quintana-Orti, Restructuring the tridiagonal and bidiagonal QR algorithms for performance, ACM TOMS 40, 2014).
namespace native::waves {

using side_by_side::load;
using side_by_side::store;

constexpr std::size_t width = RowStrips::width;

/// In place of a rotation that is left out: no rotation has both zero.
inline constexpr Rotation none{.c = 0.0, .s = 0.0};
[[gnu::always_inline]] inline bool is_none(Rotation G)
{
    return G.c == 0.0 && G.s == 0.0;
}

/// A sweep up a column: row i and the one above it are rotated by m_rotations[i], i from the last row to m_pivot + 1.
struct Sweep {
    std::size_t m_pivot;
    std::size_t m_number; // of sweeps before it
    const Rotation* m_rotations;
    bool m_complete; // none is left out
};

/// A strip in which sweeps are carried out. The sweep with number k begins at row m_filled + k, if there is one: the
/// rows below are zeros, of which the sign is followed.
struct Target {
    double* m_strip;
    std::size_t m_rows;
    std::size_t m_filled;

    std::size_t begin(const Sweep& sweep) const { return std::min(m_rows - 1, m_filled + sweep.m_number); }
};

/// Rotates two rows of vectors.
template <class Vector, std::size_t vectors>
[[gnu::always_inline]] inline void rotate(Rotation G, Vector (&upper)[vectors], Vector (&lower)[vectors])
{
#pragma GCC unroll 4
    for (std::size_t v = 0; v < vectors; ++v) {
        const Vector u = upper[v];
        const Vector w = lower[v];
        upper[v] = u * G.c + w * G.s;
        lower[v] = w * G.c - u * G.s;
    }
}

/// One sweep in one strip; the row that two neighbouring rotations share stays in registers.
template <class Vector>
[[gnu::always_inline]] inline void apply(const Sweep& sweep, const Target& T)
{
    constexpr std::size_t vectors = width / tiles::width<Vector>;
    const std::size_t begin = T.begin(sweep);
    if (begin <= sweep.m_pivot)
        return;
    Vector lower[vectors];
    Vector upper[vectors];
    load(lower, T.m_strip + begin * width);
    for (std::size_t i = begin; i > sweep.m_pivot; --i) {
        const Rotation G = sweep.m_rotations[i];
        load(upper, T.m_strip + (i - 1) * width);
        if (!is_none(G))
            rotate(G, upper, lower);
        store(lower, T.m_strip + i * width);
        for (std::size_t v = 0; v < vectors; ++v)
            lower[v] = upper[v];
    }
    store(lower, T.m_strip + sweep.m_pivot * width);
}

/// How many sweeps one pass carries out, and how many vectors of a row: as many as the registers hold rows of.
template <class Vector>
inline constexpr std::size_t together = sizeof(Vector) == sizeof(tiles::Eight) ? 6 : 3;
template <class Vector>
inline constexpr std::size_t pass_vectors = std::min<std::size_t>(2, width / tiles::width<Vector>);

/// The rows that sweeps in one pass have between them: m_rows[k] is row i + k, which sweep k rotates with the row
/// above.
template <class Vector>
struct Wave {
    static constexpr std::size_t vectors = pass_vectors<Vector>;
    static constexpr std::size_t depth = together<Vector>;

    const Sweep* m_sweeps;
    Vector m_rows[depth][vectors];

    /// The first `count` sweeps go one row up: `row`, which is row i - 1, comes in.
    template <std::size_t count>
    [[gnu::always_inline]] void rotate_up(Vector (&row)[vectors], std::size_t i)
    {
        rotate(m_sweeps[0].m_rotations[i], row, m_rows[0]);
#pragma GCC unroll 8
        for (std::size_t k = 1; k < count; ++k)
            rotate(m_sweeps[k].m_rotations[i + k], m_rows[k - 1], m_rows[k]);
    }

    /// Row i - 1 becomes row i of the next step.
    [[gnu::always_inline]] void move_up(const Vector (&row)[vectors])
    {
#pragma GCC unroll 8
        for (std::size_t k = depth - 1; k > 0; --k)
            for (std::size_t v = 0; v < vectors; ++v)
                m_rows[k][v] = m_rows[k - 1][v];
        for (std::size_t v = 0; v < vectors; ++v)
            m_rows[0][v] = row[v];
    }

    /// All rows at once, when every sweep begins in its own.
    [[gnu::always_inline]] void begin_at(const double* columns, std::size_t i)
    {
#pragma GCC unroll 8
        for (std::size_t k = 0; k < depth; ++k)
            load(m_rows[k], columns + (i + k) * width);
    }

    /// The first steps when all sweeps begin in the last row: the later ones wait for rows.
    template <std::size_t count = 0>
    [[gnu::always_inline]] void begin_at_end(const double* columns, std::size_t m)
    {
        if constexpr (count == 0)
            load(m_rows[0], columns + (m - 1) * width);
        if constexpr (count > 0) {
            Vector row[vectors];
            load(row, columns + (m - count - 1) * width);
            rotate_up<count>(row, m - count);
            move_up(row);
        }
        if constexpr (count + 1 < depth)
            begin_at_end<count + 1>(columns, m);
    }
};

/// Sweeps that can be carried out in one pass, in some columns of a strip.
template <class Vector>
[[gnu::always_inline]] inline void apply_together(const Sweep* sweeps, const Target& T, std::size_t column)
{
    constexpr std::size_t depth = together<Vector>;
    double* const columns = T.m_strip + column;
    const std::size_t m = T.m_rows;
    const std::size_t pivot = sweeps[0].m_pivot;
    std::size_t i = T.m_filled + sweeps[0].m_number;
    Wave<Vector> wave{.m_sweeps = sweeps, .m_rows = {}};
    if (i + 1 < m) {
        if (i <= pivot)
            return;
        wave.begin_at(columns, i);
    } else {
        wave.begin_at_end(columns, m);
        i = m - depth;
    }
    for (; i > pivot; --i) {
        Vector row[wave.vectors];
        load(row, columns + (i - 1) * width);
        wave.template rotate_up<depth>(row, i);
        store(wave.m_rows[depth - 1], columns + (i + depth - 1) * width);
        wave.move_up(row);
    }
#pragma GCC unroll 8
    for (std::size_t k = 0; k < depth; ++k)
        store(wave.m_rows[k], columns + (pivot + k) * width);
}

/// Whether the next sweeps can be carried out in one pass: all are complete, each has its pivot a row below the one
/// before, the last one has a rotation, and they begin either all in the last row or each in a row of its own.
template <class Vector>
[[gnu::always_inline]] inline bool are_in_step(const Sweep* sweeps, const Target& T)
{
    constexpr std::size_t depth = together<Vector>;
    for (std::size_t k = 0; k < depth; ++k)
        if (!sweeps[k].m_complete || sweeps[k].m_pivot != sweeps[0].m_pivot + k)
            return false;
    const std::size_t begin = T.m_filled + sweeps[0].m_number;
    return sweeps[0].m_pivot + depth < T.m_rows && (begin + 1 >= T.m_rows || begin + depth <= T.m_rows);
}

/// All sweeps of a panel in a strip outside it.
template <class Vector>
[[gnu::always_inline]] inline void apply_all(const Sweep* sweeps, std::size_t count, const Target& T)
{
    for (std::size_t k = 0; k < count;) {
        if (k + together<Vector> <= count && are_in_step<Vector>(sweeps + k, T)) {
            for (std::size_t column = 0; column < width; column += pass_vectors<Vector> * tiles::width<Vector>)
                apply_together<Vector>(sweeps + k, T, column);
            k += together<Vector>;
        } else {
            apply<Vector>(sweeps[k], T);
            ++k;
        }
    }
}

} // namespace native::waves
