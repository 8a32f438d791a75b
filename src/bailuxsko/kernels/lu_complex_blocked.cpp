// Both forms of the complex elimination in memory at every instruction level: step by step for small matrices, and the
// leaves of the recursion on columns.
#include "bailuxsko/kernels/lu_complex_steps.hpp"
#include "bailuxsko/kernels/lu_recursion.hpp"
#include "bailuxsko/kernels/tiles_complex.hpp"

#include <cstddef>

namespace native {
namespace {

constexpr std::size_t columns_side_by_side = 8;

template <class Vector>
[[gnu::always_inline]] inline void subtract_steps(const ComplexElimination& E, Range steps, Range rows, Range columns,
                                                  double* packed)
{
    const auto from = [&](std::size_t j) {
        return tiles::Parts{E.re(columns.m_from + j) + steps.m_from, E.im(columns.m_from + j) + steps.m_from};
    };
    const auto to = [&](std::size_t j) {
        return tiles::WritableParts{E.re(columns.m_from + j), E.im(columns.m_from + j)};
    };
    tiles::rows_of_complex_product<tiles::Update::subtract, Vector>({E.re(steps.m_from), E.im(steps.m_from)}, E.m_ld,
                                                                    rows.m_from, rows.m_to, columns.size(),
                                                                    steps.size(), from, to, packed);
}

/// Many columns side by side, as in the real form.
template <class Vector>
[[gnu::always_inline]] inline void solve_rows(const ComplexElimination& E, Range steps, Range columns)
{
    constexpr std::size_t w = tiles::width<Vector>;
    constexpr std::size_t vectors = columns_side_by_side / w;
    const std::size_t count = steps.size();
    double L_re[rows_at_a_leaf][rows_at_a_leaf];
    double L_im[rows_at_a_leaf][rows_at_a_leaf];
    for (std::size_t k = 0; k < count; ++k)
        for (std::size_t i = k + 1; i < count; ++i) {
            L_re[i][k] = E.re(steps.m_from + k)[steps.m_from + i];
            L_im[i][k] = E.im(steps.m_from + k)[steps.m_from + i];
        }
    for (std::size_t first = columns.m_from; first < columns.m_to; first += columns_side_by_side) {
        const std::size_t real = std::min(columns_side_by_side, columns.m_to - first);
        Vector re[rows_at_a_leaf][vectors];
        Vector im[rows_at_a_leaf][vectors];
        for (std::size_t j = 0; j < columns_side_by_side; ++j) {
            const std::size_t column = first + std::min(j, real - 1);
            for (std::size_t i = 0; i < count; ++i) {
                re[i][j / w][j % w] = E.re(column)[steps.m_from + i];
                im[i][j / w][j % w] = E.im(column)[steps.m_from + i];
            }
        }
        for (std::size_t i = 1; i < count; ++i)
            for (std::size_t v = 0; v < vectors; ++v) {
                Vector x = re[i][v];
                Vector y = im[i][v];
                for (std::size_t k = 0; k < i; ++k) {
                    x -= re[k][v] * L_re[i][k] - im[k][v] * L_im[i][k];
                    y -= re[k][v] * L_im[i][k] + im[k][v] * L_re[i][k];
                }
                re[i][v] = x;
                im[i][v] = y;
            }
        for (std::size_t j = 0; j < real; ++j)
            for (std::size_t i = 1; i < count; ++i) {
                E.re(first + j)[steps.m_from + i] = re[i][j / w][j % w];
                E.im(first + j)[steps.m_from + i] = im[i][j / w][j % w];
            }
    }
}

void exchange(const ComplexElimination& E, Range steps, Range columns)
{
    const auto pivot_row = [&](std::size_t k) { return E.m_pivots1[k] - 1.0; };
    exchange_in_columns(E.re(columns.m_from), E.m_ld, columns.size(), steps, pivot_row);
    exchange_in_columns(E.im(columns.m_from), E.m_ld, columns.size(), steps, pivot_row);
}

bool eliminate_at_baseline(const ComplexElimination& E, Range steps)
{
    return eliminate_columns(E, steps.m_from, steps.m_to);
}
void solve_at_baseline(const ComplexElimination& E, Range steps, Range columns)
{
    solve_rows<tiles::Two>(E, steps, columns);
}
void subtract_at_baseline(const ComplexElimination& E, Range steps, Range rows, Range columns, double* packed)
{
    subtract_steps<tiles::Two>(E, steps, rows, columns, packed);
}
bool scale_rows_at_baseline(const ComplexElimination& E)
{
    return scale_rows(E);
}
double growth_at_baseline(const ComplexElimination& E)
{
    return largest_growth(E);
}
constexpr Leaves<ComplexElimination> baseline{eliminate_at_baseline, solve_at_baseline, subtract_at_baseline, exchange};

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool eliminate_at_avx2(const ComplexElimination& E, Range steps)
{
    return eliminate_columns(E, steps.m_from, steps.m_to);
}
[[gnu::target("avx2")]] void solve_at_avx2(const ComplexElimination& E, Range steps, Range columns)
{
    solve_rows<tiles::Four>(E, steps, columns);
}
[[gnu::target("avx2")]] void subtract_at_avx2(const ComplexElimination& E, Range steps, Range rows, Range columns,
                                              double* packed)
{
    subtract_steps<tiles::Four>(E, steps, rows, columns, packed);
}
[[gnu::target("avx2")]] bool scale_rows_at_avx2(const ComplexElimination& E)
{
    return scale_rows(E);
}
[[gnu::target("avx2")]] double growth_at_avx2(const ComplexElimination& E)
{
    return largest_growth(E);
}
constexpr Leaves<ComplexElimination> avx2{eliminate_at_avx2, solve_at_avx2, subtract_at_avx2, exchange};

[[gnu::target("avx512f")]] void subtract_at_avx512(const ComplexElimination& E, Range steps, Range rows, Range columns,
                                                   double* packed)
{
    subtract_steps<tiles::Eight>(E, steps, rows, columns, packed);
}
constexpr Leaves<ComplexElimination> avx512{eliminate_at_avx2, solve_at_avx2, subtract_at_avx512, exchange};
#else
constexpr auto scale_rows_at_avx2 = scale_rows_at_baseline;
constexpr auto growth_at_avx2 = growth_at_baseline;
constexpr Leaves<ComplexElimination> avx2 = baseline;
constexpr Leaves<ComplexElimination> avx512 = baseline;
#endif

} // namespace

std::size_t blocked_complex_workspace(std::size_t n)
{
    return tiles::complex_workspace(n, n);
}

double complex_growth_baseline(const ComplexElimination& E)
{
    return growth_at_baseline(E);
}

double complex_growth_avx2(const ComplexElimination& E)
{
    return growth_at_avx2(E);
}

bool eliminate_complex_baseline(const ComplexElimination& E)
{
    return scale_rows_at_baseline(E) && eliminate_at_baseline(E, {0, E.m_n});
}

bool eliminate_complex_avx2(const ComplexElimination& E)
{
    return scale_rows_at_avx2(E) && eliminate_at_avx2(E, {0, E.m_n});
}

bool eliminate_complex_blocked_baseline(const ComplexElimination& E, double* packed)
{
    return scale_rows_at_baseline(E) && Recursion<ComplexElimination>(E, baseline, packed).eliminate({0, E.m_n});
}

bool eliminate_complex_blocked_avx2(const ComplexElimination& E, double* packed)
{
    return scale_rows_at_avx2(E) && Recursion<ComplexElimination>(E, avx2, packed).eliminate({0, E.m_n});
}

bool eliminate_complex_blocked_avx512(const ComplexElimination& E, double* packed)
{
    return scale_rows_at_avx2(E) && Recursion<ComplexElimination>(E, avx512, packed).eliminate({0, E.m_n});
}

} // namespace native
