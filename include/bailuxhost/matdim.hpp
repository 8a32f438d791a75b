#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

#include <optional>
#include <vector>

namespace Qud {

/// The unit pattern of a matrix for linear algebra: element (i, j) has unit row i times column j.
class BAILUXSKO_API MatDim {
public:
    MatDim(std::vector<Dim> rows, std::vector<Dim> cols) : m_rows(std::move(rows)), m_cols(std::move(cols)) {}

    /// The pattern of M, or nothing when its units do not factor so; texts and nested arrays never do.
    static std::optional<MatDim> make(const MatVal& M);
    /// Power -1 swaps and inverts: the pattern of the inverse. Power n: the pattern of M^n, for which the matrix must
    /// be self-multiplicable (the inner units agree); nothing otherwise.
    static std::optional<MatDim> Pwr(const MatDim& pattern, double exponent);
    /// The pattern of the product, or nothing: column k of a times row k of b must be one unit for every k.
    static std::optional<MatDim> MMult(const MatDim& a, const MatDim& b);
    /// The unit of a product that is a number: row times column, or two columns (then all a_k * b_k agree).
    static std::optional<Dim> DMult(const MatDim& a, const MatDim& b);
    /// The unit of the determinant of the n-by-n matrix: the product over the diagonal.
    static std::optional<Dim> Det(const MatDim& pattern, std::size_t n);

    const std::vector<Dim>& rows() const noexcept { return m_rows; }
    const std::vector<Dim>& cols() const noexcept { return m_cols; }
    Dim at(std::size_t i, std::size_t j) const { return Dim::Mult(m_rows[i], m_cols[j]); }

private:
    std::vector<Dim> m_rows;
    std::vector<Dim> m_cols;
};

} // namespace Qud
