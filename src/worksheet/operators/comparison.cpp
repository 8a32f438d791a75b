#include "worksheet/operators/comparison.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxhost/text_order.hpp"
#include "efiutl/messages.hpp"

#include <compare>

namespace worksheet {

namespace {

bool equal_elements(const Qud::MatVal& A, const Qud::MatVal& B, std::size_t i, std::size_t j)
{
    const Qud::Handle* const a = A.entry(i, j);
    const Qud::Handle* const b = B.entry(i, j);
    if (a != nullptr || b != nullptr)
        return a != nullptr && b != nullptr && equal(*a, *b);
    return A.real(i, j) == B.real(i, j) && A.imag(i, j) == B.imag(i, j) && A.unit(i, j) == B.unit(i, j);
}

bool equal_matrices(const Qud::MatVal& A, const Qud::MatVal& B)
{
    if (A.Rows() != B.Rows() || A.Cols() != B.Cols())
        return false;
    for (std::size_t j = 0; j < A.Cols(); ++j)
        for (std::size_t i = 0; i < A.Rows(); ++i)
            if (!equal_elements(A, B, i, j))
                return false;
    return true;
}

Order order_of(std::partial_ordering ordering)
{
    if (ordering == std::partial_ordering::unordered)
        return Order::none;
    return ordering < 0 ? Order::less : ordering > 0 ? Order::greater : Order::equal;
}

const Qud::NumVal& as_real(const Qud::Handle& value, int index)
{
    const Qud::NumVal* const number = Qud::as_number(value);
    if (number == nullptr || !number->is_real())
        Evl::Run::AppException::Raise(msg::must_be_real, index);
    return *number;
}

} // namespace

bool equal(const Qud::Handle& a, const Qud::Handle& b)
{
    if (a->kind() != b->kind())
        return false;
    switch (a->kind()) {
    case Qud::Kind::number: {
        const Qud::NumVal& x = *Qud::as_number(a);
        const Qud::NumVal& y = *Qud::as_number(b);
        return x.re() == y.re() && x.im() == y.im() && x.m_dim == y.m_dim;
    }
    case Qud::Kind::text:
        return Qud::as_text(a)->text() == Qud::as_text(b)->text();
    case Qud::Kind::matrix:
        return equal_matrices(*Qud::matrix_of(a), *Qud::matrix_of(b));
    case Qud::Kind::function:
        break;
    }
    return a == b;
}

Order order(const Qud::Handle& a, const Qud::Handle& b)
{
    const Qud::StrVal* const s = Qud::as_text(a);
    const Qud::StrVal* const t = Qud::as_text(b);
    if (s != nullptr && t != nullptr)
        return order_of(Evl::text_order(s->text(), t->text()) <=> 0);
    const Qud::NumVal& x = as_real(a, 1);
    const Qud::NumVal& y = as_real(b, 2);
    Qud::Dim::Eq(x.m_dim, y.m_dim, -1);
    return order_of(x.re() <=> y.re());
}

} // namespace worksheet
