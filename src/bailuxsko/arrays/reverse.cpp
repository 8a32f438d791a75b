#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/construction.hpp"
#include "bailuxsko/frame/call.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace Efi::Matrix {

namespace {

/// Every column of `rows` elements upside down; null for an absent array.
Qud::SharedNumbers rowReverse(const double* source, const Qud::MatVal& M)
{
    if (!source)
        return nullptr;
    Qud::FreshNumbers reversed = Qud::fresh_numbers(M.count());
    for (std::size_t j = 0; j < M.Cols(); ++j) {
        const double* const column = source + M.storage_index(0, j);
        std::reverse_copy(column, column + M.Rows(), reversed.get() + j * M.Rows());
    }
    return reversed;
}

/// The texts and arrays of M under their new indices. @throws "unmatched key index" (-1)
std::shared_ptr<const Qud::EntryTable> reverseIndex(const Qud::MatVal& M)
{
    auto entries = std::make_shared<Qud::EntryTable>();
    entries->reserve(M.entries()->size());
    for (const Qud::Entry& e : *M.entries()) {
        const Qud::MatVal::Place place = M.place_of(e.index);
        if (e.index < M.m_offset || place.row >= M.Rows() || place.col >= M.Cols())
            Evl::Run::AppException::Raise(msg::unmatched_key_index, -1);
        entries->push_back({.index = place.col * M.Rows() + (M.Rows() - 1 - place.row), .value = e.value});
    }
    std::sort(entries->begin(), entries->end(),
              [](const Qud::Entry& a, const Qud::Entry& b) { return a.index < b.index; });
    return entries;
}

Qud::Units reversed_units(const Qud::MatVal& M)
{
    if (!M.units().each)
        return M.units();
    auto units = std::make_shared<std::vector<Qud::Dim>>(*M.units().each);
    for (auto column = units->begin(); column != units->end(); column += M.Rows())
        std::reverse(column, column + M.Rows());
    return Qud::Units(std::move(units));
}

} // namespace

Qud::Handle reverse(const Qud::Handle& M)
{
    return in_host_call([&]() -> Qud::Handle {
        const Qud::MatVal& source = Error::as_matrix(M, msg::must_be_matrix, 1);
        if (source.Rows() == 1)
            return M;
        Qud::MatVal::Parts parts;
        parts.rows = source.Rows();
        parts.cols = source.Cols();
        parts.real = rowReverse(source.m_rarr, source);
        parts.imaginary = rowReverse(source.m_iarr, source);
        parts.units = reversed_units(source);
        if (source.has_entries())
            parts.entries = reverseIndex(source);
        return Qud::MatVal::make(std::move(parts));
    });
}

} // namespace Efi::Matrix
