#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxhost/value.hpp"
#include "bailuxsko/kernels/number_tests.hpp"
#include "efiutl/api.hpp"

#include <optional>
#include <string>

/// The conditions that elements of a matrix are searched for. A predicate keeps the target that it was made with; its
/// text and its function live as long as that value.
namespace Efi {

namespace number_tests = native::number_tests;
using native::NumberTest;

/// How texts meet a target that is a text.
enum class TextTest { one_by_one, same, other };

class BAILUXSKO_API comparison_pred {
public:
    comparison_pred() = default;
    comparison_pred(const comparison_pred&) = delete;
    comparison_pred& operator=(const comparison_pred&) = delete;

    // What is asked of a number, a text, any other value: nothing is a hit unless a predicate says so.
    virtual bool eval(const Qud::NumVal& number) const;
    virtual bool eval(const std::string& text) const;
    virtual bool eval(const Qud::Handle& other) const;
    // What `eval` does, said so that whole columns can be tested at once; by itself a predicate is asked one by one.
    // The test of numbers is for those of the unit m_tdim, and others are no hits.
    virtual std::optional<NumberTest> number_test() const;
    virtual TextTest text_test() const;
    virtual ~comparison_pred();

    /// Whether an element is a hit: the user's function gets all of them; numbers, in the unit that the matrix gives
    /// them, meet targets that are numbers, texts meet texts. Nested arrays are no hits.
    bool evalElem(const Qud::Handle& element, const Qud::Dim& unit) const;

    double m_real = 0.0; ///< the target
    double m_imag = 0.0;
    double m_tol = 0.0;
    Qud::Dim m_tdim;                      ///< the unit that elements must have
    const std::string* m_str = nullptr;   ///< the target, if it is a text
    const Qud::FunVal* m_usrfn = nullptr; ///< of `user_pred` only
    int m_eparam = 0;                     ///< the argument to blame for the user's function
    Qud::Handle m_target;

protected:
    /// @throws "must be scalar" (1) unless it is a text or a finite number
    void set_text_or_number(const Qud::Handle& target, double tol);
    void set_number(double target, const Qud::Dim& unit, double tol);
    bool has_unit(const Qud::NumVal& number) const noexcept { return Qud::Dim::Eq_b(number.m_dim, m_tdim); }
};

/// Numbers whose parts are both within the tolerance of the target's; the very same text.
class BAILUXSKO_API eq_pred final : public comparison_pred {
public:
    /// @throws "must be scalar" (1), wherever the target stands among the arguments
    eq_pred(const Qud::Handle& target, double tol) { set_text_or_number(target, tol); }
    using comparison_pred::eval;
    bool eval(const Qud::NumVal& number) const override;
    bool eval(const std::string& text) const override;
    std::optional<NumberTest> number_test() const override;
    TextTest text_test() const override { return TextTest::same; }
};

/// The opposite among what can be compared: numbers of the target's unit, texts where the target is one.
class BAILUXSKO_API neq_pred final : public comparison_pred {
public:
    /// @throws "must be scalar" (1), wherever the target stands among the arguments
    neq_pred(const Qud::Handle& target, double tol) { set_text_or_number(target, tol); }
    using comparison_pred::eval;
    bool eval(const Qud::NumVal& number) const override;
    bool eval(const std::string& text) const override;
    std::optional<NumberTest> number_test() const override;
    TextTest text_test() const override { return TextTest::other; }
};

/// Numbers by their real part alone.
template <class Test>
class real_part_pred final : public comparison_pred {
public:
    real_part_pred(double target, const Qud::Dim& unit, double tol) { set_number(target, unit, tol); }
    using comparison_pred::eval;
    bool eval(const Qud::NumVal& number) const override { return has_unit(number) && test()(number.re()); }
    std::optional<NumberTest> number_test() const override { return test(); }

private:
    Test test() const noexcept { return {.t = m_real, .tol = m_tol}; }
};

using eq_ignoreIp_pred = real_part_pred<number_tests::Within>;
using gt_pred = real_part_pred<number_tests::Above>;
using ge_pred = real_part_pred<number_tests::AtLeast>;
using lt_pred = real_part_pred<number_tests::Below>;
using le_pred = real_part_pred<number_tests::AtMost>;

/// Numbers whose real part lies in a closed range, widened by the tolerance.
class BAILUXSKO_API range_pred final : public comparison_pred {
public:
    range_pred(double lower, double upper, const Qud::Dim& unit, double tol);
    using comparison_pred::eval;
    bool eval(const Qud::NumVal& number) const override;
    std::optional<NumberTest> number_test() const override;

    double m_lower;
    double m_upper;

private:
    number_tests::Between test() const noexcept { return {.lower = m_lower, .upper = m_upper, .tol = m_tol}; }
};

/// Elements for which the user's function f(element, target) is not 0.
class BAILUXSKO_API user_pred final : public comparison_pred {
public:
    /// @throws "must be a function of 2 variables" (index)
    user_pred(const Qud::Handle& function, const Qud::Handle& target, int index);
    using comparison_pred::eval;
    /// @throws "This function must return an integer value" (index), what the function raises
    bool eval(const Qud::Handle& element) const override;

private:
    Qud::Handle m_function; ///< keeps m_usrfn alive
};

} // namespace Efi
