#include "bailuxsko/lookup.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/lookup/match.hpp"
#include "efiutl/messages.hpp"

#include <cstddef>
#include <cstdint>

namespace Efi {

namespace {

using Evl::Run::AppException;

IndexRange all_rows(const Qud::MatVal& M)
{
    return {.first = 0, .end = M.Rows()};
}

IndexRange all_cols(const Qud::MatVal& M)
{
    return {.first = 0, .end = M.Cols()};
}

/// The first of `count` rows or columns, if there is one.
IndexRange first_of(std::uint32_t count)
{
    return {.first = 0, .end = count == 0 ? std::size_t{0} : std::size_t{1}};
}

/// A row or column that a table of `count` of them has. @throws "must be integer", "index out of bounds" (3)
std::size_t chosen(const Qud::Handle& number, Qud::Origin origin, std::uint32_t count)
{
    const double offset = Error::as_integer(number, 3) - origin.value;
    if (!(offset >= 0.0 && offset < count))
        AppException::Raise(msg::index_out_of_bounds, 3);
    return static_cast<std::size_t>(offset);
}

/// The hits of a search, counted from 0 again.
class Hits {
public:
    Hits(EfiCallContext* ctx, Qud::Origin origin) : m_list(ctx), m_origin(origin) {}

    indicesList& list() noexcept { return m_list; }
    std::uint32_t count() const noexcept { return m_list.count(); }
    std::size_t row(std::uint32_t k) const noexcept { return from_zero(m_list.row(k)); }
    std::size_t col(std::uint32_t k) const noexcept { return from_zero(m_list.col(k)); }

private:
    std::size_t from_zero(std::int32_t index) const noexcept
    {
        return static_cast<std::size_t>(std::int64_t{index} - m_origin.value);
    }

    indicesList m_list;
    Qud::Origin m_origin;
};

/// The column of the elements at place(k) = (row, column) for each hit k, whatever they are.
template <class Place>
Qud::Handle collected(const Qud::MatVal& M, std::uint32_t count, Place place)
{
    Qud::GrowableColumn elements;
    elements.reserve(count);
    for (std::uint32_t k = 0; k < count; ++k) {
        const auto [i, j] = place(k);
        elements.PushRaw(M, i, j);
    }
    return elements.reshape(count, 1);
}

struct Place {
    std::size_t row;
    std::size_t col;
};

/// Where the hits of one key of a two-way lookup are searched, and which of its indices is kept.
struct KeySearch {
    IndexRange cols;
    IndexRange rows;
    int target_index;
};

/// A key that is a text is looked for as it is, whatever the modifier says; any other goes by the modifier.
void search_key(Hits& hits, EfiCallContext* ctx, const Qud::Handle& key, const Qud::MatVal& M, const KeySearch& where,
                const Qud::Handle& modifier, Qud::Tol tol, Qud::Origin origin)
{
    if (Error::is_string(key))
        Match(hits.list(), ctx, M, where.cols, where.rows, eq_pred(key, tol.value), origin);
    else
        Match(hits.list(), ctx, key, &M, where.cols, where.rows, modifier, tol, origin,
              {.target = where.target_index, .matrix = 3, .modifier = 4});
}

/// The elements of M where a hit row meets a hit column.
Qud::Handle block_of(const Qud::MatVal& M, const Hits& rows, const Hits& cols)
{
    Qud::MatBuilder block(rows.count(), cols.count());
    for (std::uint32_t j = 0; j < cols.count(); ++j)
        for (std::uint32_t i = 0; i < rows.count(); ++i) {
            const std::size_t row = rows.row(i);
            const std::size_t col = cols.col(j);
            if (const Qud::Handle* const held = M.entry(row, col))
                block.set(i, j, *held);
            else
                block.set_number(i, j, M.real(row, col), M.imag(row, col), M.unit(row, col));
        }
    return block.finish();
}

} // namespace

namespace EfiLookup {

Qud::Handle Match(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                  const Qud::Handle& modifier)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = Error::as_matrix(A, msg::must_be_matrix, 2);
        indicesList hits(call.context());
        Efi::Match(hits, call.context(), z, &M, all_cols(M), all_rows(M), modifier, tol, origin,
                   {.target = 1, .matrix = 2, .modifier = 3});
        return returnIndices(M, hits);
    });
}

Qud::Handle Lookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A, const Qud::Handle& B,
                   const Qud::Handle& modifier)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& keys = Error::as_matrix(A, msg::must_be_matrix, 2);
        const Qud::MatVal& values = Error::as_matrix(B, msg::must_be_matrix, 3);
        if (keys.Rows() != values.Rows() || keys.Cols() != values.Cols())
            AppException::Raise(msg::array_size_mismatch, 3);
        Hits hits(call.context(), origin);
        Efi::Match(hits.list(), call.context(), z, &keys, all_cols(keys), all_rows(keys), modifier, tol, origin,
                   {.target = 1, .matrix = 2, .modifier = 4});
        return collected(values, hits.count(), [&](std::uint32_t k) { return Place{hits.row(k), hits.col(k)}; });
    });
}

Qud::Handle Hlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A, const Qud::Handle& r,
                    const Qud::Handle& modifier)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = Error::as_matrix(A, msg::must_be_matrix, 2);
        const std::size_t row = chosen(r, origin, M.Rows());
        Hits hits(call.context(), origin);
        Efi::Match(hits.list(), call.context(), z, &M, all_cols(M), first_of(M.Rows()), modifier, tol, origin,
                   {.target = 1, .matrix = 2, .modifier = 4});
        return collected(M, hits.count(), [&](std::uint32_t k) { return Place{row, hits.col(k)}; });
    });
}

Qud::Handle Vlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A, const Qud::Handle& c,
                    const Qud::Handle& modifier)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = Error::as_matrix(A, msg::must_be_matrix, 2);
        const std::size_t col = chosen(c, origin, M.Cols());
        Hits hits(call.context(), origin);
        Efi::Match(hits.list(), call.context(), z, &M, first_of(M.Cols()), all_rows(M), modifier, tol, origin,
                   {.target = 1, .matrix = 2, .modifier = 4});
        return collected(M, hits.count(), [&](std::uint32_t k) { return Place{hits.row(k), col}; });
    });
}

Qud::Handle VHlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& rz, const Qud::Handle& cz,
                     const Qud::Handle& A, const Qud::Handle& modifier)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = Error::as_matrix(A, msg::must_be_matrix, 3);
        // ".." is refused here and now, also where both keys are texts and nobody reads the modifier.
        if (Error::as_string(modifier, msg::invalid_modifier, 4) == "..")
            AppException::Raise(msg::invalid_modifier, 4);
        as_tolerance(tol);
        Hits rows(call.context(), origin);
        search_key(rows, call.context(), rz, M, {.cols = first_of(M.Cols()), .rows = all_rows(M), .target_index = 1},
                   modifier, tol, origin);
        Hits cols(call.context(), origin);
        search_key(cols, call.context(), cz, M, {.cols = all_cols(M), .rows = first_of(M.Rows()), .target_index = 2},
                   modifier, tol, origin);
        return block_of(M, rows, cols);
    });
}

Qud::Handle vhlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& rz, const Qud::Handle& cz,
                     const Qud::Handle& A)
{
    return in_host_call([&] { return VHlookup(origin, tol, rz, cz, A, Qud::StrVal::make("eq")); });
}

} // namespace EfiLookup

} // namespace Efi
