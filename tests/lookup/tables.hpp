#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/lookup/match.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/raises.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

/// Tables of all sorts for searches, and the search itself element by element.
namespace support {

using Place = std::pair<std::int32_t, std::int32_t>;

/// The hits column by column, each element asked as a value of its own.
inline std::vector<Place> plain_hits(const Qud::MatVal& M, Efi::IndexRange cols, Efi::IndexRange rows,
                                     const std::function<bool(const Qud::Handle&)>& is_hit, std::int32_t origin = 0)
{
    std::vector<Place> hits;
    for (std::size_t j = cols.first; j < cols.end; ++j)
        for (std::size_t i = rows.first; i < rows.end; ++i)
            if (is_hit(M.element(i, j)))
                hits.emplace_back(static_cast<std::int32_t>(i) + origin, static_cast<std::int32_t>(j) + origin);
    return hits;
}

inline std::vector<Place> places(const Efi::indicesList& hits)
{
    std::vector<Place> all;
    for (std::uint32_t k = 0; k < hits.count(); ++k)
        all.emplace_back(hits.row(k), hits.col(k));
    return all;
}

/// What a search lists, empty where it finds nothing.
template <class Search>
std::vector<Place> found_by(Search search)
{
    EfiCallContext context;
    Efi::indicesList hits(&context);
    const Raised raised = raised_by([&] { search(hits, &context); });
    if (raised == Raised{"no matching values found", -1})
        return {};
    EXPECT_EQ(raised.message, "");
    return places(hits);
}

/// What stands in a table beside its numbers.
struct TableKind {
    const char* name;
    bool with_imaginary;
    bool with_entries;
    bool with_units; ///< one for each element, in stretches
};
inline const TableKind table_kinds[] = {
    {.name = "plain", .with_imaginary = false, .with_entries = false, .with_units = false},
    {.name = "complex", .with_imaginary = true, .with_entries = false, .with_units = false},
    {.name = "texts and arrays", .with_imaginary = false, .with_entries = true, .with_units = false},
    {.name = "units", .with_imaginary = false, .with_entries = false, .with_units = true},
    {.name = "everything", .with_imaginary = true, .with_entries = true, .with_units = true},
};

/// A table of rows by cols numbers; all of it stands in larger arrays, so it has an offset and gaps between columns.
inline Qud::Handle table(const TableKind& of, const Kind& numbers, std::uint32_t rows, std::uint32_t cols,
                         Random& random)
{
    static const Qud::Dim metre = Qud::Dim::Parse("V{Length 60000}");
    const Qud::Handle texts[] = {Qud::StrVal::make("a"), Qud::StrVal::make(""), Qud::StrVal::make("2"),
                                 Qud::MatVal::empty()};
    Qud::MatBuilder whole(rows + 3, cols + 2);
    if (of.with_imaginary)
        whole.want_imaginary();
    Qud::Dim unit = metre;
    for (std::uint32_t j = 0; j < cols + 2; ++j)
        for (std::uint32_t i = 0; i < rows + 3; ++i) {
            if (of.with_units && random() % 5 == 0)
                unit = unit == metre ? Qud::Dim::identity : metre;
            if (of.with_entries && random() % 7 == 0)
                whole.set(i, j, texts[random() % 4]);
            else
                whole.set_number(i, j, numbers.element(random), of.with_imaginary ? numbers.element(random) : 0.0,
                                 unit);
        }
    const Qud::Handle all = whole.finish();
    return Qud::matrix_of(all)->SubMatrix(2, rows + 1, 1, cols);
}

} // namespace support
