#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <cstring>

namespace Qud {

MatBuilder::MatBuilder(std::uint32_t rows, std::uint32_t cols)
    : m_rows(rows), m_cols(cols), m_real(zero_numbers(element_count(rows, cols)))
{
}

MatBuilder::~MatBuilder() = default;

void MatBuilder::want_imaginary()
{
    if (!m_imaginary)
        m_imaginary = zero_numbers(element_count(m_rows, m_cols));
}

void MatBuilder::note_unit(const Dim& unit)
{
    if (!m_has_unit) {
        m_has_unit = true;
        m_first_unit = unit;
    } else if (!m_each && unit != m_first_unit) {
        m_each = std::make_shared<std::vector<Dim>>(element_count(m_rows, m_cols), m_first_unit);
    }
}

void MatBuilder::set_number(std::size_t i, std::size_t j, double re, double im, const Dim& unit)
{
    const std::size_t place = j * m_rows + i;
    m_real[place] = re;
    if (im != 0.0)
        want_imaginary();
    if (m_imaginary)
        m_imaginary[place] = im;
    note_unit(unit);
    if (m_each)
        (*m_each)[place] = unit;
}

void MatBuilder::set_entry(std::size_t i, std::size_t j, const Handle& value)
{
    const std::size_t place = j * m_rows + i;
    m_real[place] = Efi::ptr_nan();
    if (!m_entries.empty() && m_entries.back().index >= place)
        m_sorted = false;
    m_entries.push_back({.index = place, .value = value});
}

void MatBuilder::set(std::size_t i, std::size_t j, const Handle& value, int index)
{
    if (const NumVal* const number = as_number(value))
        set_number(i, j, number->re(), number->im(), number->m_dim);
    else if (value && (value->kind() == Kind::text || value->kind() == Kind::matrix))
        set_entry(i, j, value);
    else
        Evl::Run::AppException::Raise(msg::must_be_string_scalar_or_array, index);
}

void MatBuilder::set_block(std::size_t row, std::size_t col, const MatVal& block)
{
    const std::size_t rows = block.Rows();
    if (rows == 0)
        return;
    const bool has_imaginary = block.HasImag() && has_imaginary_part(block);
    if (has_imaginary)
        want_imaginary();
    if (const Dim* const unit = block.number_unit())
        note_block_unit(block, *unit);
    for (std::size_t j = 0; j < block.Cols(); ++j) {
        const std::size_t place = (col + j) * m_rows + row;
        std::memcpy(&m_real[place], &block.m_rarr[block.storage_index(0, j)], rows * sizeof(double));
        if (has_imaginary)
            std::memcpy(&m_imaginary[place], &block.m_iarr[block.storage_index(0, j)], rows * sizeof(double));
        set_column_units(place, block, j);
    }
    if (block.entries()) {
        for (const Entry& e : *block.entries()) {
            const MatVal::Place place = block.place_of(e.index);
            set_entry(row + place.row, col + place.col, e.value);
        }
    }
}

bool MatBuilder::has_imaginary_part(const MatVal& block)
{
    for (std::size_t j = 0; j < block.Cols(); ++j)
        for (std::size_t i = 0; i < block.Rows(); ++i)
            if (block.imag(i, j) != 0.0)
                return true;
    return false;
}

void MatBuilder::note_block_unit(const MatVal& block, const Dim& unit)
{
    // An array of texts alone says nothing about units.
    if (block.UniformDimension() != Dim::string_dim && !block.is_empty())
        note_unit(unit);
}

void MatBuilder::set_column_units(std::size_t place, const MatVal& block, std::size_t j)
{
    const Dim* const unit = block.number_unit();
    if (unit && !m_each)
        return;
    for (std::size_t i = 0; i < block.Rows(); ++i) {
        if (block.entry(i, j))
            continue;
        const Dim& own = block.unit(i, j);
        note_unit(own);
        if (m_each)
            (*m_each)[place + i] = own;
    }
}

Handle MatBuilder::finish()
{
    if (!m_sorted)
        std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) { return a.index < b.index; });
    MatVal::Parts parts{.rows = m_rows,
                        .cols = m_cols,
                        .real = std::move(m_real),
                        .imaginary = std::move(m_imaginary),
                        .units = m_each ? Units(std::move(m_each)) : Units(m_first_unit),
                        .entries = nullptr};
    if (!m_entries.empty())
        parts.entries = std::make_shared<const EntryTable>(std::move(m_entries));
    return MatVal::make(std::move(parts));
}

} // namespace Qud
