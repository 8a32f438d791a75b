// The blocked form of the real elimination: leaves of the recursion at every instruction level.
#include "bailuxsko/kernels/lu_elimination.hpp"
#include "bailuxsko/kernels/lu_recursion.hpp"
#include "bailuxsko/kernels/tiles.hpp"
#include "bailuxsko/kernels/triangular_rows.hpp"

#include <algorithm>
#include <cstddef>

namespace native {
namespace {

template <class Vector>
[[gnu::always_inline]] inline void subtract_steps(const Elimination& E, Range steps, Range rows, Range columns,
                                                  double* packed)
{
    tiles::rows_of_product<tiles::Update::subtract, Vector>(
        E.column(steps.m_from), E.m_ld, rows.m_from, rows.m_to, columns.size(), steps.size(),
        [&](std::size_t j) { return E.column(columns.m_from + j) + steps.m_from; },
        [&](std::size_t j) { return E.column(columns.m_from + j); }, packed);
}

template <class Vector>
[[gnu::always_inline]] inline void solve_rows(const Elimination& E, Range steps, Range columns)
{
    triangular::solve_rows<triangular::Triangle::unit_lower, Vector>(
        E.column(steps.m_from) + steps.m_from, E.m_ld, steps.size(), columns.size(),
        [&](std::size_t j) { return E.column(columns.m_from + j) + steps.m_from; });
}

void exchange(const Elimination& E, Range steps, Range columns)
{
    exchange_in_columns(E.column(columns.m_from), E.m_ld, columns.size(), steps,
                        [&](std::size_t k) { return E.m_pivots[k]; });
}

bool eliminate_at_baseline(const Elimination& E, Range steps)
{
    return eliminate_columns(E, steps.m_from, steps.m_to);
}
void solve_at_baseline(const Elimination& E, Range steps, Range columns)
{
    solve_rows<tiles::Two>(E, steps, columns);
}
void subtract_at_baseline(const Elimination& E, Range steps, Range rows, Range columns, double* packed)
{
    subtract_steps<tiles::Two>(E, steps, rows, columns, packed);
}
constexpr Leaves<Elimination> baseline{eliminate_at_baseline, solve_at_baseline, subtract_at_baseline, exchange};

#if defined(__x86_64__)
[[gnu::target("avx2")]] bool eliminate_at_avx2(const Elimination& E, Range steps)
{
    return eliminate_columns(E, steps.m_from, steps.m_to);
}
[[gnu::target("avx2")]] void solve_at_avx2(const Elimination& E, Range steps, Range columns)
{
    solve_rows<tiles::Four>(E, steps, columns);
}
[[gnu::target("avx2")]] void subtract_at_avx2(const Elimination& E, Range steps, Range rows, Range columns,
                                              double* packed)
{
    subtract_steps<tiles::Four>(E, steps, rows, columns, packed);
}
constexpr Leaves<Elimination> avx2{eliminate_at_avx2, solve_at_avx2, subtract_at_avx2, exchange};

[[gnu::target("avx512f")]] void subtract_at_avx512(const Elimination& E, Range steps, Range rows, Range columns,
                                                   double* packed)
{
    subtract_steps<tiles::Eight>(E, steps, rows, columns, packed);
}
constexpr Leaves<Elimination> avx512{eliminate_at_avx2, solve_at_avx2, subtract_at_avx512, exchange};
#else
constexpr Leaves<Elimination> avx2 = baseline;
constexpr Leaves<Elimination> avx512 = baseline;
#endif

} // namespace

std::size_t blocked_workspace(std::size_t n)
{
    return tiles::workspace(n, n);
}

bool eliminate_blocked_baseline(const Elimination& E, double* packed)
{
    return Recursion<Elimination>(E, baseline, packed).eliminate({0, E.m_n});
}

bool eliminate_blocked_avx2(const Elimination& E, double* packed)
{
    return Recursion<Elimination>(E, avx2, packed).eliminate({0, E.m_n});
}

bool eliminate_blocked_avx512(const Elimination& E, double* packed)
{
    return Recursion<Elimination>(E, avx512, packed).eliminate({0, E.m_n});
}

} // namespace native
