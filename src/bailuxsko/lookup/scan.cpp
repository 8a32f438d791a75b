// One predicate over the elements of some rows and columns. Whole runs of numbers are tested where they lie; texts and
// users' functions see one element at a time.
#include "bailuxsko/lookup/match.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <variant>

namespace Efi {

namespace {

/// The hits of one column.
class ColumnHits {
public:
    ColumnHits(indicesList& hits, std::size_t col, Qud::Origin origin) : m_hits(hits), m_col(col), m_origin(origin) {}

    void add(std::size_t row) { m_hits.insert(index(row), index(m_col)); }
    void add(std::size_t first_row, std::span<const std::uint8_t> offsets)
    {
        index(first_row + offsets.back());
        m_hits.insert(index(first_row), offsets, index(m_col));
    }

private:
    std::int32_t index(std::size_t place) const
    {
        const std::int64_t counted = static_cast<std::int64_t>(place) + m_origin.value;
        if (counted > std::numeric_limits<std::int32_t>::max())
            Throw(msg::index_out_of_bounds, -1);
        return static_cast<std::int32_t>(counted);
    }

    indicesList& m_hits;
    std::size_t m_col;
    Qud::Origin m_origin;
};

template <class Test>
void scan_run(const NumberRun& run, const Test& test, std::size_t first_row, ColumnHits& hits)
{
    if constexpr (Test::reads_imaginary) {
        if (run.im == nullptr)
            return scan_run(run, test.of_reals(), first_row, hits);
    }
    for_each_hit_of_run(run, test, [&](std::size_t first, std::span<const std::uint8_t> offsets) {
        hits.add(first_row + first, offsets);
    });
}

void scan_numbers(const Qud::MatVal& M, std::size_t j, IndexRange rows, const Qud::Dim& unit, const NumberTest& test,
                  ColumnHits& hits)
{
    for_each_run(M, j, rows, unit, [&](IndexRange run) {
        std::visit([&](const auto& t) { scan_run(numbers_of(M, j, run), t, run.first, hits); }, test);
    });
}

/// Only texts can meet a target that is a text.
void scan_texts(const Qud::MatVal& M, std::size_t j, IndexRange rows, const comparison_pred& predicate,
                ColumnHits& hits)
{
    const std::size_t top = M.storage_index(0, j);
    for (const Qud::Entry& e : entries_of_column(M, j, rows))
        if (predicate.evalElem(e.value, Qud::Dim::identity))
            hits.add(e.index - top);
}

void scan_elements(const Qud::MatVal& M, std::size_t j, IndexRange rows, const comparison_pred& predicate,
                   ColumnHits& hits)
{
    for (std::size_t i = rows.first; i < rows.end; ++i)
        if (predicate.evalElem(M.element(i, j), M.unit(i, j)))
            hits.add(i);
}

} // namespace

void Match(indicesList& hits, EfiCallContext* /*ctx*/, const Qud::MatVal& M, IndexRange cols, IndexRange rows,
           const comparison_pred& predicate, Qud::Origin origin)
{
    hits.clear();
    const std::optional<NumberTest> test = predicate.number_test();
    for (std::size_t j = cols.first; j < cols.end; ++j) {
        ColumnHits of_column(hits, j, origin);
        if (predicate.m_usrfn != nullptr)
            scan_elements(M, j, rows, predicate, of_column);
        else if (predicate.m_str != nullptr)
            scan_texts(M, j, rows, predicate, of_column);
        else if (test)
            scan_numbers(M, j, rows, predicate.m_tdim, *test, of_column);
        else
            scan_elements(M, j, rows, predicate, of_column);
    }
    if (hits.count() == 0)
        Throw(msg::no_matching_values_found, -1);
}

void Match(indicesList& hits, EfiCallContext* ctx, double target, const Qud::Dim& unit, const Qud::MatVal& M,
           IndexRange cols, IndexRange rows, Qud::Tol tol, Qud::Origin origin)
{
    double distance = std::numeric_limits<double>::max();
    for (std::size_t j = cols.first; j < cols.end; ++j)
        for_each_run(M, j, rows, unit, [&](IndexRange run) {
            if (distance != 0.0)
                distance = nearest_distance(numbers_of(M, j, run), target, distance);
        });
    if (distance == 0.0)
        Match(hits, ctx, M, cols, rows, eq_ignoreIp_pred(target, unit, tol.value), origin);
    else
        Match(hits, ctx, M, cols, rows, range_pred(target - distance, target + distance, unit, tol.value), origin);
}

} // namespace Efi
