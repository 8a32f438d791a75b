#include "bailuxhost/matval.hpp"
#include "bailuxhost/unit_names.hpp"
#include "efiutl/messages.hpp"
#include "worksheet/evaluation/evaluator.hpp"
#include "worksheet/syntax/syntax_error.hpp"

#include <cmath>
#include <utility>

namespace worksheet {

namespace {

/// Whether every number of a value has the unit; `any` becomes true when there is a number.
bool all_have(const Qud::Handle& value, const Qud::Dim& unit, bool& any)
{
    if (const Qud::NumVal* const number = Qud::as_number(value)) {
        any = true;
        return number->m_dim == unit;
    }
    const Qud::MatVal* const M = Qud::matrix_of(value);
    if (M == nullptr)
        return true;
    for (std::size_t j = 0; j < M->Cols(); ++j) {
        for (std::size_t i = 0; i < M->Rows(); ++i) {
            const Qud::Handle* const entry = M->entry(i, j);
            if (entry == nullptr)
                any = true;
            if (entry != nullptr ? !all_have(*entry, unit, any) : M->unit(i, j) != unit)
                return false;
        }
    }
    return true;
}

} // namespace

void Evaluator::run(Statement& statement, StatementResult& result)
{
    m_stack = StackLimit(); // a session may move from thread to thread
    result.name = statement.name;
    switch (statement.kind) {
    case StatementKind::expression:
        show(statement, result);
        break;
    case StatementKind::variable:
        result.value = evaluate({.tree = statement.tree}, statement.root);
        m_definitions.insert_or_assign(statement.name, result.value);
        result.kind = StatementResult::Kind::variable;
        break;
    case StatementKind::function:
        result.value = user_function_value(statement);
        m_definitions.insert_or_assign(statement.name, result.value);
        result.kind = StatementResult::Kind::function;
        break;
    case StatementKind::setting:
        if (const std::string fault = apply_setting(m_settings, statement.name, statement.setting_value);
            !fault.empty())
            raise_syntax_error(fault,
                               is_setting(statement.name) ? statement.setting_value_offset : statement.name_offset);
        result.kind = StatementResult::Kind::setting;
        break;
    }
}

void Evaluator::show(Statement& statement, StatementResult& result)
{
    const Frame frame{.tree = statement.tree};
    result.value = evaluate(frame, statement.root);
    if (statement.unit) {
        ShownUnit unit = shown_unit(statement, frame);
        bool any = false;
        if (!all_have(result.value, unit.dim, any) || !any) {
            LocatedError error(msg::unit_mismatch, -1, "");
            error.place(statement.arrow_offset);
            error.say_found("the value is " + description(result.value));
            throw error;
        }
        result.shown_unit = std::move(unit);
    }
    result.kind = StatementResult::Kind::value;
}

/// What stands behind `->`: anything that comes to a number a value can be measured in.
ShownUnit Evaluator::shown_unit(const Statement& statement, const Frame& frame)
{
    const Qud::Handle value = evaluate(frame, *statement.unit);
    const Qud::NumVal* const number = Qud::as_number(value);
    if (number == nullptr || !number->is_real() || !std::isfinite(number->re()) || number->re() == 0.0)
        raise_at(frame, statement.arrow_offset, msg::unit_mismatch);
    return {.text = statement.unit_text, .factor = number->re(), .dim = number->m_dim};
}

} // namespace worksheet
