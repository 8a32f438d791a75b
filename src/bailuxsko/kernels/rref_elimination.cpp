// Gauss-Jordan elimination by panels of columns (Golub and Van Loan, Matrix Computations, sections 3.2.11 and 3.4). A
// panel's pivots are found and used within it; its pivot columns hold the multipliers meanwhile. What the panel does to
// the columns on its right is a product in tiles, but for the pivot rows themselves, which are done step by step.
// Ours: every element takes its updates in ascending k, with a rounding after the product and one after the difference,
// so that every element has the bits of the plain loops. The search for a pivot goes on behind the last pivot's column
// and need not begin anew in each row: an earlier column is either zero below its pivot, or was passed over when more
// rows than now were searched.
#include "bailuxsko/kernels/levels.hpp"
#include "bailuxsko/kernels/lu_steps.hpp"
#include "bailuxsko/kernels/rref.hpp"
#include "bailuxsko/kernels/tiles.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace native {
namespace {

constexpr std::size_t panel_columns = 32;
constexpr std::size_t columns_at_once = 96; // of those right of the panel

/// The table, its columns and rows counted from 0.
struct Table {
    double* const* m_columns;
    std::size_t m_rows;
    std::size_t m_cols;
    double m_tolerance;

    double* column(std::size_t j) const { return m_columns[j + 1] + 1; }
};

/// One step of the elimination.
struct Step {
    std::size_t m_column;    // of the pivot
    std::size_t m_exchanged; // the row that the pivot row was exchanged with
    double m_reciprocal;     // of the pivot
};

/// The steps whose pivots lie in one panel: step k has its pivot in row m_first + k.
struct Steps {
    std::size_t m_first;
    std::size_t m_count = 0;
    Step m_steps[panel_columns];

    std::size_t end() const { return m_first + m_count; }
    void exchange_rows_in(double* column) const
    {
        for (std::size_t k = 0; k < m_count; ++k)
            std::swap(column[m_first + k], column[m_steps[k].m_exchanged]);
    }
};

/// The largest magnitude of a column from row p on, but not below 0.0, and the topmost row that has it.
[[gnu::always_inline]] inline std::pair<double, std::size_t> find_pivot(const double* column, std::size_t p,
                                                                        std::size_t rows)
{
    const double big = largest(rows - p, 0.0, [=](std::size_t i) { return std::fabs(column[p + i]); });
    std::size_t q = p;
    while (q + 1 < rows && std::fabs(column[q]) != big)
        ++q;
    return {big, q};
}

/// Takes x times the multipliers off the rows `from` to before `to` of a column.
[[gnu::always_inline]] inline void subtract_multiple(double* __restrict column, const double* multipliers, double x,
                                                     std::size_t from, std::size_t to)
{
    for (std::size_t i = from; i < to; ++i)
        column[i] -= multipliers[i] * x;
}

/// Finds pivots in the columns from `first` to before `end` and reduces these columns. The pivot columns are left with
/// 1 in the pivot row and the multipliers in the others. Answers whether a column was passed over.
[[gnu::always_inline]] inline bool reduce_panel(const Table& T, std::size_t first, std::size_t end, Steps& S)
{
    bool passes_over = false;
    for (std::size_t c = first; c < end && S.end() < T.m_rows; ++c) {
        double* const pivots = T.column(c);
        const std::size_t p = S.end();
        const auto [big, q] = find_pivot(pivots, p, T.m_rows);
        if (!(big > T.m_tolerance)) {
            passes_over = true;
            continue;
        }
        if (q != p)
            for (std::size_t j = first; j < end; ++j)
                std::swap(T.column(j)[p], T.column(j)[q]);
        const double reciprocal = 1.0 / pivots[p];
        pivots[p] = 1.0;
        for (std::size_t j = c + 1; j < end; ++j) {
            double* const column = T.column(j);
            const double x = column[p] * reciprocal;
            column[p] = x;
            subtract_multiple(column, pivots, x, 0, p);
            subtract_multiple(column, pivots, x, p + 1, T.m_rows);
        }
        S.m_steps[S.m_count++] = {.m_column = c, .m_exchanged = q, .m_reciprocal = reciprocal};
    }
    return passes_over;
}

/// The steps in the pivot rows of a column right of their panel. A row may change after its own step: `scaled` gets
/// what each was then, which is what the other rows are reduced by.
[[gnu::always_inline]] inline void reduce_pivot_rows(const Table& T, const Steps& S, double* column, double* scaled)
{
    for (std::size_t k = 0; k < S.m_count; ++k) {
        const std::size_t p = S.m_first + k;
        const double* const multipliers = T.column(S.m_steps[k].m_column);
        const double x = column[p] * S.m_steps[k].m_reciprocal;
        column[p] = x;
        scaled[k] = x;
        subtract_multiple(column, multipliers, x, S.m_first, p);
        subtract_multiple(column, multipliers, x, p + 1, S.end());
    }
}

/// The multipliers of some rows, step by step, as a tile takes them; beyond the edge the last row is repeated.
[[gnu::always_inline]] inline void pack_multipliers(const Table& T, const Steps& S, std::size_t row, std::size_t rows,
                                                    std::size_t height, double* strip)
{
    for (std::size_t k = 0; k < S.m_count; ++k, strip += height) {
        const double* const from = T.column(S.m_steps[k].m_column) + row;
        for (std::size_t i = 0; i < height; ++i)
            strip[i] = from[std::min(i, rows - 1)];
    }
}

/// The steps in the rows from `from` to before `to`, which have none of their pivots, of the columns from `first` on.
using Scaled = double[columns_at_once][panel_columns]; // pivot rows, column by column
template <class Vector>
[[gnu::always_inline]] inline void reduce_rows(const Table& T, const Steps& S, std::size_t from, std::size_t to,
                                               std::size_t first, std::size_t end, const Scaled& scaled)
{
    constexpr std::size_t height = tiles::tile_rows<Vector>;
    constexpr std::size_t columns_at_a_tile = tiles::tile_cols<Vector>;
    double strip[height * panel_columns];
    for (std::size_t i = from; i < to; i += height) {
        const std::size_t rows = std::min(height, to - i);
        const std::size_t padded = tiles::padded_rows<Vector>(rows);
        pack_multipliers(T, S, i, rows, padded, strip);
        for (std::size_t j = first; j < end; j += columns_at_a_tile) {
            tiles::Columns columns;
            for (std::size_t t = 0; t < columns_at_a_tile; ++t) {
                const std::size_t column = std::min(j + t, end - 1);
                columns.m_b[t] = scaled[column - first];
                columns.m_c[t] = T.column(column) + i;
            }
            tiles::tile<tiles::Update::subtract, Vector>({strip, static_cast<std::ptrdiff_t>(padded)}, S.m_count,
                                                         columns, rows, std::min(columns_at_a_tile, end - j), false);
        }
    }
}

/// Leaves zeros where the multipliers stood.
void clear_pivot_columns(const Table& T, const Steps& S)
{
    for (std::size_t k = 0; k < S.m_count; ++k) {
        double* const column = T.column(S.m_steps[k].m_column);
        std::fill_n(column, S.m_first + k, 0.0);
        std::fill(column + S.m_first + k + 1, column + T.m_rows, 0.0);
    }
}

using ReduceRows = void(const Table& T, const Steps& S, std::size_t from, std::size_t to, std::size_t first,
                        std::size_t end, const Scaled& scaled);

[[gnu::always_inline]] inline void eliminate(const Table& T, ReduceRows* reduce_rows)
{
    std::size_t passed_over = T.m_cols; // the first column that was
    std::size_t pivot_row = 0;
    for (std::size_t first = 0; first < T.m_cols && pivot_row < T.m_rows; first += panel_columns) {
        const std::size_t end = std::min(first + panel_columns, T.m_cols);
        Steps S{.m_first = pivot_row, .m_steps = {}};
        const bool passes_over = reduce_panel(T, first, end, S);
        for (std::size_t j = passed_over; j < first; ++j) // left of it, pivot columns are zero in the rows exchanged
            S.exchange_rows_in(T.column(j));
        for (std::size_t j = end; j < T.m_cols; j += columns_at_once) {
            const std::size_t to = std::min(j + columns_at_once, T.m_cols);
            Scaled scaled;
            for (std::size_t c = j; c < to; ++c) {
                S.exchange_rows_in(T.column(c));
                reduce_pivot_rows(T, S, T.column(c), scaled[c - j]);
            }
            reduce_rows(T, S, 0, S.m_first, j, to, scaled);
            reduce_rows(T, S, S.end(), T.m_rows, j, to, scaled);
        }
        clear_pivot_columns(T, S);
        if (passes_over)
            passed_over = std::min(passed_over, first);
        pivot_row = S.end();
    }
}

void reduce_rows_baseline(const Table& T, const Steps& S, std::size_t from, std::size_t to, std::size_t first,
                          std::size_t end, const Scaled& scaled)
{
    reduce_rows<tiles::Two>(T, S, from, to, first, end, scaled);
}
void eliminate_baseline(const Table& T)
{
    eliminate(T, reduce_rows_baseline);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void reduce_rows_avx2(const Table& T, const Steps& S, std::size_t from, std::size_t to,
                                              std::size_t first, std::size_t end, const Scaled& scaled)
{
    reduce_rows<tiles::Four>(T, S, from, to, first, end, scaled);
}
[[gnu::target("avx2")]] void eliminate_avx2(const Table& T)
{
    eliminate(T, reduce_rows_avx2);
}

[[gnu::target("avx512f")]] void reduce_rows_avx512(const Table& T, const Steps& S, std::size_t from, std::size_t to,
                                                   std::size_t first, std::size_t end, const Scaled& scaled)
{
    reduce_rows<tiles::Eight>(T, S, from, to, first, end, scaled);
}
[[gnu::target("avx2")]] void eliminate_avx512(const Table& T) // the tiles alone have an instance of their own
{
    eliminate(T, reduce_rows_avx512);
}
#else
constexpr auto eliminate_avx2 = eliminate_baseline;
constexpr auto eliminate_avx512 = eliminate_baseline;
#endif

} // namespace

void gauss_jordan(double* const* columns, int m, int n, double tol)
{
    if (m < 1 || n < 1 || !(tol >= 0.0))
        return;
    const Table T{.m_columns = columns,
                  .m_rows = static_cast<std::size_t>(m),
                  .m_cols = static_cast<std::size_t>(n),
                  .m_tolerance = tol};
    at_level(eliminate_baseline, eliminate_avx2, eliminate_avx512)(T);
}

} // namespace native
