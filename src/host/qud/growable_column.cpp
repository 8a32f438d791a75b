#include "bailuxhost/matval.hpp"

#include <algorithm>

namespace Qud {

void GrowableColumn::reserve(std::size_t count)
{
    m_real.reserve(count);
}

void GrowableColumn::PushRaw(const MatVal& source, std::size_t i, std::size_t j)
{
    const std::size_t place = m_real.size();
    if (const Handle* const held = source.entry(i, j)) {
        m_entries.push_back({.index = place, .value = *held});
        push_parts(Efi::ptr_nan(), 0.0);
        if (!m_units.empty())
            m_units.push_back(Dim::identity);
        return;
    }
    push_parts(source.real(i, j), source.imag(i, j));
    const Dim& unit = source.unit(i, j);
    if (!m_has_unit) {
        m_has_unit = true;
        m_first_unit = unit;
    }
    if (m_units.empty() && unit != m_first_unit)
        m_units.assign(place, m_first_unit);
    if (!m_units.empty())
        m_units.push_back(unit);
}

void GrowableColumn::push_parts(double re, double im)
{
    if (m_imaginary.empty() && im != 0.0)
        m_imaginary.assign(m_real.size(), 0.0);
    m_real.push_back(re);
    if (!m_imaginary.empty() || im != 0.0)
        m_imaginary.push_back(im);
}

Handle GrowableColumn::reshape(std::uint32_t rows, std::uint32_t cols)
{
    const auto shared = [](const std::vector<double>& source) -> SharedNumbers {
        FreshNumbers numbers = fresh_numbers(source.size());
        std::copy(source.begin(), source.end(), numbers.get());
        return numbers;
    };
    MatVal::Parts parts{.rows = rows,
                        .cols = cols,
                        .real = shared(m_real),
                        .imaginary = m_imaginary.empty() ? nullptr : shared(m_imaginary),
                        .units = Units(m_first_unit),
                        .entries = nullptr};
    if (!m_units.empty())
        parts.units = Units(std::make_shared<const std::vector<Dim>>(std::move(m_units)));
    if (!m_entries.empty())
        parts.entries = std::make_shared<const EntryTable>(std::move(m_entries));
    return MatVal::make(std::move(parts));
}

} // namespace Qud
