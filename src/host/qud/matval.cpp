#include "bailuxhost/matval.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matdim.hpp"
#include "efiutl/messages.hpp"
#include "host/qud/tiles.hpp"

#include <algorithm>
#include <array>
#include <cstring>

namespace Qud {

FreshNumbers fresh_numbers(std::size_t count)
{
    return std::allocate_shared_for_overwrite<double[]>(Efi::pool_allocator<double>{}, element_count(count, 1));
}

FreshNumbers zero_numbers(std::size_t count)
{
    FreshNumbers numbers = fresh_numbers(count);
    std::memset(numbers.get(), 0, count * sizeof(double));
    return numbers;
}

namespace {

void copy_columns(const double* source, std::size_t anr, double* destination, std::size_t rows, std::size_t cols)
{
    if (rows == 0 || cols == 0)
        return;
    if (anr == rows) {
        std::memcpy(destination, source, rows * cols * sizeof(double));
        return;
    }
    for (std::size_t j = 0; j < cols; ++j)
        std::memcpy(destination + j * rows, source + j * anr, rows * sizeof(double));
}

} // namespace

FreshNumbers copied_numbers(const double* source, std::size_t rows, std::size_t cols, std::size_t anr)
{
    FreshNumbers numbers = fresh_numbers(element_count(rows, cols));
    copy_columns(source, anr, numbers.get(), rows, cols);
    return numbers;
}

namespace {

/// The one unit of all numbers of the parts, or null when two of them differ. Entries are passed over.
const Dim* common_unit(const MatVal::Parts& parts)
{
    static constexpr Dim none;
    const std::vector<Dim>& each = *parts.units.each;
    const EntryTable* const entries = parts.entries.get();
    std::size_t next_entry = 0;
    const Dim* first = nullptr;
    for (std::size_t j = 0; j < parts.cols; ++j) {
        for (std::size_t i = 0; i < parts.rows; ++i) {
            if (entries && next_entry < entries->size() &&
                (*entries)[next_entry].index == parts.offset + j * parts.anr + i) {
                ++next_entry;
                continue;
            }
            const Dim& unit = each[j * parts.rows + i];
            if (!first)
                first = &unit;
            else if (unit != *first)
                return nullptr;
        }
    }
    return first ? first : &none;
}

MatVal::Parts normalised(MatVal::Parts parts)
{
    if (parts.anr == 0)
        parts.anr = parts.rows;
    if (parts.entries && parts.entries->empty())
        parts.entries.reset();
    if (parts.entries && parts.entries->size() == std::size_t{parts.rows} * parts.cols)
        parts.units = Dim::identity;
    if (parts.units.each) {
        if (const Dim* const unit = common_unit(parts))
            parts.units = Units(*unit);
    }
    return parts;
}

Dim uniform_dimension(const MatVal::Parts& parts)
{
    if (!parts.entries)
        return parts.units.each ? Dim::mixed_matrix_dim : parts.units.one;
    const bool all = parts.entries->size() == std::size_t{parts.rows} * parts.cols;
    return all ? Dim::string_dim : Dim::mixed_matrix_dim;
}

EntryTable::const_iterator first_entry_from(const EntryTable& entries, std::size_t index)
{
    return std::lower_bound(entries.begin(), entries.end(), index,
                            [](const Entry& e, std::size_t wanted) { return e.index < wanted; });
}

} // namespace

MatVal::MatVal(Parts parts) : MatVal(Normalised{}, normalised(std::move(parts))) {}

MatVal::MatVal(Normalised, Parts parts)
    : DimVal(Kind::matrix, uniform_dimension(parts)), Data{parts.anr,  mat_val::tag, parts.rows,
                                                           parts.cols, nullptr,      nullptr},
      m_rarr(parts.real.get()), m_iarr(parts.imaginary.get()), m_offset(parts.offset),
      m_real_owner(std::move(parts.real)), m_imaginary_owner(std::move(parts.imaginary)), m_extent(extent_of(parts)),
      m_units(std::move(parts.units)), m_entries(std::move(parts.entries))
{
}

MatVal::MatVal(Key, std::uint32_t rows, std::uint32_t cols, const Dim& unit, const double* real,
               const double* imaginary, SharedNumbers real_owner, SharedNumbers imaginary_owner) noexcept
    : DimVal(Kind::matrix, unit), Data{rows, mat_val::tag, rows, cols, nullptr, nullptr}, m_rarr(real),
      m_iarr(imaginary), m_offset(0), m_real_owner(std::move(real_owner)),
      m_imaginary_owner(std::move(imaginary_owner)), m_units(unit)
{
}

/// A matrix with room for its numbers, real parts first.
template <std::size_t room>
class MatVal::WithNumbers final : public MatVal {
public:
    WithNumbers(std::uint32_t rows, std::uint32_t cols, const double* real, const double* imaginary, std::size_t anr,
                const Dim& unit) noexcept
        : MatVal(Key(), rows, cols, unit, m_numbers.data(),
                 imaginary ? m_numbers.data() + std::size_t{rows} * cols : nullptr, nullptr, nullptr)
    {
        copy_columns(real, anr, m_numbers.data(), rows, cols);
        if (imaginary)
            copy_columns(imaginary, anr, m_numbers.data() + count(), rows, cols);
    }

private:
    std::array<double, room> m_numbers; // NOLINT(cppcoreguidelines-pro-type-member-init): as many as count are read
};

MatVal::Extent MatVal::extent_of(const Parts& parts)
{
    Extent extent;
    if (!parts.entries)
        return extent;
    for (const Entry& e : *parts.entries) {
        const MatVal* const nested = matrix_of(e.value);
        if (!nested)
            continue;
        extent.levels = std::max(extent.levels, nested->m_extent.levels + 1);
        extent.nested_count += nested->count() + nested->m_extent.nested_count;
        if (extent.levels > max_levels)
            Evl::Run::AppException::Raise(msg::nesting_too_deep, -1);
        if (extent.nested_count > max_nested_count)
            throw std::bad_alloc();
    }
    return extent;
}

Handle MatVal::make(std::uint32_t rows, std::uint32_t cols, SharedNumbers real, SharedNumbers imaginary,
                    const Dim& unit)
{
    const double* const first_real = real.get();
    const double* const first_imaginary = imaginary.get();
    return std::make_shared<const MatVal>(Key(), rows, cols, unit, first_real, first_imaginary, std::move(real),
                                          std::move(imaginary));
}

Handle MatVal::copy_of(std::uint32_t rows, std::uint32_t cols, const double* real, const double* imaginary,
                       std::size_t anr, const Dim& unit)
{
    const std::size_t count = element_count(rows, cols);
    const std::size_t room = imaginary ? 2 * count : count;
    if (room <= 4)
        return std::make_shared<const WithNumbers<4>>(rows, cols, real, imaginary, anr, unit);
    if (room <= 16)
        return std::make_shared<const WithNumbers<16>>(rows, cols, real, imaginary, anr, unit);
    if (room <= most_held_numbers)
        return std::make_shared<const WithNumbers<most_held_numbers>>(rows, cols, real, imaginary, anr, unit);
    SharedNumbers own_imaginary = imaginary ? copied_numbers(imaginary, rows, cols, anr) : nullptr;
    return make(rows, cols, copied_numbers(real, rows, cols, anr), std::move(own_imaginary), unit);
}

Handle MatVal::empty()
{
    return make(0, 0, fresh_numbers(0));
}

MatVal::Parts MatVal::parts() const
{
    const auto shared = [this](const double* numbers, const SharedNumbers& owner) -> SharedNumbers {
        const bool held_here = numbers && !owner;
        return held_here ? copied_numbers(numbers, Rows(), Cols(), Anr()) : owner;
    };
    return {.rows = Rows(),
            .cols = Cols(),
            .anr = Anr(),
            .offset = m_offset,
            .real = shared(m_rarr, m_real_owner),
            .imaginary = shared(m_iarr, m_imaginary_owner),
            .units = m_units,
            .entries = m_entries};
}

const Handle* MatVal::entry(std::size_t i, std::size_t j) const noexcept
{
    if (!m_entries)
        return nullptr;
    const std::size_t index = storage_index(i, j);
    const auto place = first_entry_from(*m_entries, index);
    return place != m_entries->end() && place->index == index ? &place->value : nullptr;
}

Handle MatVal::element(std::size_t i, std::size_t j) const
{
    if (const Handle* const held = entry(i, j))
        return *held;
    return NumVal::make(real(i, j), imag(i, j), unit(i, j));
}

mat_val MatVal::view() const noexcept
{
    // Records have no const; workers read their arguments and never write to them.
    mat_val record = Data;
    record.m_rv = const_cast<double*>(m_rarr) + m_offset;
    record.m_iv = m_iarr ? const_cast<double*>(m_iarr) + m_offset : nullptr;
    return record;
}

Handle MatVal::SubMatrix(std::size_t first_row, std::size_t last_row, std::size_t first_col, std::size_t last_col) const
{
    Parts block = parts();
    block.rows = static_cast<std::uint32_t>(last_row - first_row + 1);
    block.cols = static_cast<std::uint32_t>(last_col - first_col + 1);
    block.offset = storage_index(first_row, first_col);
    if (m_units.each) {
        auto units = std::make_shared<std::vector<Dim>>();
        units->reserve(std::size_t{block.rows} * block.cols);
        for (std::size_t j = first_col; j <= last_col; ++j)
            for (std::size_t i = first_row; i <= last_row; ++i)
                units->push_back(unit(i, j));
        block.units = Units(std::move(units));
    }
    if (m_entries) {
        auto entries = std::make_shared<EntryTable>();
        const std::size_t last = storage_index(last_row, last_col);
        for (auto e = first_entry_from(*m_entries, block.offset); e != m_entries->end() && e->index <= last; ++e) {
            const std::size_t row = place_of(e->index).row;
            if (first_row <= row && row <= last_row)
                entries->push_back(*e);
        }
        block.entries = std::move(entries);
    }
    return make(std::move(block));
}

Handle MatVal::Transpose() const
{
    Parts flipped = parts();
    std::swap(flipped.rows, flipped.cols);
    if (Cols() == 1 || (Rows() == 1 && Anr() == 1)) {
        // The elements of a column stand in the order of a row: the same arrays, seen with columns of one element.
        flipped.anr = Cols() == 1 ? 1 : Cols();
        return make(std::move(flipped));
    }
    flipped.anr = Cols();
    flipped.offset = 0;
    const auto turned = [this](const double* source) -> SharedNumbers {
        if (!source)
            return nullptr;
        FreshNumbers result = fresh_numbers(count());
        transpose_tiles(source + m_offset, Anr(), result.get(), Rows(), Cols());
        return result;
    };
    flipped.real = turned(m_rarr);
    flipped.imaginary = turned(m_iarr);
    if (m_units.each) {
        auto units = std::make_shared<std::vector<Dim>>(count());
        transpose_tiles(m_units.each->data(), Rows(), units->data(), Rows(), Cols());
        flipped.units = Units(std::move(units));
    }
    if (m_entries) {
        auto entries = std::make_shared<EntryTable>(*m_entries);
        for (Entry& e : *entries) {
            const Place place = place_of(e.index);
            e.index = place.row * Cols() + place.col;
        }
        std::sort(entries->begin(), entries->end(), [](const Entry& a, const Entry& b) { return a.index < b.index; });
        flipped.entries = std::move(entries);
    }
    return make(std::move(flipped));
}

Handle MatVal::copy() const
{
    Parts own = parts();
    own.anr = Rows();
    own.offset = 0;
    const auto packed = [this](const double* source) -> SharedNumbers {
        return source ? copied_numbers(source + m_offset, Rows(), Cols(), Anr()) : nullptr;
    };
    own.real = packed(m_rarr);
    own.imaginary = packed(m_iarr);
    if (m_entries) {
        auto entries = std::make_shared<EntryTable>(*m_entries);
        for (Entry& e : *entries) {
            const Place place = place_of(e.index);
            e.index = place.col * Rows() + place.row;
        }
        own.entries = std::move(entries);
    }
    return make(std::move(own));
}

Handle MatVal::Canonicalize(const Handle& matrix)
{
    const MatVal& M = *matrix_of(matrix);
    return M.m_offset == 0 && M.Anr() == M.Rows() ? matrix : M.copy();
}

Handle MatVal::StripDimension() const
{
    return with_units(Dim::identity);
}

Handle MatVal::with_units(Units units) const
{
    Parts other = parts();
    other.units = std::move(units);
    return make(std::move(other));
}

void MatVal::assertRealVector(int index) const
{
    if (Cols() != 1 || HasImag() || has_entries())
        Evl::Run::AppException::Raise(msg::must_be_real_vector, index);
}

void MatVal::PackReal(double* destination) const
{
    copy_columns(m_rarr + m_offset, Anr(), destination, Rows(), Cols());
}

Handle MatVal::ApplyLinearDimension(const MatDim& pattern) const
{
    auto units = std::make_shared<std::vector<Dim>>();
    units->reserve(count());
    for (std::size_t j = 0; j < Cols(); ++j)
        for (std::size_t i = 0; i < Rows(); ++i)
            units->push_back(pattern.at(i, j));
    return with_units(Units(std::move(units)));
}

} // namespace Qud
