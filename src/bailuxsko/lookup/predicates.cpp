#include "bailuxsko/lookup/predicates.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/frame/error_checks.hpp"
#include "efiutl/messages.hpp"

namespace Efi {

comparison_pred::~comparison_pred() = default;

bool comparison_pred::eval(const Qud::NumVal&) const
{
    return false;
}

bool comparison_pred::eval(const std::string&) const
{
    return false;
}

bool comparison_pred::eval(const Qud::Handle&) const
{
    return false;
}

std::optional<NumberTest> comparison_pred::number_test() const
{
    return std::nullopt;
}

TextTest comparison_pred::text_test() const
{
    return TextTest::one_by_one;
}

bool comparison_pred::evalElem(const Qud::Handle& element, const Qud::Dim& unit) const
{
    if (m_usrfn)
        return eval(element);
    if (const Qud::NumVal* const number = Qud::as_number(element))
        return !m_str && eval(Qud::NumVal(number->re(), number->im(), unit));
    const std::string* text = nullptr;
    return Error::is_string(element, &text) && m_str && eval(*text);
}

void comparison_pred::set_text_or_number(const Qud::Handle& target, double tol)
{
    m_target = target;
    if (Error::is_string(target, &m_str)) {
        m_tol = tol;
        return;
    }
    const Qud::NumVal& number = Error::as_scalar(target, msg::must_be_scalar, 1);
    if (!ISFINITE(number.re()) || !ISFINITE(number.im()))
        Evl::Run::AppException::Raise(msg::must_be_scalar, 1);
    set_number(number.re(), number.m_dim, tol);
    m_imag = number.im();
}

void comparison_pred::set_number(double target, const Qud::Dim& unit, double tol)
{
    m_real = target;
    m_tdim = unit;
    m_tol = tol;
}

bool eq_pred::eval(const Qud::NumVal& number) const
{
    return has_unit(number) &&
           number_tests::BothWithin{.re = m_real, .im = m_imag, .tol = m_tol}(number.re(), number.im());
}

bool eq_pred::eval(const std::string& text) const
{
    return text == *m_str;
}

std::optional<NumberTest> eq_pred::number_test() const
{
    return number_tests::BothWithin{.re = m_real, .im = m_imag, .tol = m_tol};
}

bool neq_pred::eval(const Qud::NumVal& number) const
{
    return has_unit(number) &&
           number_tests::SomeOutside{.re = m_real, .im = m_imag, .tol = m_tol}(number.re(), number.im());
}

bool neq_pred::eval(const std::string& text) const
{
    return text != *m_str;
}

std::optional<NumberTest> neq_pred::number_test() const
{
    return number_tests::SomeOutside{.re = m_real, .im = m_imag, .tol = m_tol};
}

range_pred::range_pred(double lower, double upper, const Qud::Dim& unit, double tol) : m_lower(lower), m_upper(upper)
{
    set_number(lower, unit, tol);
}

bool range_pred::eval(const Qud::NumVal& number) const
{
    return has_unit(number) && test()(number.re());
}

std::optional<NumberTest> range_pred::number_test() const
{
    return test();
}

user_pred::user_pred(const Qud::Handle& function, const Qud::Handle& target, int index) : m_function(function)
{
    m_usrfn = &Qud::FunVal::asFunctionN(function, 2, index);
    m_target = target;
    m_eparam = index;
}

bool user_pred::eval(const Qud::Handle& element) const
{
    const Qud::Handle arguments[] = {element, m_target};
    const Qud::Handle answer = m_usrfn->call(arguments);
    const Qud::DimVal* const carrier = Qud::as_dimensioned(answer);
    const std::optional<double> whole = carrier ? carrier->isInt() : std::nullopt;
    if (!whole)
        Evl::Run::AppException::Raise(msg::must_return_integer, m_eparam);
    return *whole != 0.0;
}

} // namespace Efi
