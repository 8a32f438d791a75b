#pragma once

#include "bailuxhost/dim.hpp"
#include "efiutl/api.hpp"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace Qud {

class Value;
class DimVal;
class NumVal;
class MatVal;
class StrVal;
class FunVal;

/// How values are held and handed around: shared, counted, never written to. A null handle is "no value"
/// (an argument that was not given).
using Handle = std::shared_ptr<const Value>;

enum class Kind : std::uint8_t { number, matrix, text, function };

/// A value of the worksheet. Immutable once built, so threads share it freely.
class BAILUXSKO_API Value {
public:
    virtual ~Value();
    Value(const Value&) = delete;
    Value& operator=(const Value&) = delete;

    Kind kind() const noexcept { return m_kind; }

    /// The text that this value stands for, or null.
    virtual const std::string* get_IsString() const noexcept { return nullptr; }

protected:
    explicit Value(Kind kind) noexcept : m_kind(kind) {}

private:
    Kind m_kind;
};

/// A value that carries a unit: a number or a matrix.
class BAILUXSKO_API DimVal : public Value {
public:
    /// The unit; of a matrix the uniform one, or one of the markers of Dim.
    const Dim m_dim;

    /// The same value with another unit; every number of a matrix gets it. A marker leaves the units as they are.
    static Handle dv(Handle value, const Dim& unit);

    /// The whole number that this is (real, finite, whole in SI; the unit is not looked at), or nothing. Matrices are
    /// none.
    std::optional<double> isInt() const noexcept;

    /// The real part of a number without imaginary part. @throws message (index) otherwise, absent value included
    static double asReal(const Handle& value, const char* message, int index);

    /// A matrix of plain real scalars of one unit without an imaginary array. @throws "must be real matrix" (index)
    static const MatVal& asRealMatrix(const Handle& value, int index);

protected:
    DimVal(Kind kind, const Dim& dim) noexcept : Value(kind), m_dim(dim) {}
};

/// A number, complex in general: an imaginary part of 0.0 (of either sign) makes it real.
class BAILUXSKO_API NumVal final : public DimVal {
public:
    NumVal(double re, double im, const Dim& dim = Dim::identity) noexcept
        : DimVal(Kind::number, dim), m_re(re), m_im(im)
    {
    }

    static Handle make(double re, double im = 0.0, const Dim& dim = Dim::identity)
    {
        return std::make_shared<const NumVal>(re, im, dim);
    }

    double re() const noexcept { return m_re; }
    double im() const noexcept { return m_im; }
    bool is_real() const noexcept { return m_im == 0.0; }
    /// Real, finite and whole; the unit is not looked at.
    bool get_IsInt() const noexcept;

private:
    double m_re;
    double m_im;
};

/// A text in UTF-8.
class BAILUXSKO_API StrVal final : public Value {
public:
    explicit StrVal(std::string text) : Value(Kind::text), m_text(std::move(text)) {}

    static Handle make(std::string text) { return std::make_shared<const StrVal>(std::move(text)); }

    const std::string& text() const noexcept { return m_text; }
    const std::string* get_IsString() const noexcept override { return &m_text; }

private:
    std::string m_text;
};

/// A host function as a value: users' functions and functions handed by name.
class BAILUXSKO_API FunVal final : public Value {
public:
    using Operation = std::function<Handle(std::span<const Handle>)>;
    static constexpr std::size_t any_count = ~std::size_t{0};
    /// Functions that hold one another; calls and the end of their lives go through all of them on the stack.
    static constexpr std::size_t max_levels = 1000;

    FunVal(std::string name, std::size_t least, std::size_t most, Operation call, std::size_t levels = 1)
        : Value(Kind::function), m_name(std::move(name)), m_least(least), m_most(most), m_levels(levels),
          m_call(std::move(call))
    {
    }

    const std::string& name() const noexcept { return m_name; }
    std::size_t least() const noexcept { return m_least; }   ///< fewest arguments
    std::size_t most() const noexcept { return m_most; }     ///< most arguments, or any_count
    std::size_t levels() const noexcept { return m_levels; } ///< 1 for a function that holds no other
    bool takes(std::size_t count) const noexcept { return m_least <= count && count <= m_most; }
    Handle call(std::span<const Handle> arguments) const { return m_call(arguments); }

    /// The function behind a value, callable with `count` arguments.
    /// @throws "must be a function of 2 variables" (index) when it is none; count is 2 everywhere so far
    static const FunVal& asFunctionN(const Handle& value, std::size_t count, int index);

private:
    std::string m_name;
    std::size_t m_least;
    std::size_t m_most;
    std::size_t m_levels;
    Operation m_call;
};

/// The value as one of its kinds, or null (also for a null handle).
inline const NumVal* as_number(const Handle& value) noexcept
{
    return value && value->kind() == Kind::number ? static_cast<const NumVal*>(value.get()) : nullptr;
}
inline const FunVal* as_function(const Handle& value) noexcept
{
    return value && value->kind() == Kind::function ? static_cast<const FunVal*>(value.get()) : nullptr;
}
inline const StrVal* as_text(const Handle& value) noexcept
{
    return value && value->kind() == Kind::text ? static_cast<const StrVal*>(value.get()) : nullptr;
}
/// Numbers and matrices.
inline const DimVal* as_dimensioned(const Handle& value) noexcept
{
    return value && (value->kind() == Kind::number || value->kind() == Kind::matrix)
               ? static_cast<const DimVal*>(value.get())
               : nullptr;
}
} // namespace Qud
