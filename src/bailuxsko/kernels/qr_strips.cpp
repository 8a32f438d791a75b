// Givens QR on strips of columns (Golub and Van Loan, Matrix Computations, section 5.2.5): the rotations of a panel of
// strips are found there, and carried out in the other strips afterwards, several sweeps in one pass (qr_waves.hpp).
// Ours: every element takes its rotations in the order of the plain loops. The zeros left of the column that is being
// rotated take them too, and those of Q' below the diagonals that the sweeps have filled, which changes their signs:
// they are rotated as bits.
#include "bailuxsko/kernels/qr_strips.hpp"

#include "bailuxsko/kernels/qr_waves.hpp"
#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cmath>

namespace native {
namespace {

using waves::Sweep;

constexpr std::size_t width = RowStrips::width;
constexpr std::size_t panel = 6; // strips whose rotations are found together

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
                rotations[i] = waves::none;
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
                waves::load(upper, row);
                waves::load(lower, row + width);
                waves::rotate(G, upper, lower);
                waves::store(upper, row);
                waves::store(lower, row + width);
            }
            if (!rotate_signs(G, i))
                return false;
            fill_Q(i - 1);
        }
        if (is_rotated) { // a column that is rotated has a pivot, so there are no more sweeps than pivots
            fill_Q_above_pivot();
            m_sweeps[m_count++] = {
                .m_pivot = m_pivot, .m_number = m_number++, .m_rotations = rotations, .m_complete = complete};
        }
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

    /// The same for the rows above the pivot, which no sweep will reach any more. There are such where columns had
    /// pivots without being rotated.
    [[gnu::always_inline]] void fill_Q_above_pivot() const
    {
        for (std::size_t i = width + m_number; i < m_pivot; i += width)
            fill_Q(i);
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
            waves::apply_all<Vector>(P.sweeps(), P.count(), {.m_strip = S.strip(t), .m_rows = m, .m_filled = m});
    for (std::size_t t = 0; t < S.strips_of_Q(); ++t) {
        const std::size_t filled = S.m_signs.are_followed() ? (t + 1) * width : m;
        waves::apply_all<Vector>(P.sweeps(), P.count(),
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
