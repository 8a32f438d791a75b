// One predicate over the elements of some rows and columns. Whole runs of numbers are tested where they lie; texts and
// users' functions see one element at a time.
#include "bailuxsko/kernels/search.hpp"
#include "bailuxsko/lookup/match.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string>

namespace Efi {

namespace {

/// The hits of one column.
class ColumnHits {
public:
    ColumnHits(indicesList& hits, std::size_t col, Qud::Origin origin) : m_hits(hits), m_col(col), m_origin(origin) {}

    void add(std::size_t row) { m_hits.insert(index(row), index(m_col)); }
    void add(std::size_t first_row, std::span<const std::uint16_t> offsets)
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

void scan_numbers(const Qud::MatVal& M, std::size_t j, IndexRange rows, const Qud::Dim& unit, const NumberTest& test,
                  ColumnHits& hits)
{
    std::array<std::uint16_t, native::most_searched> places;
    for_each_run(M, j, rows, unit, [&](IndexRange run) {
        for (std::size_t first = run.first; first < run.end; first += native::most_searched) {
            const std::size_t count = std::min(native::most_searched, run.end - first);
            const std::size_t index = M.storage_index(first, j);
            const std::size_t found =
                native::find(test, M.m_rarr + index, M.HasImag() ? M.m_iarr + index : nullptr, count, places.data());
            if (found != 0)
                hits.add(first, {places.data(), found});
        }
    });
}

/// Numbers of one row, which stand apart in the arrays: brought together, they are searched as those of a column are.
class PieceOfRow {
public:
    PieceOfRow(const Qud::MatVal& M, std::size_t i, IndexRange cols)
        : m_has_imaginary(M.HasImag()), m_count(std::min(native::most_searched, cols.end - cols.first))
    {
        for (std::size_t k = 0; k < m_count; ++k)
            m_re[k] = M.real(i, cols.first + k);
        for (std::size_t k = 0; m_has_imaginary && k < m_count; ++k)
            m_im[k] = M.imag(i, cols.first + k);
    }

    const double* re() const noexcept { return m_re.data(); }
    const double* im() const noexcept { return m_has_imaginary ? m_im.data() : nullptr; }
    std::size_t count() const noexcept { return m_count; }

private:
    bool m_has_imaginary;
    std::size_t m_count;
    std::array<double, native::most_searched> m_re;
    std::array<double, native::most_searched> m_im;
};

/// Whether the ranges are one row of numbers that all have the unit.
bool is_row_of_numbers(const Qud::MatVal& M, IndexRange rows, const Qud::Dim& unit)
{
    return rows.end - rows.first == 1 && M.IsUniformScalar() && M.m_dim == unit;
}

void scan_row(const Qud::MatVal& M, std::size_t i, IndexRange cols, const NumberTest& test, indicesList& hits,
              Qud::Origin origin)
{
    std::array<std::uint16_t, native::most_searched> places;
    for (; cols.first < cols.end; cols.first += native::most_searched) {
        const PieceOfRow piece(M, i, cols);
        const std::size_t found = native::find(test, piece.re(), piece.im(), piece.count(), places.data());
        for (std::size_t k = 0; k < found; ++k)
            ColumnHits(hits, cols.first + places[k], origin).add(i);
    }
}

/// The smallest distance of a number of the unit from the target; the largest number where there is none.
double smallest_distance(const Qud::MatVal& M, IndexRange cols, IndexRange rows, const Qud::Dim& unit, double target)
{
    double distance = std::numeric_limits<double>::max();
    if (is_row_of_numbers(M, rows, unit)) {
        for (; cols.first < cols.end; cols.first += native::most_searched) {
            const PieceOfRow piece(M, rows.first, cols);
            distance = native::nearest_distance(piece.re(), piece.count(), target, distance);
        }
        return distance;
    }
    for (std::size_t j = cols.first; j < cols.end && distance != 0.0; ++j)
        for_each_run(M, j, rows, unit, [&](IndexRange run) {
            distance = native::nearest_distance(M.m_rarr + M.storage_index(run.first, j), run.end - run.first, target,
                                                distance);
        });
    return distance;
}

/// The same bytes; most texts that differ do so in their lengths or, as numbered names do, in the last eight bytes.
class SameText {
public:
    explicit SameText(const std::string& text) : m_text(text), m_tail(tail(text)) {}

    bool operator()(const std::string& other) const
    {
        return other.size() == m_text.size() && tail(other) == m_tail && other == m_text;
    }

private:
    static std::uint64_t tail(const std::string& text)
    {
        std::uint64_t bytes = 0;
        if (text.size() >= sizeof bytes)
            std::memcpy(&bytes, text.data() + text.size() - sizeof bytes, sizeof bytes);
        return bytes;
    }

    const std::string& m_text;
    std::uint64_t m_tail;
};

/// Only texts can meet a target that is a text.
void scan_texts(const Qud::MatVal& M, std::size_t j, IndexRange rows, const comparison_pred& predicate,
                ColumnHits& hits)
{
    const std::size_t top = M.storage_index(0, j);
    const TextTest test = predicate.text_test();
    const SameText is_target(*predicate.m_str);
    for (const Qud::Entry& e : entries_of_column(M, j, rows)) {
        const Qud::StrVal* const text = Qud::as_text(e.value);
        const bool is_hit = text != nullptr && test != TextTest::one_by_one
                                ? is_target(text->text()) == (test == TextTest::same)
                                : predicate.evalElem(e.value, Qud::Dim::identity);
        if (is_hit)
            hits.add(e.index - top);
    }
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
    const bool meets_numbers = predicate.m_usrfn == nullptr && predicate.m_str == nullptr && test;
    if (meets_numbers && is_row_of_numbers(M, rows, predicate.m_tdim)) {
        scan_row(M, rows.first, cols, *test, hits, origin);
        cols.first = cols.end;
    }
    for (std::size_t j = cols.first; j < cols.end; ++j) {
        ColumnHits of_column(hits, j, origin);
        if (meets_numbers)
            scan_numbers(M, j, rows, predicate.m_tdim, *test, of_column);
        else if (predicate.m_usrfn == nullptr && predicate.m_str != nullptr)
            scan_texts(M, j, rows, predicate, of_column);
        else
            scan_elements(M, j, rows, predicate, of_column);
    }
    if (hits.count() == 0)
        Throw(msg::no_matching_values_found, -1);
}

void Match(indicesList& hits, EfiCallContext* ctx, double target, const Qud::Dim& unit, const Qud::MatVal& M,
           IndexRange cols, IndexRange rows, Qud::Tol tol, Qud::Origin origin)
{
    const double distance = smallest_distance(M, cols, rows, unit, target);
    if (distance == 0.0)
        Match(hits, ctx, M, cols, rows, eq_ignoreIp_pred(target, unit, tol.value), origin);
    else
        Match(hits, ctx, M, cols, rows, range_pred(target - distance, target + distance, unit, tol.value), origin);
}

} // namespace Efi
