#include "bailuxsko/lookup/match.hpp"
#include "efiutl/records.hpp"

#include <algorithm>
#include <cstdint>
#include <memory>

namespace Efi {

namespace {

Qud::Handle column_of_rows(const indicesList& hits)
{
    Qud::FreshNumbers rows = Qud::fresh_numbers(hits.count());
    for (std::uint32_t k = 0; k < hits.count(); ++k)
        rows[k] = hits.row(k);
    return Qud::MatVal::make(hits.count(), 1, std::move(rows));
}

/// The pairs are views of one array that holds them all.
Qud::Handle column_of_pairs(const indicesList& hits)
{
    const std::uint32_t count = hits.count();
    Qud::FreshNumbers numbers = Qud::fresh_numbers(std::size_t{2} * count);
    for (std::uint32_t k = 0; k < count; ++k) {
        numbers[std::size_t{2} * k] = hits.row(k);
        numbers[std::size_t{2} * k + 1] = hits.col(k);
    }
    const Qud::SharedNumbers pairs = std::move(numbers);
    auto entries = std::make_shared<Qud::EntryTable>();
    entries->reserve(count);
    for (std::size_t k = 0; k < count; ++k)
        entries->push_back({.index = k,
                            .value = Qud::MatVal::make({.rows = 2,
                                                        .cols = 1,
                                                        .anr = 2,
                                                        .offset = 2 * k,
                                                        .real = pairs,
                                                        .imaginary = nullptr,
                                                        .units = {},
                                                        .entries = nullptr})});
    Qud::FreshNumbers markers = Qud::fresh_numbers(count);
    std::fill_n(markers.get(), count, ptr_nan());
    return Qud::MatVal::make({.rows = count,
                              .cols = 1,
                              .anr = count,
                              .offset = 0,
                              .real = std::move(markers),
                              .imaginary = nullptr,
                              .units = {},
                              .entries = std::move(entries)});
}

} // namespace

Qud::Handle returnIndices(const Qud::MatVal& M, const indicesList& hits)
{
    return M.Cols() > 1 ? column_of_pairs(hits) : column_of_rows(hits);
}

} // namespace Efi
