#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/block_pool.hpp"
#include "efiutl/records.hpp"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace Qud {

/// The host's matrix record has the layout of the native one.
using mat_val = ::aMatrix;

/// A shared array of doubles that nobody writes to any more.
using SharedNumbers = std::shared_ptr<const double[]>;
/// The same while its maker fills it.
using FreshNumbers = std::shared_ptr<double[]>;

/// Room for `count` doubles from the kept blocks, content undefined. @throws std::bad_alloc
BAILUXSKO_API FreshNumbers fresh_numbers(std::size_t count);
/// The same, zero-filled.
BAILUXSKO_API FreshNumbers zero_numbers(std::size_t count);
/// A packed copy of rows by cols numbers, of which column j stands at source + j * anr.
BAILUXSKO_API FreshNumbers copied_numbers(const double* source, std::size_t rows, std::size_t cols, std::size_t anr);

/// rows * cols, or std::bad_alloc where that is more than any memory holds.
inline std::size_t element_count(std::size_t rows, std::size_t cols)
{
    constexpr std::size_t largest = std::numeric_limits<std::ptrdiff_t>::max() / sizeof(double);
    if (cols != 0 && rows > largest / cols)
        throw std::bad_alloc();
    return rows * cols;
}

/// A text or nested array inside a matrix, under its storage index (m_offset + column * Anr + row).
struct Entry {
    std::size_t index;
    Handle value;
};

/// Entries in ascending storage index.
using EntryTable = std::vector<Entry>;

/// The units of a matrix's numbers: one for all, or one for each element, column by column.
struct Units {
    Units() = default;
    Units(const Dim& unit) : one(unit) {} // NOLINT(google-explicit-constructor): a unit is the usual case
    explicit Units(std::shared_ptr<const std::vector<Dim>> units) : each(std::move(units)) {}

    Dim one;
    std::shared_ptr<const std::vector<Dim>> each; ///< null when all have `one`
};

/// A matrix: real parts, maybe imaginary parts, units, and a table of the texts and nested arrays among its elements,
/// whose number slots hold the pointer NaN. Arrays are shared: a block of a matrix is a view (m_offset, Anr larger
/// than Rows) and copies nothing. Only the few numbers of a small copy stand in the value itself, which saves an
/// allocation; what is made of that value has copies of its own.
class BAILUXSKO_API MatVal : public DimVal {
public:
    struct Parts {
        std::uint32_t rows = 0;
        std::uint32_t cols = 0;
        std::uint32_t anr = 0; ///< 0 stands for rows
        std::size_t offset = 0;
        SharedNumbers real;
        SharedNumbers imaginary; ///< null for a real matrix
        Units units;
        std::shared_ptr<const EntryTable> entries; ///< null for none
    };

private:
    /// Shuts constructors that std::make_shared has to reach.
    struct Key {
        explicit Key() = default;
    };

public:
    /// Takes the parts over; units that turn out to be the same for every number are held as one.
    explicit MatVal(Parts parts);
    static Handle make(Parts parts) { return std::make_shared<const MatVal>(std::move(parts)); }
    /// A fresh packed matrix of plain scalars of one unit; imaginary may be null.
    static Handle make(std::uint32_t rows, std::uint32_t cols, SharedNumbers real, SharedNumbers imaginary = nullptr,
                       const Dim& unit = Dim::identity);
    /// The same with copies of numbers that stand elsewhere, column j at real + j * anr; imaginary may be null.
    /// Up to most_held_numbers are held by the value itself.
    static Handle copy_of(std::uint32_t rows, std::uint32_t cols, const double* real, const double* imaginary,
                          std::size_t anr, const Dim& unit = Dim::identity);
    static constexpr std::size_t most_held_numbers = 100;
    /// The 0-by-0 matrix, real, without unit.
    static Handle empty();
    /// For `make` and `copy_of`: null owners stand for numbers that the value holds itself.
    MatVal(Key, std::uint32_t rows, std::uint32_t cols, const Dim& unit, const double* real, const double* imaginary,
           SharedNumbers real_owner, SharedNumbers imaginary_owner) noexcept;

    const mat_val Data;         ///< the record; workers get a filled copy of it (see `view`), never itself
    const double* const m_rarr; ///< real parts of the whole allocation, for as long as this value lives
    const double* const m_iarr; ///< imaginary parts, or null
    const std::size_t m_offset; ///< where element (0, 0) stands in both arrays

    std::uint32_t Rows() const noexcept { return Data.m_rows; }
    std::uint32_t Cols() const noexcept { return Data.m_cols; }
    std::uint32_t Anr() const noexcept { return Data.m_anr; }
    std::size_t count() const noexcept { return std::size_t{Rows()} * Cols(); }
    bool is_empty() const noexcept { return Rows() == 0 || Cols() == 0; }
    bool is_square() const noexcept { return Rows() == Cols(); }
    bool HasImag() const noexcept { return m_iarr != nullptr; }
    bool get_HasImag() const noexcept { return HasImag(); }

    /// All elements are numbers of one unit.
    bool IsUniformScalar() const noexcept { return m_entries == nullptr && m_units.each == nullptr; }
    bool get_IsUniformScalar() const noexcept { return IsUniformScalar(); }
    /// The unit of every element, or a marker: string_dim when all are texts or arrays, mixed_matrix_dim otherwise.
    const Dim& UniformDimension() const noexcept { return m_dim; }
    /// Whether some element is a text or a nested array.
    bool has_entries() const noexcept { return m_entries != nullptr; }
    /// The one unit of all numbers of the matrix (no unit when there is no number), or null when they differ.
    const Dim* number_unit() const noexcept { return m_units.each ? nullptr : &m_units.one; }

    /// Where element (i, j) stands in the arrays.
    std::size_t storage_index(std::size_t i, std::size_t j) const noexcept { return m_offset + j * Anr() + i; }
    double real(std::size_t i, std::size_t j) const noexcept { return m_rarr[storage_index(i, j)]; }
    /// The real part at (i, j) in SI, also where the elements have different units.
    double get_real_mixed(std::size_t i, std::size_t j) const noexcept { return real(i, j); }
    double imag(std::size_t i, std::size_t j) const noexcept { return m_iarr ? m_iarr[storage_index(i, j)] : 0.0; }
    /// The text or nested array at (i, j), or null for a number.
    const Handle* entry(std::size_t i, std::size_t j) const noexcept;
    /// The unit of the number at (i, j); for a text or nested array it means nothing (ask `entry` first).
    const Dim& unit(std::size_t i, std::size_t j) const noexcept
    {
        return m_units.each ? (*m_units.each)[j * Rows() + i] : m_units.one;
    }
    /// Element (i, j) as a value of its own: a number with its unit, a text or a nested array.
    Handle element(std::size_t i, std::size_t j) const;

    const Units& units() const noexcept { return m_units; }
    /// The table of texts and nested arrays, in ascending storage index; null for none.
    const std::shared_ptr<const EntryTable>& entries() const noexcept { return m_entries; }

    /// How deep arrays are nested in one another here at most, so that whoever enters them may recurse.
    static constexpr std::size_t max_levels = 1000;
    /// How many elements nested arrays may hold altogether, each counted as often as it is reached: the same array
    /// nested twice, and that nested twice again, soon is more than anybody can walk through.
    static constexpr std::size_t max_nested_count = std::size_t{1} << 30;

    /// The record that a worker gets: pointers to element (0, 0) of both arrays. Nothing is copied; the worker reads
    /// only.
    mat_val view() const noexcept;

    /// Rows first_row..last_row and columns first_col..last_col, inclusive and within the matrix: a view.
    Handle SubMatrix(std::size_t first_row, std::size_t last_row, std::size_t first_col, std::size_t last_col) const;
    /// The transpose: units and entries go with their elements (nested arrays themselves are not transposed).
    Handle Transpose() const;
    /// The same values in a matrix of its own with packed arrays (Anr equal to Rows, offset 0).
    Handle copy() const;
    /// The matrix itself when its arrays are packed, else its copy.
    static Handle Canonicalize(const Handle& matrix);
    /// The same numbers with no units; entries stay.
    Handle StripDimension() const;
    /// Raises unless this is one column of real numbers, of whatever units, without an imaginary array.
    /// @throws "must be real vector" (index)
    void assertRealVector(int index) const;
    /// The packed real parts, column-major with leading dimension Rows.
    void PackReal(double* destination) const;
    /// This matrix of plain numbers with the units of a pattern: element (i, j) gets row i times column j.
    Handle ApplyLinearDimension(const class MatDim& pattern) const;

    /// The same elements with other units; arrays are shared.
    Handle with_units(Units units) const;

    /// Row and column of an entry's storage index.
    struct Place {
        std::size_t row;
        std::size_t col;
    };
    Place place_of(std::size_t index) const noexcept
    {
        return {.row = (index - m_offset) % Anr(), .col = (index - m_offset) / Anr()};
    }

private:
    template <std::size_t room>
    class WithNumbers;

    struct Normalised {};
    MatVal(Normalised, Parts parts);
    /// The parts of this value for another one; numbers that stand in this value itself are copied.
    Parts parts() const;

    /// What is nested in a matrix: levels of arrays, itself included, and elements.
    struct Extent {
        std::size_t levels = 1;
        std::size_t nested_count = 0;
    };
    static Extent extent_of(const Parts& parts);

    const SharedNumbers m_real_owner;      ///< keeps m_rarr; null when the numbers stand in this value itself
    const SharedNumbers m_imaginary_owner; ///< keeps m_iarr
    const Extent m_extent;
    const Units m_units;
    const std::shared_ptr<const EntryTable> m_entries;
};

/// The matrix behind a handle, or null.
inline const MatVal* matrix_of(const Handle& value) noexcept
{
    return value && value->kind() == Kind::matrix ? static_cast<const MatVal*>(value.get()) : nullptr;
}

/// Builds a matrix element by element or block by block, in any order; every element has to be set (an element
/// that was left out holds 0 with the unit of the first number).
/// An imaginary array is made at the first imaginary part that is not zero, or when asked for.
class BAILUXSKO_API MatBuilder {
public:
    /// @throws std::bad_alloc
    MatBuilder(std::uint32_t rows, std::uint32_t cols);
    MatBuilder(const MatBuilder&) = delete;
    MatBuilder& operator=(const MatBuilder&) = delete;
    ~MatBuilder();

    /// Makes the imaginary array even if every imaginary part is zero.
    void want_imaginary();
    void set_number(std::size_t i, std::size_t j, double re, double im, const Dim& unit);
    /// A number, text or matrix (nested). @throws "must be string scalar or array" (index) for any other value
    void set(std::size_t i, std::size_t j, const Handle& value, int index = -1);
    /// A whole matrix with its upper left corner at (row, col); elements, units and entries are taken over.
    void set_block(std::size_t row, std::size_t col, const MatVal& block);
    /// The matrix; the builder is spent.
    Handle finish();

private:
    void note_unit(const Dim& unit);
    void note_block_unit(const MatVal& block, const Dim& unit);
    void set_entry(std::size_t i, std::size_t j, const Handle& value);
    void set_column_units(std::size_t place, const MatVal& block, std::size_t j);
    static bool has_imaginary_part(const MatVal& block);

    std::uint32_t m_rows;
    std::uint32_t m_cols;
    FreshNumbers m_real;
    FreshNumbers m_imaginary;
    Dim m_first_unit;
    bool m_has_unit = false;
    std::shared_ptr<std::vector<Dim>> m_each;
    EntryTable m_entries;
    bool m_sorted = true;
};

/// A column that grows element by element, then takes a shape.
class BAILUXSKO_API GrowableColumn {
public:
    void reserve(std::size_t count);
    /// Element (i, j) of a matrix, whatever it is.
    void PushRaw(const MatVal& source, std::size_t i, std::size_t j);
    std::size_t size() const noexcept { return m_real.size(); }
    /// The elements as rows by cols, filled column by column; rows * cols is size(). The column is spent.
    Handle reshape(std::uint32_t rows, std::uint32_t cols);

private:
    void push_parts(double re, double im);

    std::vector<double> m_real;
    std::vector<double> m_imaginary; ///< as long as m_real once an imaginary part was not zero, else empty
    std::vector<Dim> m_units;        ///< empty while all pushed numbers have m_first_unit
    Dim m_first_unit;
    bool m_has_unit = false;
    EntryTable m_entries;
};

} // namespace Qud
