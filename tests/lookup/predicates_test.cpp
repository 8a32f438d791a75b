#include "bailuxsko/lookup/predicates.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/records.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Efi::comparison_pred;
using Qud::Dim;
using Qud::Handle;
using support::host_raised_by;
using support::number;
using support::Raised;
using support::text;

const Dim metre = Dim::Parse("V{Length 60000}");
constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

Handle function(std::size_t count, Qud::FunVal::Operation operation)
{
    return std::make_shared<const Qud::FunVal>("f", count, count, std::move(operation));
}

TEST(Predicates, TheBaseHasEveryFieldAndFindsNothing)
{
    const comparison_pred base;
    static_assert(std::is_same_v<decltype(base.m_real), double> && std::is_same_v<decltype(base.m_imag), double> &&
                  std::is_same_v<decltype(base.m_tol), double> && std::is_same_v<decltype(base.m_tdim), Dim> &&
                  std::is_same_v<decltype(base.m_eparam), int> && std::is_same_v<decltype(base.m_target), Handle>);
    EXPECT_EQ(base.m_str, nullptr);
    EXPECT_EQ(base.m_usrfn, nullptr);
    EXPECT_FALSE(base.eval(Qud::NumVal(0.0, 0.0)));
    EXPECT_FALSE(base.eval(std::string()));
    EXPECT_FALSE(base.eval(Handle()));
    for (const Handle& element : {number(0.0), text(""), Qud::MatVal::empty(), Handle()})
        EXPECT_FALSE(base.evalElem(element, Dim::identity));
}

/// Where the function stands among the virtual ones: a pointer to a virtual member holds 1 + its place in bytes.
template <class Member>
std::size_t slot(Member member)
{
    std::ptrdiff_t place = 0;
    std::memcpy(&place, &member, sizeof place);
    return static_cast<std::size_t>(place - 1) / sizeof(void*);
}

TEST(Predicates, NumbersTextsAndTheRestAreAskedInThatOrderOfSlots)
{
    EXPECT_EQ(slot(static_cast<bool (comparison_pred::*)(const Qud::NumVal&) const>(&comparison_pred::eval)), 0U);
    EXPECT_EQ(slot(static_cast<bool (comparison_pred::*)(const std::string&) const>(&comparison_pred::eval)), 1U);
    EXPECT_EQ(slot(static_cast<bool (comparison_pred::*)(const Handle&) const>(&comparison_pred::eval)), 2U);
}

/// Notes which form it was asked in.
class Asked final : public comparison_pred {
public:
    bool eval(const Qud::NumVal& x) const override
    {
        m_asked += x.m_dim == metre ? "number in m;" : "number;";
        return true;
    }
    bool eval(const std::string&) const override
    {
        m_asked += "text;";
        return true;
    }
    bool eval(const Handle&) const override
    {
        m_asked += "any;";
        return true;
    }
    mutable std::string m_asked;
};

TEST(Predicates, AnElementIsAskedInTheFormThatItsTargetHas)
{
    const Handle elements[] = {number(1.0), text("a"), support::matrix({{1.0}}), Handle(),
                               function(2, [](auto) { return number(1); })};
    const auto asked = [&](const auto& prepare) {
        Asked predicate;
        prepare(predicate);
        for (const Handle& element : elements)
            predicate.evalElem(element, metre);
        return predicate.m_asked;
    };
    const std::string target = "x";
    EXPECT_EQ(asked([](Asked&) {}), "number in m;") << "the unit that the matrix says";
    EXPECT_EQ(asked([&](Asked& p) { p.m_str = &target; }), "text;");
    const Handle f = function(2, [](auto) { return number(1); });
    EXPECT_EQ(asked([&](Asked& p) { p.m_usrfn = Qud::as_function(f); }), "any;any;any;any;any;");
}

TEST(Predicates, ATargetIsKept)
{
    const Efi::eq_pred of_number(number(2.0, 3.0, metre), 0.5);
    EXPECT_EQ(of_number.m_real, 2.0);
    EXPECT_EQ(of_number.m_imag, 3.0);
    EXPECT_EQ(of_number.m_tol, 0.5);
    EXPECT_EQ(of_number.m_tdim, metre);
    EXPECT_EQ(of_number.m_str, nullptr);

    const Efi::neq_pred of_text(text("abc"), 0.5);
    ASSERT_NE(of_text.m_str, nullptr);
    EXPECT_EQ(*of_text.m_str, "abc");
    EXPECT_EQ(of_text.m_tol, 0.5);

    const Efi::range_pred of_range(1.0, 4.0, metre, 0.25);
    EXPECT_EQ(of_range.m_lower, 1.0);
    EXPECT_EQ(of_range.m_upper, 4.0);
    EXPECT_EQ(of_range.m_tol, 0.25);
    EXPECT_EQ(of_range.m_tdim, metre);

    const Efi::gt_pred of_order(5.0, metre, 0.125);
    EXPECT_EQ(of_order.m_real, 5.0);
    EXPECT_EQ(of_order.m_tol, 0.125);
    EXPECT_EQ(of_order.m_tdim, metre);
}

TEST(Predicates, ATargetIsATextOrAFiniteNumber)
{
    const Raised expected{"must be scalar", 1};
    for (const Handle& target : {number(inf), number(nan), number(1.0, -inf), number(1.0, nan), number(Efi::ptr_nan()),
                                 Qud::MatVal::empty(), support::matrix({{1.0}}), Handle()}) {
        EXPECT_EQ(host_raised_by([&] { Efi::eq_pred(target, 0.0); }), expected);
        EXPECT_EQ(host_raised_by([&] { Efi::neq_pred(target, 0.0); }), expected);
    }
}

struct NumberCase {
    const char* name;
    double re;
    double im;
    bool eq, neq, eq_ignoreIp, gt, ge, lt, le, range;
};

// Target 2 (2 + 0i for eq and neq), tolerance 0.5, range 1 to 4. By hand, from the definitions.
const NumberCase number_cases[] = {
    //                                  eq     neq    ignore gt     ge     lt     le     range
    {"the target", 2.0, 0.0, true, false, true, false, true, false, true, true},
    {"at the bound above", 2.5, 0.0, true, false, true, false, true, false, true, true},
    {"at the bound below", 1.5, 0.0, true, false, true, false, true, false, true, true},
    {"above", 2.75, 0.0, false, true, false, true, true, false, false, true},
    {"below", 1.25, 0.0, false, true, false, false, false, true, true, true},
    {"imaginary part at the bound", 2.0, -0.5, true, false, true, false, true, false, true, true},
    {"imaginary part beyond", 2.0, 0.75, false, true, true, false, true, false, true, true},
    {"imaginary part infinite", 2.0, inf, false, true, true, false, true, false, true, true},
    {"imaginary part NaN", 2.0, nan, false, true, true, false, true, false, true, true},
    {"at the range's end", 4.5, 0.0, false, true, false, true, true, false, false, true},
    {"beyond the range's end", 4.75, 0.0, false, true, false, true, true, false, false, false},
    {"at the range's start", 0.5, 0.0, false, true, false, false, false, true, true, true},
    {"before the range's start", 0.25, 0.0, false, true, false, false, false, true, true, false},
    {"infinite", inf, 0.0, false, true, false, false, false, false, false, false},
    {"minus infinite", -inf, 0.0, false, true, false, false, false, false, false, false},
    {"NaN", nan, 0.0, false, true, false, false, false, false, false, false},
    {"an empty slot", Efi::ptr_nan(), 0.0, false, true, false, false, false, false, false, false},
    {"the largest", std::numeric_limits<double>::max(), 0.0, false, true, false, true, true, false, false, false},
};

TEST(Predicates, ForNumbers)
{
    for (const NumberCase& c : number_cases) {
        const Handle target = number(2.0);
        const Qud::NumVal x(c.re, c.im);
        EXPECT_EQ(Efi::eq_pred(target, 0.5).eval(x), c.eq) << c.name;
        EXPECT_EQ(Efi::neq_pred(target, 0.5).eval(x), c.neq) << c.name;
        EXPECT_EQ(Efi::eq_ignoreIp_pred(2.0, Dim::identity, 0.5).eval(x), c.eq_ignoreIp) << c.name;
        EXPECT_EQ(Efi::gt_pred(2.0, Dim::identity, 0.5).eval(x), c.gt) << c.name;
        EXPECT_EQ(Efi::ge_pred(2.0, Dim::identity, 0.5).eval(x), c.ge) << c.name;
        EXPECT_EQ(Efi::lt_pred(2.0, Dim::identity, 0.5).eval(x), c.lt) << c.name;
        EXPECT_EQ(Efi::le_pred(2.0, Dim::identity, 0.5).eval(x), c.le) << c.name;
        EXPECT_EQ(Efi::range_pred(1.0, 4.0, Dim::identity, 0.5).eval(x), c.range) << c.name;
    }
}

TEST(Predicates, NumbersOfAnotherUnitAreNoHitsOfAny)
{
    const Handle target = number(2.0, 0.0, metre);
    for (const double x : {1.0, 2.0, 3.0, inf, nan}) {
        const Qud::NumVal other(x, 0.0);
        EXPECT_FALSE(Efi::eq_pred(target, 0.5).eval(other));
        EXPECT_FALSE(Efi::neq_pred(target, 0.5).eval(other));
        EXPECT_FALSE(Efi::eq_ignoreIp_pred(2.0, metre, 0.5).eval(other));
        EXPECT_FALSE(Efi::gt_pred(2.0, metre, 0.5).eval(other));
        EXPECT_FALSE(Efi::ge_pred(2.0, metre, 0.5).eval(other));
        EXPECT_FALSE(Efi::lt_pred(2.0, metre, 0.5).eval(other));
        EXPECT_FALSE(Efi::le_pred(2.0, metre, 0.5).eval(other));
        EXPECT_FALSE(Efi::range_pred(1.0, 4.0, metre, 0.5).eval(other));
    }
}

TEST(Predicates, TextsAreTheSameOrNot)
{
    const Efi::eq_pred equal(text("Ab"), 0.0);
    const Efi::neq_pred unequal(text("Ab"), 0.0);
    for (const char* other : {"Ab", "AB", "A", "Abc", ""}) {
        const bool same = std::string("Ab") == other;
        EXPECT_EQ(equal.evalElem(text(other), Dim::identity), same) << other;
        EXPECT_EQ(unequal.evalElem(text(other), Dim::identity), !same) << other;
    }
    EXPECT_FALSE(unequal.evalElem(number(1.0), Dim::identity));
    EXPECT_FALSE(unequal.evalElem(Qud::MatVal::empty(), Dim::identity));
    EXPECT_FALSE(Efi::neq_pred(number(1.0), 0.0).evalElem(text("1"), Dim::identity));
}

TEST(Predicates, AUsersFunctionGetsElementAndTarget)
{
    std::vector<Handle> seen;
    const Handle f = function(2, [&](std::span<const Handle> arguments) {
        seen.assign(arguments.begin(), arguments.end());
        return number(-3.0, 0.0, metre);
    });
    const Handle target = text("target");
    const Efi::user_pred predicate(f, target, 4);
    EXPECT_EQ(predicate.m_usrfn, Qud::as_function(f));
    EXPECT_EQ(predicate.m_eparam, 4);
    EXPECT_EQ(predicate.m_target, target);
    EXPECT_EQ(predicate.m_str, nullptr);
    const Handle element = support::matrix({{1, 2}});
    EXPECT_TRUE(predicate.evalElem(element, Dim::identity));
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0], element);
    EXPECT_EQ(seen[1], target);
}

TEST(Predicates, AUsersFunctionTakesTwoArguments)
{
    for (const std::size_t count : {0, 1, 3})
        EXPECT_EQ(host_raised_by([&] { Efi::user_pred(function(count, {}), nullptr, 7); }),
                  (Raised{"must be a function of 2 variables", 7}));
    EXPECT_EQ(host_raised_by([] { Efi::user_pred(nullptr, nullptr, 3); }),
              (Raised{"must be a function of 2 variables", 3}));
}

TEST(Predicates, AUsersFunctionGivesAWholeNumber)
{
    const auto gives = [](const Handle& answer) {
        const Efi::user_pred predicate(function(2, [&](auto) { return answer; }), nullptr, 5);
        return predicate.eval(number(0.0));
    };
    for (const Handle& answer : {number(0.5), number(1.0, 1.0), number(inf), number(nan), text("1"), Handle(),
                                 support::matrix({{1.0}}), function(2, {})})
        EXPECT_EQ(host_raised_by([&] { gives(answer); }), (Raised{"This function must return an integer value", 5}));
    EXPECT_TRUE(gives(number(-1.0)));
    EXPECT_FALSE(gives(number(-0.0)));
}

} // namespace
