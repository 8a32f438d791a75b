// Givens QR on strips of columns (Golub and Van Loan, Matrix Computations, section 5.2.5). The rotations of a panel of
// columns are found there, and carried out in the other strips afterwards, three sweeps in one pass: when the first
// sweep has rotated rows i - 1 and i, the second may rotate rows i and i + 1, and the third rows i + 1 and i + 2 (Van
// Zee, van de Geijn and Quintana-Orti, Restructuring the tridiagonal and bidiagonal QR algorithms for performance, ACM
// TOMS 40, 2014).
// Ours: every element takes its rotations in the order of the plain loops, also the zeros left of the column that is
// being rotated, whose signs change.
#include "bailuxsko/kernels/qr_strips.hpp"

#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cmath>

namespace native {
namespace {

constexpr std::size_t width = RowStrips::width;
constexpr std::size_t panel = 12; // strips whose rotations are found together

/// In place of a rotation that is left out: no rotation has both zero.
constexpr Rotation none{.c = 0.0, .s = 0.0};
[[gnu::always_inline]] inline bool is_none(Rotation G)
{
    return G.c == 0.0 && G.s == 0.0;
}

/// A sweep up a column: row i and the one above it are rotated by m_rotations[i], i from the last row to m_pivot + 1.
struct Sweep {
    std::size_t m_pivot;
    const Rotation* m_rotations;
    bool m_complete; // none is left out
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
[[gnu::always_inline]] inline void apply(const Sweep& sweep, double* strip, std::size_t m)
{
    constexpr std::size_t vectors = width / tiles::width<Vector>;
    Vector lower[vectors];
    Vector upper[vectors];
    load(lower, strip + (m - 1) * width);
    for (std::size_t i = m - 1; i > sweep.m_pivot; --i) {
        const Rotation G = sweep.m_rotations[i];
        load(upper, strip + (i - 1) * width);
        if (!is_none(G))
            rotate(G, upper, lower);
        save(lower, strip + i * width);
        for (std::size_t v = 0; v < vectors; ++v)
            lower[v] = upper[v];
    }
    save(lower, strip + sweep.m_pivot * width);
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
        for (std::size_t k = depth; --k > 0;)
            for (std::size_t v = 0; v < vectors; ++v)
                m_rows[k][v] = m_rows[k - 1][v];
        for (std::size_t v = 0; v < vectors; ++v)
            m_rows[0][v] = row[v];
    }

    /// The first steps, in which the later sweeps wait for rows.
    template <std::size_t count = 1>
    [[gnu::always_inline]] void begin(const double* columns, std::size_t m)
    {
        if constexpr (count < depth) {
            Vector row[vectors];
            load(row, columns + (m - count - 1) * width);
            rotate_up<count>(row, m - count);
            move_up(row);
            begin<count + 1>(columns, m);
        }
    }
};

/// Complete sweeps, each with a pivot one row below the one before, in some columns of a strip. The last must have a
/// rotation.
template <class Vector>
[[gnu::always_inline]] inline void apply_together(const Sweep* sweeps, double* columns, std::size_t m)
{
    constexpr std::size_t depth = together<Vector>;
    Wave<Vector> wave{.m_sweeps = sweeps, .m_rows = {}};
    load(wave.m_rows[0], columns + (m - 1) * width);
    wave.begin(columns, m);
    for (std::size_t i = m - depth; i > sweeps[0].m_pivot; --i) {
        Vector row[wave.vectors];
        load(row, columns + (i - 1) * width);
        wave.template rotate_up<depth>(row, i);
        save(wave.m_rows[depth - 1], columns + (i + depth - 1) * width);
        wave.move_up(row);
    }
    for (std::size_t k = 0; k < depth; ++k)
        save(wave.m_rows[k], columns + (sweeps[0].m_pivot + k) * width);
}

/// Whether the next sweeps can be carried out in one pass.
template <class Vector>
[[gnu::always_inline]] inline bool are_in_step(const Sweep* sweeps, std::size_t m)
{
    for (std::size_t k = 0; k < together<Vector>; ++k)
        if (!sweeps[k].m_complete || sweeps[k].m_pivot != sweeps[0].m_pivot + k)
            return false;
    return sweeps[0].m_pivot + together<Vector> < m;
}

/// All sweeps of a panel in a strip outside it.
template <class Vector>
[[gnu::always_inline]] inline void apply_all(const Sweep* sweeps, std::size_t count, double* strip, std::size_t m)
{
    for (std::size_t k = 0; k < count;) {
        if (k + together<Vector> <= count && are_in_step<Vector>(sweeps + k, m)) {
            for (std::size_t from = 0; from < width; from += pass_vectors<Vector> * tiles::width<Vector>)
                apply_together<Vector>(sweeps + k, strip + from, m);
            k += together<Vector>;
        } else {
            apply<Vector>(sweeps[k], strip, m);
            ++k;
        }
    }
}

/// The strips in which rotations are found, and where the pivots have got to.
class Panel {
public:
    Panel(const RowStrips& S, std::size_t first, std::size_t pivot)
        : m_S(S), m_first(first), m_end(std::min(first + panel, S.strips_of_R())), m_pivot(pivot)
    {
    }

    /// Every column of the panel, until all rows have a pivot.
    template <class Vector>
    [[gnu::always_inline]] void find_rotations()
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
            for (std::size_t i = m_pivot; i < m_S.m_rows; ++i)
                column[i * width] = 0.0;
        }
    }

    const Sweep* sweeps() const { return m_sweeps; }
    std::size_t count() const { return m_count; }
    std::size_t end() const { return m_end; }
    std::size_t pivot() const { return m_pivot; }

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
        for (std::size_t i = m - 1; i > m_pivot; --i) {
            const double a = column[(i - 1) * width];
            if (tolerance.negligible(b)) {
                rotations[i] = none;
                complete = false;
                b = a;
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
        }
        if (is_rotated) // a column that is rotated has a pivot, so there are no more sweeps than pivots
            m_sweeps[m_count++] = {.m_pivot = m_pivot, .m_rotations = rotations, .m_complete = complete};
        return has_pivot || is_rotated;
    }

    const RowStrips& m_S;
    std::size_t m_first;
    std::size_t m_end;
    std::size_t m_pivot;
    std::size_t m_count = 0;
    Sweep m_sweeps[panel * width];
};

template <class Vector>
[[gnu::always_inline]] inline void rotate_strips(const RowStrips& S)
{
    std::size_t pivot = 0;
    for (std::size_t first = 0; first < S.strips_of_R() && pivot < S.m_rows;) {
        Panel P(S, first, pivot);
        P.find_rotations<Vector>();
        for (std::size_t t = 0; t < S.strips(); ++t)
            if (t < first || t >= P.end())
                apply_all<Vector>(P.sweeps(), P.count(), S.strip(t), S.m_rows);
        pivot = P.pivot();
        first = P.end();
    }
}

} // namespace

std::size_t saved_sweeps(std::size_t m, std::size_t n)
{
    return std::min({m, n, panel * width});
}

void rotate_strips_baseline(const RowStrips& S)
{
    rotate_strips<tiles::Two>(S);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void rotate_strips_avx2(const RowStrips& S)
{
    rotate_strips<tiles::Four>(S);
}

[[gnu::target("avx512f")]] void rotate_strips_avx512(const RowStrips& S)
{
    rotate_strips<tiles::Eight>(S);
}
#else
void rotate_strips_avx2(const RowStrips& S)
{
    rotate_strips_baseline(S);
}

void rotate_strips_avx512(const RowStrips& S)
{
    rotate_strips_baseline(S);
}
#endif

} // namespace native
