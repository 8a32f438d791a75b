#include "bailuxhost/matdim.hpp"

#include <algorithm>
#include <cmath>

namespace Qud {

namespace {

/// Whether unit = row * col / corner; exponents are compared in 64 bits, so that nothing is out of range here.
bool factors(const Dim& unit, const Dim& row, const Dim& col, const Dim& corner)
{
    for (std::size_t b = 0; b < Dim::base_count; ++b) {
        const std::int64_t left = std::int64_t{unit.exponents()[b]} + corner.exponents()[b];
        const std::int64_t right = std::int64_t{row.exponents()[b]} + col.exponents()[b];
        if (left != right)
            return false;
    }
    return true;
}

std::vector<Dim> inverted(const std::vector<Dim>& units)
{
    std::vector<Dim> result;
    result.reserve(units.size());
    for (const Dim& u : units)
        result.push_back(Dim::Div(Dim::identity, u));
    return result;
}

std::vector<Dim> times(std::vector<Dim> units, const Dim& factor)
{
    if (factor != Dim::identity)
        for (Dim& u : units)
            u = Dim::Mult(u, factor);
    return units;
}

/// The unit that all cols[k] * rows[k] share (no unit where there is no k), or nothing.
std::optional<Dim> inner_unit(const std::vector<Dim>& cols, const std::vector<Dim>& rows)
{
    if (cols.size() != rows.size())
        return std::nullopt;
    if (cols.empty())
        return Dim::identity;
    const Dim first = Dim::Mult(cols[0], rows[0]);
    for (std::size_t k = 1; k < cols.size(); ++k)
        if (Dim::Mult(cols[k], rows[k]) != first)
            return std::nullopt;
    return first;
}

} // namespace

std::optional<PatternBreak> first_break(const MatVal& M)
{
    if (M.has_entries()) {
        const MatVal::Place place = M.place_of(M.entries()->front().index);
        return PatternBreak{.row = place.row, .col = place.col, .is_entry = true, .found = {}, .needed = {}};
    }
    if (M.number_unit())
        return std::nullopt;
    const Dim& corner = M.unit(0, 0);
    for (std::size_t j = 1; j < M.Cols(); ++j)
        for (std::size_t i = 1; i < M.Rows(); ++i)
            if (!factors(M.unit(i, j), M.unit(i, 0), M.unit(0, j), corner))
                return PatternBreak{.row = i,
                                    .col = j,
                                    .is_entry = false,
                                    .found = M.unit(i, j),
                                    .needed = Dim::Mult(M.unit(i, 0), Dim::Div(M.unit(0, j), corner))};
    return std::nullopt;
}

std::string PatternBreak::text() const
{
    std::string text = "row " + std::to_string(row + 1) + ", column " + std::to_string(col + 1);
    if (is_entry)
        return text + " is no number";
    text += found == Dim::identity ? " has no unit" : " has unit " + found.text();
    return text + (needed == Dim::identity ? " where none is needed" : " where " + needed.text() + " is needed");
}

std::optional<MatDim> MatDim::make(const MatVal& M)
{
    if (first_break(M))
        return std::nullopt;
    if (const Dim* const unit = M.number_unit())
        return MatDim(std::vector<Dim>(M.Rows(), *unit), std::vector<Dim>(M.Cols()));
    std::vector<Dim> rows;
    rows.reserve(M.Rows());
    for (std::size_t i = 0; i < M.Rows(); ++i)
        rows.push_back(M.unit(i, 0));
    std::vector<Dim> cols;
    cols.reserve(M.Cols());
    for (std::size_t j = 0; j < M.Cols(); ++j)
        cols.push_back(Dim::Div(M.unit(0, j), rows[0]));
    return MatDim(std::move(rows), std::move(cols));
}

std::optional<MatDim> MatDim::Pwr(const MatDim& pattern, double exponent)
{
    if (exponent == 1.0)
        return pattern;
    if (exponent == -1.0)
        return MatDim(inverted(pattern.m_cols), inverted(pattern.m_rows));
    if (!std::isfinite(exponent) || std::trunc(exponent) != exponent)
        return std::nullopt;
    const std::optional<Dim> inner = inner_unit(pattern.m_cols, pattern.m_rows);
    if (!inner)
        return std::nullopt;
    return MatDim(times(pattern.m_rows, Dim::Pwr(*inner, exponent - 1.0)), pattern.m_cols);
}

std::optional<MatDim> MatDim::MMult(const MatDim& a, const MatDim& b)
{
    const std::optional<Dim> inner = inner_unit(a.m_cols, b.m_rows);
    if (!inner)
        return std::nullopt;
    return MatDim(times(a.m_rows, *inner), b.m_cols);
}

std::optional<Dim> MatDim::DMult(const MatDim& a, const MatDim& b)
{
    if (b.m_cols.size() != 1)
        return std::nullopt;
    if (a.m_rows.size() == 1 && a.m_cols.size() == b.m_rows.size()) {
        const std::optional<MatDim> product = MMult(a, b);
        return product ? std::optional<Dim>(product->at(0, 0)) : std::nullopt;
    }
    if (a.m_cols.size() != 1)
        return std::nullopt;
    const std::optional<Dim> inner = inner_unit(a.m_rows, b.m_rows);
    if (!inner)
        return std::nullopt;
    return Dim::Mult(*inner, Dim::Mult(a.m_cols[0], b.m_cols[0]));
}

std::optional<Dim> MatDim::Det(const MatDim& pattern, std::size_t n)
{
    if (pattern.m_rows.size() != n || pattern.m_cols.size() != n)
        return std::nullopt;
    Dim product;
    for (std::size_t k = 0; k < n; ++k)
        product = Dim::Mult(product, pattern.at(k, k));
    return product;
}

} // namespace Qud
