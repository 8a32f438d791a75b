// The scalar operations and their combinations: operand order, real operands, zero divisors.
#include "bailuxsko/algebra/operations.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/options.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

using Efi::DivWrap;
using Efi::EfiMult;
using Efi::EfiPwr;
using Efi::Reverse;
using Efi::ReverseReal;

constexpr double inf = std::numeric_limits<double>::infinity();

void expect_same(aComplex x, aComplex y)
{
    EXPECT_EQ(x.m_re, y.m_re);
    EXPECT_EQ(x.m_im, y.m_im);
    EXPECT_EQ(std::signbit(x.m_im), std::signbit(y.m_im));
}

static_assert(Efi::RealOperation<EfiMult> && Efi::RealOperation<DivWrap> && !Efi::RealOperation<EfiPwr>);
static_assert(Efi::CheckedOperation<DivWrap> && Efi::CheckedOperation<Reverse<DivWrap>>);
static_assert(!Efi::CheckedOperation<EfiMult> && Efi::BinaryOperation<Reverse<EfiPwr>>);
static_assert(!Efi::UnitOperation<EfiPwr>);

using First = Efi::BRr<DivWrap, Reverse<DivWrap>, Efi::NormalArg>;
using Second = Efi::BRr<DivWrap, Reverse<DivWrap>, Efi::ReverseArg>;
static_assert(std::is_same_v<First::ElementFirst, DivWrap>);
static_assert(std::is_same_v<Second::ElementFirst, Reverse<DivWrap>>);
static_assert(Efi::BinaryMappedOp<First>::Order::element_index == 1);
static_assert(Efi::BinaryMappedOp<Second>::Order::element_index == 2);

TEST(Operations, ReversedOnesExchangeTheirOperands)
{
    EXPECT_EQ(DivWrap::apply(6.0, 3.0), 2.0);
    EXPECT_EQ(ReverseReal<DivWrap>::apply(6.0, 3.0), 0.5);
    EXPECT_EQ(Reverse<DivWrap>::apply(6.0, 3.0), 0.5);
    expect_same(Reverse<DivWrap>::apply(aComplex{0, 2}, aComplex{4, 0}), {0, -2});
    expect_same(Reverse<EfiPwr>::apply(aComplex{3, 0}, aComplex{2, 0}), {8, 0});
    expect_same(Reverse<EfiMult>::apply(aComplex{1, 2}, aComplex{3, 4}), {-5, 10});
    const Qud::Dim m(Qud::Dim::Base::length);
    const Qud::Dim s(Qud::Dim::Base::time);
    EXPECT_EQ(Reverse<DivWrap>::unit(m, s), Qud::Dim::Div(s, m));
}

TEST(Operations, ProductsOfOperandsWithoutImaginaryPartAreReal)
{
    expect_same(EfiMult::apply(aComplex{inf, 0}, aComplex{2, 0}), {inf, 0});
    expect_same(EfiMult::apply(aComplex{inf, 0}, aComplex{2, 3}), {inf, inf});
    expect_same(EfiMult::apply(aComplex{2, 3}, aComplex{inf, 0}), {inf, inf});
    expect_same(EfiMult::apply(aComplex{2, -0.0}, aComplex{3, 4}), {6, 8});
    expect_same(EfiMult::apply(aComplex{1, 2}, aComplex{3, -1}), {5, 5});
    EXPECT_TRUE(std::signbit(EfiMult::apply(aComplex{-0.0, 0}, aComplex{1, 0}).m_re));
    EXPECT_TRUE(std::signbit(EfiMult::apply(aComplex{-0.0, 0}, aComplex{1, -1}).m_re));
}

TEST(Operations, QuotientsBySmithsMethod)
{
    expect_same(DivWrap::apply(aComplex{1, 2}, aComplex{3, 4}), {0.44, 0.08});
    expect_same(DivWrap::apply(aComplex{5, 10}, aComplex{1, -2}), {-3, 4});
    expect_same(DivWrap::apply(aComplex{1e300, 1e300}, aComplex{1e300, 1e300}), {1, 0});
    expect_same(DivWrap::apply(aComplex{inf, 1}, aComplex{2, 0}), {inf, 0.5});
    expect_same(DivWrap::apply(aComplex{inf, 0}, aComplex{2, 0}), {inf, 0});
    expect_same(DivWrap::apply(aComplex{1, 0}, aComplex{0, 2}), {0, -0.5});
    expect_same(DivWrap::apply(aComplex{1, 0}, aComplex{1, 1}), {0.5, -0.5});
}

TEST(Operations, ZeroDivisorsAskTheOption)
{
    using support::Raised;
    const Raised expected{"divide by zero", 2};
    const auto raised = [](auto x, auto y) { return support::host_raised_by([&] { (void)DivWrap::apply(x, y); }); };
    constexpr aComplex zero{0, 0};
    EXPECT_EQ(raised(1.0, 0.0), expected);
    EXPECT_EQ(raised(0.0, -0.0), expected);
    EXPECT_EQ(raised(aComplex{0, 1}, zero), expected);
    EXPECT_EQ(raised(zero, zero), expected);
    Qud::RuntimeOptions::zero_over_zero_is_zero = true;
    EXPECT_EQ(DivWrap::apply(0.0, 0.0), 0.0);
    EXPECT_FALSE(std::signbit(DivWrap::apply(-0.0, 0.0)));
    expect_same(DivWrap::apply(zero, zero), zero);
    expect_same(Reverse<DivWrap>::apply(zero, zero), zero);
    EXPECT_EQ(raised(1.0, 0.0), expected);
    EXPECT_EQ(raised(aComplex{0, 1}, zero), expected);
    EXPECT_EQ(raised(std::nan(""), 0.0), expected);
    Qud::RuntimeOptions::zero_over_zero_is_zero = false;
}

} // namespace
