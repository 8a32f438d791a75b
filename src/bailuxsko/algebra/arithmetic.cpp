#include "bailuxsko/arithmetic.hpp"

#include "bailuxhost/options.hpp"
#include "bailuxsko/algebra/inverse.hpp"
#include "bailuxsko/algebra/mapping.hpp"
#include "bailuxsko/frame/call.hpp"

#include <utility>

namespace Efi {

double DivWrap::over_zero(bool zero_numerator)
{
    if (!zero_numerator || !Qud::RuntimeOptions::zero_over_zero_is_zero)
        Evl::Run::AppException::Raise(msg::divide_by_zero, 2);
    return 0.0;
}

namespace Matrix {

namespace {

template <class Order>
using Multiply = BinaryMatrixOp<BRr<EfiMult, Reverse<EfiMult>, Order>>;
template <class Order>
using Divide = BinaryMappedOp<BRr<DivWrap, Reverse<DivWrap>, Order>>;

/// @throws "must be a scalar or a matrix" (2, 1)
void refuse_other_kinds(const Qud::Handle& a, const Qud::Handle& b)
{
    if (!Qud::as_dimensioned(b))
        refuse_text(2);
    if (!Qud::as_dimensioned(a))
        refuse_text(1);
}

Qud::Handle product(const Qud::MatVal& a, const Qud::MatVal& b)
{
    if (a.get_IsUniformScalar() && b.get_IsUniformScalar()) {
        Qud::Handle plain = EfiMult::ScalarMatrixMult(a, b); // its errors come before the unit's
        return Qud::DimVal::dv(std::move(plain), Qud::Dim::Mult(a.m_dim, b.m_dim));
    }
    return EfiMult::CrazyMatrixMult(a, b);
}

} // namespace

Qud::Handle mult(const Qud::Handle& a, const Qud::Handle& b)
{
    return in_host_call([&] {
        refuse_other_kinds(a, b);
        const Qud::NumVal* const x = Qud::as_number(a);
        const Qud::NumVal* const y = Qud::as_number(b);
        if (x && y)
            return numNN<EfiMult>(*x, *y);
        if (x)
            return mapmatrixMN<Multiply<ReverseArg>>(*Qud::matrix_of(b), *x);
        if (y)
            return mapmatrixMN<Multiply<NormalArg>>(*Qud::matrix_of(a), *y);
        return product(*Qud::matrix_of(a), *Qud::matrix_of(b));
    });
}

Qud::Handle div(const Qud::Handle& a, const Qud::Handle& b)
{
    return in_host_call([&] {
        const Qud::MatVal* const B = Qud::matrix_of(b);
        if (B && B->is_square())
            return mult(a, Inv(*B));
        refuse_other_kinds(a, b);
        const Qud::NumVal* const x = Qud::as_number(a);
        const Qud::NumVal* const y = Qud::as_number(b);
        if (x && y)
            return numNN<DivWrap>(*x, *y);
        if (x)
            return mapmatrixMN<Divide<ReverseArg>>(*B, *x);
        if (y)
            return mapmatrixMN<Divide<NormalArg>>(*Qud::matrix_of(a), *y);
        return mapmatrixMM<DivWrap>(*Qud::matrix_of(a), *B);
    });
}

Qud::Handle pwr(const Qud::Handle& x, const Qud::Handle& y)
{
    return in_host_call([&] { return EfiPwr::op(x, y); });
}

} // namespace Matrix

} // namespace Efi
