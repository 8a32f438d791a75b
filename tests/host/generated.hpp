#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/matdim.hpp"
#include "bailuxhost/matval.hpp"

#include <array>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>

namespace Qud {

inline std::ostream& operator<<(std::ostream& out, const Dim& u)
{
    return out << (u.is_marker() ? "<marker>" : "[" + u.text() + "]");
}

} // namespace Qud

namespace gen {

/// A unit whose exponents are whole numbers of 60000ths between -limit and limit.
inline rc::Gen<Qud::Dim> unit(std::int32_t limit = 1'000'000)
{
    return rc::gen::map(rc::gen::container<std::array<std::int32_t, Qud::Dim::base_count>>(
                            rc::gen::inRange<std::int32_t>(-limit, limit + 1)),
                        [](const std::array<std::int32_t, Qud::Dim::base_count>& e) { return Qud::Dim(e); });
}

/// One of the units none, m, s, m*s and m^-1: so few that two of them often agree.
inline rc::Gen<Qud::Dim> plain_unit()
{
    using Qud::Dim;
    const Dim m{Dim::Base::length};
    const Dim s{Dim::Base::time};
    return rc::gen::elementOf(std::vector<Dim>{Dim::identity, m, s, Dim::Mult(m, s), Dim::Div(Dim::identity, m)});
}

inline rc::Gen<std::vector<Qud::Dim>> plain_units(std::size_t count)
{
    return rc::gen::container<std::vector<Qud::Dim>>(count, plain_unit());
}

inline rc::Gen<Qud::MatDim> pattern(std::size_t rows, std::size_t cols)
{
    return rc::gen::construct<Qud::MatDim>(plain_units(rows), plain_units(cols));
}

/// A square pattern with column k times row k the same for all k.
inline rc::Gen<Qud::MatDim> self_multiplicable(std::size_t n)
{
    return rc::gen::map(rc::gen::pair(plain_units(n), plain_unit()), [](const auto& drawn) {
        std::vector<Qud::Dim> cols;
        for (const Qud::Dim& row : drawn.first)
            cols.push_back(Qud::Dim::Div(drawn.second, row));
        return Qud::MatDim(drawn.first, cols);
    });
}

} // namespace gen

namespace host {

/// A matrix of ones with the given units, listed row by row.
inline Qud::Handle matrix_of_units(std::size_t rows, std::size_t cols, const std::vector<Qud::Dim>& units)
{
    Qud::MatBuilder builder(static_cast<std::uint32_t>(rows), static_cast<std::uint32_t>(cols));
    for (std::size_t i = 0; i < rows; ++i)
        for (std::size_t j = 0; j < cols; ++j)
            builder.set_number(i, j, 1.0, 0.0, units[i * cols + j]);
    return builder.finish();
}

inline std::vector<Qud::Dim> units_of(const Qud::MatDim& pattern)
{
    std::vector<Qud::Dim> units;
    for (std::size_t i = 0; i < pattern.rows().size(); ++i)
        for (std::size_t j = 0; j < pattern.cols().size(); ++j)
            units.push_back(pattern.at(i, j));
    return units;
}

inline const Qud::MatVal& as_matrix(const Qud::Handle& value)
{
    return *Qud::matrix_of(value);
}

} // namespace host
