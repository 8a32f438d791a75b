#pragma once

#include "tests/host/generated.hpp"

#include <bit>
#include <cstdint>
#include <ostream>
#include <vector>

namespace host {

/// One element as it is seen from outside: the bits of a number and its unit, or which text or array stands there.
struct Cell {
    std::uint64_t re = 0;
    std::uint64_t im = 0;
    Qud::Dim unit{};
    const Qud::Value* entry = nullptr;

    bool operator==(const Cell&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const Cell& cell)
    {
        if (cell.entry)
            return out << "<entry>";
        return out << std::bit_cast<double>(cell.re) << " + " << std::bit_cast<double>(cell.im) << "i " << cell.unit;
    }
};

inline Cell number_cell(double re, double im = 0.0, const Qud::Dim& unit = Qud::Dim::identity)
{
    return {.re = std::bit_cast<std::uint64_t>(re), .im = std::bit_cast<std::uint64_t>(im), .unit = unit};
}

inline Cell cell(const Qud::MatVal& M, std::size_t i, std::size_t j)
{
    if (const Qud::Handle* const held = M.entry(i, j))
        return {.entry = held->get()};
    return number_cell(M.real(i, j), M.imag(i, j), M.unit(i, j));
}

/// All elements, row by row.
inline std::vector<Cell> cells(const Qud::Handle& value)
{
    const Qud::MatVal& M = as_matrix(value);
    std::vector<Cell> all;
    for (std::size_t i = 0; i < M.Rows(); ++i)
        for (std::size_t j = 0; j < M.Cols(); ++j)
            all.push_back(cell(M, i, j));
    return all;
}

/// Element (i, j) is 10 i + j, and its negative the imaginary part where there is one.
inline Qud::Handle numbered(std::uint32_t rows, std::uint32_t cols, const Qud::Dim& unit = Qud::Dim::identity,
                            bool complex = false)
{
    Qud::FreshNumbers re = Qud::fresh_numbers(std::size_t{rows} * cols);
    Qud::FreshNumbers im = complex ? Qud::fresh_numbers(std::size_t{rows} * cols) : nullptr;
    for (std::size_t j = 0; j < cols; ++j) {
        for (std::size_t i = 0; i < rows; ++i) {
            re[j * rows + i] = static_cast<double>(10 * i + j);
            if (complex)
                im[j * rows + i] = -re[j * rows + i];
        }
    }
    return Qud::MatVal::make(rows, cols, std::move(re), std::move(im), unit);
}

} // namespace host

namespace gen {

/// A matrix of up to 6 by 6: real or complex, of one unit or several, with texts and nested arrays or without.
inline Qud::Handle matrix(std::size_t least = 1)
{
    const auto flag = [] { return *rc::gen::arbitrary<bool>(); };
    const std::size_t rows = *rc::gen::inRange<std::size_t>(least, 7);
    const std::size_t cols = *rc::gen::inRange<std::size_t>(least, 7);
    const bool complex = flag();
    const bool one_unit = flag();
    const bool entries = flag();
    const Qud::Dim common = *plain_unit();
    Qud::MatBuilder builder(static_cast<std::uint32_t>(rows), static_cast<std::uint32_t>(cols));
    for (std::size_t i = 0; i < rows; ++i) {
        for (std::size_t j = 0; j < cols; ++j) {
            if (entries && *rc::gen::inRange(0, 3) == 0) {
                builder.set(i, j, flag() ? Qud::StrVal::make("text") : host::numbered(2, 1));
                continue;
            }
            const double re = *rc::gen::inRange(-9, 10);
            const double im = complex ? *rc::gen::inRange(-9, 10) : 0.0;
            builder.set_number(i, j, re, im, one_unit ? common : *plain_unit());
        }
    }
    return builder.finish();
}

} // namespace gen
