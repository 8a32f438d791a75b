#pragma once

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/algebra/element_loops.hpp"
#include "bailuxsko/algebra/operations.hpp"
#include "efiutl/messages.hpp"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// Operations on values: number with number, every element of a matrix with a number, matrices element by element.
/// An array among the elements is entered; a text is refused with the index of the argument that holds it.
namespace Efi {

[[noreturn]] inline void refuse_text(int index)
{
    Evl::Run::AppException::Raise(msg::must_be_scalar_or_matrix, index);
}

/// The operation on two numbers; real ones stay on the real line where the operation does.
template <BinaryOperation Op>
aComplex apply_to_numbers(const Qud::NumVal& a, const Qud::NumVal& b)
{
    if constexpr (RealOperation<Op>)
        if (a.is_real() && b.is_real())
            return {.m_re = Op::apply(a.re(), b.re()), .m_im = 0.0};
    return Op::apply(aComplex{.m_re = a.re(), .m_im = a.im()}, aComplex{.m_re = b.re(), .m_im = b.im()});
}

/// Number with number. The number's own error comes before the unit's.
template <BinaryOperation Op>
requires UnitOperation<Op> Qud::Handle numNN(const Qud::NumVal& a, const Qud::NumVal& b)
{
    const aComplex result = apply_to_numbers<Op>(a, b);
    return Qud::NumVal::make(result.m_re, result.m_im, Op::unit(a.m_dim, b.m_dim));
}

/// The units of a result whose element (i, j) has unit_at(M.unit(i, j), i, j): asked once while the unit stays.
template <class UnitOf>
Qud::Units mapped_units(const Qud::MatVal& M, UnitOf unit_of)
{
    if (const Qud::Dim* const unit = M.number_unit())
        return unit_of(*unit);
    auto units = std::make_shared<std::vector<Qud::Dim>>();
    units->reserve(M.count());
    const Qud::Dim* last = nullptr;
    for (const Qud::Dim& unit : *M.units().each) {
        if (last && unit == *last)
            units->push_back(Qud::Dim(units->back()));
        else
            units->push_back(unit_of(unit));
        last = &unit;
    }
    return Qud::Units(std::move(units));
}

/// The same for two matrices of one shape.
template <class UnitOf>
Qud::Units mapped_units(const Qud::MatVal& A, const Qud::MatVal& B, UnitOf unit_of)
{
    const Qud::Dim* const unit_a = A.number_unit();
    const Qud::Dim* const unit_b = B.number_unit();
    if (unit_a && unit_b)
        return unit_of(*unit_a, *unit_b);
    auto units = std::make_shared<std::vector<Qud::Dim>>();
    units->reserve(A.count());
    for (std::size_t j = 0; j < A.Cols(); ++j)
        for (std::size_t i = 0; i < A.Rows(); ++i)
            units->push_back(unit_of(A.unit(i, j), B.unit(i, j)));
    return Qud::Units(std::move(units));
}

/// A matrix with its units; one without elements has none.
inline Qud::Handle with_units(Qud::MatVal::Parts parts, Qud::Units units)
{
    if (parts.rows == 0 || parts.cols == 0)
        return Qud::MatVal::empty();
    parts.units = std::move(units);
    return Qud::MatVal::make(std::move(parts));
}

template <MappedBundle B, class UnitOf>
Qud::Handle mapmatrixMN(const Qud::MatVal& M, const Qud::NumVal& x, const UnitOf& unit_of);

/// The same for a matrix with arrays or texts among its elements. Those come first: a wrong kind is reported before a
/// wrong number.
template <MappedBundle B, class UnitOf>
Qud::Handle map_entries_MN(const Qud::MatVal& M, const Qud::NumVal& x, const UnitOf& unit_of)
{
    Qud::MatBuilder result(M.Rows(), M.Cols());
    for (const Qud::Entry& e : *M.entries()) {
        const Qud::MatVal* const nested = Qud::matrix_of(e.value);
        if (!nested)
            refuse_text(B::Order::element_index);
        const Qud::MatVal::Place place = M.place_of(e.index);
        result.set(place.row, place.col, mapmatrixMN<B>(*nested, x, unit_of));
    }
    for (std::size_t j = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i) {
            if (M.entry(i, j))
                continue;
            const Qud::NumVal element(M.real(i, j), M.imag(i, j));
            const aComplex z = apply_to_numbers<typename B::Operation>(element, x);
            result.set_number(i, j, z.m_re, z.m_im, unit_of(M.unit(i, j)));
        }
    return result.finish();
}

/// Every element of M with the same number, in the order of the bundle; unit_of gives a result's unit from the unit of
/// its element.
/// @throws "must be a scalar or a matrix" (the matrix's index) for a text, what operation and unit_of raise
template <MappedBundle B, class UnitOf>
Qud::Handle mapmatrixMN(const Qud::MatVal& M, const Qud::NumVal& x, const UnitOf& unit_of)
{
    if (M.has_entries())
        return map_entries_MN<B>(M, x, unit_of);
    Qud::MatVal::Parts parts =
        DispatchMM<typename B::Operation>(M.Rows(), M.Cols(), MatrixOperand(M), NumberOperand(x));
    return with_units(std::move(parts), mapped_units(M, unit_of));
}

template <MappedBundle B>
requires UnitOperation<typename B::Operation> Qud::Handle mapmatrixMN(const Qud::MatVal& M, const Qud::NumVal& x)
{
    return mapmatrixMN<B>(M, x, [&](const Qud::Dim& unit) { return B::Operation::unit(unit, x.m_dim); });
}

/// Every element of M by an operation of one operand, the unit by unit_of.
/// @throws "must be a scalar or a matrix" (1) for a text, what operation and unit_of raise
template <class R, class UnitOf>
Qud::Handle mapmatrix(const Qud::MatVal& M, const UnitOf& unit_of)
{
    if (!M.has_entries()) {
        const MatrixOperand elements(M);
        return with_units(DispatchMM<R>(M.Rows(), M.Cols(), elements, elements), mapped_units(M, unit_of));
    }
    using B = BinaryMatrixOp<BRr<R, Reverse<R>, NormalArg>>;
    return map_entries_MN<B>(M, Qud::NumVal(0.0, 0.0), unit_of);
}

template <BinaryOperation Op>
Qud::Handle mapmatrixMM(const Qud::MatVal& A, const Qud::MatVal& B);

/// One pair of elements, of which at least one is an array or a text.
template <BinaryOperation Op>
Qud::Handle map_pair(const Qud::Handle& a, const Qud::Handle& b)
{
    using FirstMatrix = BinaryMappedOp<BRr<Op, Reverse<Op>, NormalArg>>;
    using FirstNumber = BinaryMappedOp<BRr<Op, Reverse<Op>, ReverseArg>>;
    const Qud::DimVal* const right = Qud::as_dimensioned(b);
    const Qud::DimVal* const left = Qud::as_dimensioned(a);
    if (!right)
        refuse_text(2);
    if (!left)
        refuse_text(1);
    const Qud::MatVal* const A = Qud::matrix_of(a);
    const Qud::MatVal* const B = Qud::matrix_of(b);
    if (A && B)
        return mapmatrixMM<Op>(*A, *B);
    return A ? mapmatrixMN<FirstMatrix>(*A, *Qud::as_number(b)) : mapmatrixMN<FirstNumber>(*B, *Qud::as_number(a));
}

template <BinaryOperation Op>
Qud::Handle map_entries_MM(const Qud::MatVal& A, const Qud::MatVal& B)
{
    Qud::MatBuilder result(A.Rows(), A.Cols());
    const auto each_pair = [&](bool of_entries, auto&& set) {
        for (std::size_t j = 0; j < A.Cols(); ++j)
            for (std::size_t i = 0; i < A.Rows(); ++i)
                if ((A.entry(i, j) || B.entry(i, j)) == of_entries)
                    set(i, j);
    };
    each_pair(true,
              [&](std::size_t i, std::size_t j) { result.set(i, j, map_pair<Op>(A.element(i, j), B.element(i, j))); });
    each_pair(false, [&](std::size_t i, std::size_t j) {
        const Qud::NumVal a(A.real(i, j), A.imag(i, j));
        const Qud::NumVal b(B.real(i, j), B.imag(i, j));
        const aComplex z = apply_to_numbers<Op>(a, b);
        result.set_number(i, j, z.m_re, z.m_im, Op::unit(A.unit(i, j), B.unit(i, j)));
    });
    return result.finish();
}

/// Two matrices of one shape, element by element.
/// @throws "array size mismatch" (-1), "must be a scalar or a matrix" (2, 1) for a text, what the operation raises
template <BinaryOperation Op>
Qud::Handle mapmatrixMM(const Qud::MatVal& A, const Qud::MatVal& B)
{
    if (A.Rows() != B.Rows() || A.Cols() != B.Cols())
        Evl::Run::AppException::Raise(msg::array_size_mismatch, -1);
    if (A.has_entries() || B.has_entries())
        return map_entries_MM<Op>(A, B);
    Qud::MatVal::Parts parts = DispatchMM<Op>(A.Rows(), A.Cols(), MatrixOperand(A), MatrixOperand(B));
    return with_units(std::move(parts),
                      mapped_units(A, B, [](const Qud::Dim& u, const Qud::Dim& v) { return Op::unit(u, v); }));
}

} // namespace Efi
