// Givens QR on strips of columns (Golub and Van Loan, Matrix Computations, section 5.2.5). The rotations of a panel of
// columns are found there, and carried out in the other strips afterwards, three sweeps in one pass: when the first
// sweep has rotated rows i - 1 and i, the second may rotate rows i and i + 1, and the third rows i + 1 and i + 2 (Van
// Zee, van de Geijn and Quintana-Orti, Restructuring the tridiagonal and bidiagonal QR algorithms for performance, ACM
// TOMS 40, 2014).
// Ours: every element takes its rotations in the order of the plain loops. The zeros left of the column that is being
// rotated take them too, and those of Q' below the diagonals that the sweeps have filled, which changes their signs:
// they are rotated as bits.
#include "bailuxsko/kernels/qr_strips.hpp"

#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cmath>

namespace native {
namespace {

constexpr std::size_t width = RowStrips::width;
constexpr std::size_t panel = 6; // strips whose rotations are found together

/// In place of a rotation that is left out: no rotation has both zero.
constexpr Rotation none{.c = 0.0, .s = 0.0};
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

/// One at a time: GCC 12 copies an array of vectors in halves, and loading the whole then waits for both.
template <class Vector, std::size_t vectors>
[[gnu::always_inline]] inline void load(Vector (&row)[vectors], const double* from)
{
    for (std::size_t v = 0; v < vectors; ++v)
        __builtin_memcpy(&row[v], from + v * tiles::width<Vector>, sizeof(Vector));
}

template <class Vector, std::size_t vectors>
[[gnu::always_inline]] inline void save(const Vector (&row)[vectors], double* to)
{
    for (std::size_t v = 0; v < vectors; ++v)
        __builtin_memcpy(to + v * tiles::width<Vector>, &row[v], sizeof(Vector));
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
        save(lower, T.m_strip + i * width);
        for (std::size_t v = 0; v < vectors; ++v)
            lower[v] = upper[v];
    }
    save(lower, T.m_strip + sweep.m_pivot * width);
}

/// How many sweeps one pass carries out, and how many vectors of a row: as many as the registers hold rows of.
template <class Vector>
constexpr std::size_t together = sizeof(Vector) == sizeof(tiles::Eight) ? 6 : 3;
template <class Vector>
constexpr std::size_t pass_vectors = std::min<std::size_t>(2, width / tiles::width<Vector>);

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
        save(wave.m_rows[depth - 1], columns + (i + depth - 1) * width);
        wave.move_up(row);
    }
#pragma GCC unroll 8
    for (std::size_t k = 0; k < depth; ++k)
        save(wave.m_rows[k], columns + (pivot + k) * width);
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

/// The strips in which rotations are found, and how far the factorisation has got.
class Panel {
public:
    Panel(const RowStrips& S, std::size_t first, std::size_t pivot, std::size_t number)
        : m_S(S), m_first(first), m_end(std::min(first + panel, S.strips_of_R())), m_pivot(pivot), m_number(number)
    {
    }

    /// Every column of the panel, until all rows have a pivot. False at a rotation that is not finite, where signs of
    /// zeros are followed.
    template <class Vector>
    [[gnu::always_inline]] bool find_rotations()
    {
        const std::size_t end = std::min(m_end * width, m_S.m_cols);
        for (std::size_t j = m_first * width; j < end && m_pivot < m_S.m_rows; ++j) {
            double* const column = m_S.strip(j / width) + j % width;
            double sum = 0.0;
            for (std::size_t i = 0; i < m_S.m_rows; ++i)
                sum += column[i * width] * column[i * width];
            const double norm = std::sqrt(sum);
            if (norm == 0.0)
                continue;
            if (sweep<Vector>(column, Tolerance(j + 1, norm, m_S.m_rows - m_pivot)))
                ++m_pivot;
            if (!m_is_finite)
                return false;
            for (std::size_t i = m_pivot; i < m_S.m_rows; ++i)
                column[i * width] = 0.0;
        }
        return true;
    }

    const Sweep* sweeps() const { return m_sweeps; }
    std::size_t count() const { return m_count; }
    std::size_t first() const { return m_first; }
    std::size_t end() const { return m_end; }
    std::size_t pivot() const { return m_pivot; }
    std::size_t number() const { return m_number; }

private:
    /// A sweep up the column; whether the column has a pivot.
    template <class Vector>
    [[gnu::always_inline]] bool sweep(const double* column, const Tolerance& tolerance)
    {
        constexpr std::size_t vectors = width / tiles::width<Vector>;
        const std::size_t m = m_S.m_rows;
        Rotation* const rotations = m_S.m_rotations + m_count * m;
        const bool has_pivot = !tolerance.negligible(column[m_pivot * width]);
        bool is_rotated = false;
        bool complete = true;
        double b = column[(m - 1) * width];
        fill_Q(m - 1);
        for (std::size_t i = m - 1; i > m_pivot; --i) {
            const double a = column[(i - 1) * width];
            if (tolerance.negligible(b)) {
                rotations[i] = none;
                complete = false;
                b = a;
                fill_Q(i - 1);
                continue;
            }
            is_rotated = true;
            const Rotation G = rotation(a, b);
            rotations[i] = G;
            b = a * G.c + b * G.s;
            for (std::size_t t = m_first; t < m_end; ++t) {
                double* const row = m_S.strip(t) + (i - 1) * width;
                Vector upper[vectors];
                Vector lower[vectors];
                load(upper, row);
                load(lower, row + width);
                rotate(G, upper, lower);
                save(upper, row);
                save(lower, row + width);
            }
            if (!rotate_signs(G, i))
                return false;
            fill_Q(i - 1);
        }
        if (is_rotated) // a column that is rotated has a pivot, so there are no more sweeps than pivots
            m_sweeps[m_count++] = {
                .m_pivot = m_pivot, .m_number = m_number++, .m_rotations = rotations, .m_complete = complete};
        return has_pivot || is_rotated;
    }

    /// The zeros of the panels before this one, and those that no sweep has reached in Q'.
    [[gnu::always_inline]] bool rotate_signs(Rotation G, std::size_t i)
    {
        if (!m_S.m_signs.are_followed())
            return true;
        if (!std::isfinite(G.c) || !std::isfinite(G.s)) {
            m_is_finite = false;
            return false;
        }
        const std::size_t filled = width + m_number;
        m_S.m_signs.rotate(G, i, m_first, i > filled ? (i - filled - 1) / width + 1 : 0);
        return true;
    }

    /// Writes the zeros of a row of Q', in the strip that this sweep begins to fill in that row.
    [[gnu::always_inline]] void fill_Q(std::size_t i) const
    {
        const std::size_t filled = width + m_number;
        if (!m_S.m_signs.are_followed() || i < filled || (i - filled) % width != 0)
            return;
        const std::size_t t = (i - filled) / width;
        m_S.m_signs.write_Q(i, t, m_S.strip(m_S.strips_of_R() + t) + i * width);
    }

    const RowStrips& m_S;
    std::size_t m_first;
    std::size_t m_end;
    std::size_t m_pivot;
    std::size_t m_number; // of sweeps so far
    bool m_is_finite = true;
    std::size_t m_count = 0;
    Sweep m_sweeps[panel * width];
};

/// A panel's sweeps in all strips that need them: not in its own, nor where only signs change.
template <class Vector>
[[gnu::always_inline]] inline void apply_panel(const RowStrips& S, const Panel& P)
{
    const std::size_t m = S.m_rows;
    for (std::size_t t = 0; t < S.strips_of_R(); ++t)
        if (t >= P.end() || (t < P.first() && S.m_zero_from[t] == m))
            apply_all<Vector>(P.sweeps(), P.count(), {.m_strip = S.strip(t), .m_rows = m, .m_filled = m});
    for (std::size_t t = 0; t < S.strips_of_Q(); ++t) {
        const std::size_t filled = S.m_signs.are_followed() ? (t + 1) * width : m;
        apply_all<Vector>(P.sweeps(), P.count(),
                          {.m_strip = S.strip(S.strips_of_R() + t), .m_rows = m, .m_filled = filled});
    }
}

/// From here on a panel's strips are zero below its last pivot, but where a column was passed over with elements whose
/// squares vanish: such a strip goes on as numbers, and counts as zero from its end on.
void follow_signs(const RowStrips& S, const Panel& P)
{
    const std::size_t m = S.m_rows;
    for (std::size_t t = P.first(); t < P.end(); ++t) {
        const double* const strip = S.strip(t);
        const bool is_zero = S.m_signs.are_followed() && std::all_of(strip + P.pivot() * width, strip + m * width,
                                                                     [](double x) { return x == 0.0; });
        S.m_zero_from[t] = is_zero ? P.pivot() : m;
        for (std::size_t i = S.m_zero_from[t]; i < m; ++i)
            S.m_signs.read_R(i, t, strip + i * width);
    }
}

/// Writes all zeros whose signs were followed; `number` sweeps were carried out.
void write_zeros(const RowStrips& S, std::size_t strips_of_R, std::size_t number)
{
    for (std::size_t t = 0; t < strips_of_R; ++t)
        for (std::size_t i = S.m_zero_from[t]; i < S.m_rows; ++i)
            S.m_signs.write_R(i, t, S.strip(t) + i * width);
    if (S.m_signs.are_followed())
        for (std::size_t t = 0; t < S.strips_of_Q(); ++t)
            for (std::size_t i = (t + 1) * width + number; i < S.m_rows; ++i)
                S.m_signs.write_Q(i, t, S.strip(S.strips_of_R() + t) + i * width);
}

template <class Vector>
[[gnu::always_inline]] inline bool rotate_strips(const RowStrips& S)
{
    std::size_t pivot = 0;
    std::size_t number = 0;
    std::size_t first = 0;
    while (first < S.strips_of_R() && pivot < S.m_rows) {
        Panel P(S, first, pivot, number);
        if (!P.find_rotations<Vector>())
            return false;
        apply_panel<Vector>(S, P);
        follow_signs(S, P);
        pivot = P.pivot();
        number = P.number();
        first = P.end();
    }
    write_zeros(S, first, number);
    return true;
}

} // namespace

std::size_t saved_sweeps(std::size_t m, std::size_t n)
{
    return std::min({m, n, panel * width});
}

bool rotate_strips_baseline(const RowStrips& S)
{
    return rotate_strips<tiles::Two>(S);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool rotate_strips_avx2(const RowStrips& S)
{
    return rotate_strips<tiles::Four>(S);
}

[[gnu::target("avx512f")]] bool rotate_strips_avx512(const RowStrips& S)
{
    return rotate_strips<tiles::Eight>(S);
}
#else
bool rotate_strips_avx2(const RowStrips& S)
{
    return rotate_strips_baseline(S);
}

bool rotate_strips_avx512(const RowStrips& S)
{
    return rotate_strips_baseline(S);
}
#endif

} // namespace native
