#pragma once

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/records.hpp"

#include <concepts>
#include <cstddef>
#include <string>

/// Operations on numbers, applied to every element of a matrix; nested arrays are entered, texts are refused. A result
/// carries an imaginary array exactly when some imaginary part is not zero, or when the operation wants one always.
namespace worksheet {

/// One operand: `unit` gives the result's unit or raises, `of` the number itself. `index` is the operand's.
template <class Op>
concept UnaryOperation = requires(const Op op, Qud::Dim unit, aComplex x)
{
    {
        op.unit(unit)
        } -> std::convertible_to<Qud::Dim>;
    {
        op.of(x)
        } -> std::same_as<aComplex>;
    {
        Op::always_imaginary
        } -> std::convertible_to<bool>;
};

template <class Op>
concept BinaryOperation = requires(const Op op, Qud::Dim unit, aComplex x)
{
    {
        op.unit(unit, unit)
        } -> std::convertible_to<Qud::Dim>;
    {
        op.of(x, x)
        } -> std::same_as<aComplex>;
    {
        Op::always_imaginary
        } -> std::convertible_to<bool>;
};

namespace detail {

/// Fills a matrix of plain scalars of one unit with element(i, j).
template <class Element>
Qud::Handle uniform_matrix(std::uint32_t rows, std::uint32_t cols, const Qud::Dim& unit, bool always_imaginary,
                           Element element)
{
    const std::size_t count = Qud::element_count(rows, cols);
    const Qud::FreshNumbers real = Qud::fresh_numbers(count);
    Qud::FreshNumbers imaginary = always_imaginary ? Qud::zero_numbers(count) : nullptr;
    std::size_t k = 0;
    for (std::size_t j = 0; j < cols; ++j) {
        for (std::size_t i = 0; i < rows; ++i, ++k) {
            const aComplex x = element(i, j);
            real[k] = x.m_re;
            if (imaginary == nullptr && x.m_im != 0.0)
                imaginary = Qud::zero_numbers(count);
            if (imaginary != nullptr)
                imaginary[k] = x.m_im;
        }
    }
    return Qud::MatVal::make(rows, cols, real, imaginary, unit);
}

/// The result of a matrix without elements: no unit is compared, and there is an imaginary array when one is wanted
/// always.
template <class Op>
Qud::Handle empty_result(const Op&, const Qud::MatVal& shape)
{
    return uniform_matrix(shape.Rows(), shape.Cols(), Qud::Dim::identity, Op::always_imaginary,
                          [](std::size_t, std::size_t) { return aComplex{}; });
}

inline aComplex number_at(const Qud::MatVal& M, std::size_t i, std::size_t j)
{
    return {M.real(i, j), M.imag(i, j)};
}

[[noreturn]] inline void refuse(int index)
{
    Evl::Run::AppException::Raise(msg::must_be_scalar_or_matrix, index);
}

inline bool is_number_or_matrix(const Qud::Handle& value)
{
    return value && (value->kind() == Qud::Kind::number || value->kind() == Qud::Kind::matrix);
}

} // namespace detail

/// @throws "must be a scalar or a matrix" (index) for texts and functions; what the operation raises
template <UnaryOperation Op>
Qud::Handle map(const Op& op, const Qud::Handle& value, int index)
{
    if (const Qud::NumVal* const x = Qud::as_number(value)) {
        const Qud::Dim unit = op.unit(x->m_dim);
        const aComplex y = op.of({x->re(), x->im()});
        return Qud::NumVal::make(y.m_re, y.m_im, unit);
    }
    const Qud::MatVal* const M = Qud::matrix_of(value);
    if (M == nullptr)
        detail::refuse(index);
    if (M->is_empty())
        return detail::empty_result(op, *M);
    if (M->IsUniformScalar())
        return detail::uniform_matrix(M->Rows(), M->Cols(), op.unit(M->m_dim), Op::always_imaginary,
                                      [&](std::size_t i, std::size_t j) { return op.of(detail::number_at(*M, i, j)); });

    Qud::MatBuilder result(M->Rows(), M->Cols());
    if (Op::always_imaginary)
        result.want_imaginary();
    for (std::size_t j = 0; j < M->Cols(); ++j)
        for (std::size_t i = 0; i < M->Rows(); ++i)
            result.set(i, j, map(op, M->element(i, j), index));
    return result.finish();
}

namespace detail {

/// The operand at (i, j): an element of a matrix, or the number that meets every element.
inline Qud::Handle operand_at(const Qud::Handle& value, const Qud::MatVal* M, std::size_t i, std::size_t j)
{
    return M != nullptr ? M->element(i, j) : value;
}

/// The error of element (i, j) says where that is. Of a place inside a nested array only what was found there is kept.
[[noreturn]] inline void raise_at(std::size_t i, std::size_t j, const Evl::Run::AppException& error)
{
    const std::string& found = error.detail();
    const std::size_t inner = found.rfind(": ");
    Evl::Run::AppException::Raise(error.message(), error.index(),
                                  "row " + std::to_string(i + 1) + ", column " + std::to_string(j + 1) + ": " +
                                      (inner == std::string::npos ? found : found.substr(inner + 2)));
}

} // namespace detail

/// Number with number, number with every element of a matrix, matrices of one shape element by element.
/// @throws "must be a scalar or a matrix" (1 or 2) for texts and functions, "array size mismatch" (-1); what the
///         operation raises
template <BinaryOperation Op>
Qud::Handle map(const Op& op, const Qud::Handle& a, const Qud::Handle& b)
{
    const Qud::NumVal* const x = Qud::as_number(a);
    const Qud::NumVal* const y = Qud::as_number(b);
    if (x != nullptr && y != nullptr) {
        const Qud::Dim unit = op.unit(x->m_dim, y->m_dim);
        const aComplex z = op.of({x->re(), x->im()}, {y->re(), y->im()});
        return Qud::NumVal::make(z.m_re, z.m_im, unit);
    }
    if (!detail::is_number_or_matrix(a))
        detail::refuse(1);
    if (!detail::is_number_or_matrix(b))
        detail::refuse(2);
    const Qud::MatVal* const A = Qud::matrix_of(a);
    const Qud::MatVal* const B = Qud::matrix_of(b);
    const Qud::MatVal& shape = A != nullptr ? *A : *B;
    if (A != nullptr && B != nullptr && (A->Rows() != B->Rows() || A->Cols() != B->Cols()))
        Evl::Run::AppException::Raise(msg::array_size_mismatch, -1);
    if (shape.is_empty())
        return detail::empty_result(op, shape);
    if ((A == nullptr || A->IsUniformScalar()) && (B == nullptr || B->IsUniformScalar())) {
        const Qud::Dim unit = op.unit(A != nullptr ? A->m_dim : x->m_dim, B != nullptr ? B->m_dim : y->m_dim);
        return detail::uniform_matrix(
            shape.Rows(), shape.Cols(), unit, Op::always_imaginary, [&](std::size_t i, std::size_t j) {
                return op.of(A != nullptr ? detail::number_at(*A, i, j) : aComplex{x->re(), x->im()},
                             B != nullptr ? detail::number_at(*B, i, j) : aComplex{y->re(), y->im()});
            });
    }
    Qud::MatBuilder result(shape.Rows(), shape.Cols());
    if (Op::always_imaginary)
        result.want_imaginary();
    for (std::size_t j = 0; j < shape.Cols(); ++j)
        for (std::size_t i = 0; i < shape.Rows(); ++i)
            try {
                result.set(i, j, map(op, detail::operand_at(a, A, i, j), detail::operand_at(b, B, i, j)));
            } catch (const Evl::Run::AppException& error) {
                if (error.detail().empty())
                    throw;
                detail::raise_at(i, j, error);
            }
    return result.finish();
}

} // namespace worksheet
