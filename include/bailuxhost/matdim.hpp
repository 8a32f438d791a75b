#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Qud {

/// The unit pattern of a matrix for linear algebra: element (i, j) has unit row i times column j. The two vectors are
/// unique but for a unit that one may give to the other; no operation depends on how it is shared out.
/// Every operation raises "unit power not representable" (-1) where an exponent of its result leaves 32 bits.
class BAILUXSKO_API MatDim {
public:
    MatDim(std::vector<Dim> rows, std::vector<Dim> cols) : m_rows(std::move(rows)), m_cols(std::move(cols)) {}

    /// The pattern of M, or nothing when its units do not factor so; texts and nested arrays never do. One unit for all
    /// elements is a pattern too, and so is a matrix without elements.
    static std::optional<MatDim> make(const MatVal& M);
    /// The pattern of M^n for a whole n. Power 1 is the pattern itself; power -1 swaps and inverts: element (i, j) of
    /// the inverse has the unit of 1 / element (j, i). For any other n, 0 included, the matrix must be square and
    /// self-multiplicable: t = column k times row k is one unit for all k. Then M^n has row i times t^(n-1) times
    /// column j, and M^0 * M has the pattern of M. Nothing otherwise, and for an exponent that is not whole.
    static std::optional<MatDim> Pwr(const MatDim& pattern, double exponent);
    /// The pattern of the product, or nothing: column k of a times row k of b must be one unit for every k.
    static std::optional<MatDim> MMult(const MatDim& a, const MatDim& b);
    /// The unit of a product that is a number: row times column, or two columns (then all a_k * b_k agree). Nothing
    /// otherwise.
    static std::optional<Dim> DMult(const MatDim& a, const MatDim& b);
    /// The unit of the determinant of the n-by-n matrix: the product over the diagonal. Nothing for another shape.
    static std::optional<Dim> Det(const MatDim& pattern, std::size_t n);

    const std::vector<Dim>& rows() const noexcept { return m_rows; }
    const std::vector<Dim>& cols() const noexcept { return m_cols; }
    Dim at(std::size_t i, std::size_t j) const { return Dim::Mult(m_rows[i], m_cols[j]); }

private:
    std::vector<Dim> m_rows;
    std::vector<Dim> m_cols;
};

/// Why a matrix has no unit pattern: the first element, column by column, that is no number or has another unit than
/// the first row and the first column ask for.
struct BAILUXSKO_API PatternBreak {
    std::size_t row; ///< counted from 0
    std::size_t col;
    bool is_entry; ///< a text or nested array stands there; the units mean nothing then
    Dim found;
    Dim needed;

    /// For people, counted from 1: "row 2, column 3 has unit s where m is needed".
    std::string text() const;
};

/// The break in the pattern of M, or nothing exactly when MatDim::make has an answer.
BAILUXSKO_API std::optional<PatternBreak> first_break(const MatVal& M);

} // namespace Qud
