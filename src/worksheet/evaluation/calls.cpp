#include "bailuxhost/matval.hpp"
#include "efiutl/messages.hpp"
#include "worksheet/builtins/choice.hpp"
#include "worksheet/evaluation/evaluator.hpp"
#include "worksheet/functions.hpp"

#include <fmt/format.h>

#include <string>
#include <string_view>
#include <utility>

namespace worksheet {

namespace {

/// Calls of users' functions inside one another; a recursion that runs away ends here, on a small stack before.
constexpr std::size_t max_call_depth = 4000;

void check_count(bool fits, const char* function = "")
{
    if (!fits)
        throw LocatedError(msg::wrong_number_of_arguments, -1, function);
}

/// What stands before the parentheses of a call: its name, else what it came to.
std::string called_text(const Frame& frame, const Node& callee, const Qud::Handle& value)
{
    if (callee.kind == NodeKind::name)
        return frame.tree.names[callee.content];
    if (callee.kind == NodeKind::parameter)
        return frame.tree.parameters[callee.content];
    return description(value);
}

bool takes(const Evl::FunctionRow& row, std::size_t count)
{
    return row.least <= count && count <= row.most;
}

/// "QR takes 1 or 2 arguments, not 3"
std::string count_words(std::string_view name, std::size_t least, std::size_t most, std::size_t count)
{
    const auto arguments = [](std::size_t n) { return n == 1 ? "argument" : "arguments"; };
    if (most == Qud::FunVal::any_count)
        return fmt::format("{} takes at least {} {}, not {}", name, least, arguments(least), count);
    if (least == most)
        return fmt::format("{} takes {} {}, not {}", name, least, arguments(least), count);
    const char* const between = most == least + 1 ? "or" : "to";
    return fmt::format("{} takes {} {} {} arguments, not {}", name, least, between, most, count);
}

[[noreturn]] void refuse_count(const Frame& frame, const Node& node, const Evl::FunctionRow& row, std::size_t count)
{
    raise_at(frame, node.start, msg::wrong_number_of_arguments, std::string(row.name),
             count_words(row.name, row.least, row.most, count));
}

} // namespace

Evl::Settings Evaluator::host_settings() const noexcept
{
    return {.origin = m_settings.origin, .tol = m_settings.tol, .folder = m_settings.folder};
}

Qud::Handle Evaluator::evaluate_call(const Frame& frame, const Node& node)
{
    const NodeIndex callee_index = frame.tree.children_of(node)[0];
    const Node& callee = frame.tree.nodes[callee_index];
    if (callee.kind == NodeKind::name) {
        const std::string& name = frame.tree.names[callee.content];
        const auto definition = m_definitions.find(name);
        if (definition == m_definitions.end()) {
            const Evl::FunctionRow* const row = find_function(name);
            if (row != nullptr)
                return row->is_lazy ? evaluate_choice(frame, node, *row) : call_row(frame, node, *row);
        }
    }
    const Qud::Handle value = evaluate(frame, callee_index);
    const Qud::FunVal* const function = Qud::as_function(value);
    if (function == nullptr) {
        raise_at(frame, node.start, msg::not_a_function + called_text(frame, callee, value));
    }
    return call_function(frame, node, *function);
}

/// A worksheet function by its name: no function value is made for it.
Qud::Handle Evaluator::call_row(const Frame& frame, const Node& node, const Evl::FunctionRow& row)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node).subspan(1);
    if (!takes(row, children.size()))
        refuse_count(frame, node, row, children.size());
    Operands operands(children.size());
    for (std::size_t k = 0; k < children.size(); ++k)
        operands[k] = evaluate(frame, children[k]);
    try {
        return row.entry(host_settings(), operands.span());
    } catch (...) {
        rethrow_at({.frame = frame,
                    .node = node,
                    .offset = node.start,
                    .function = row.name,
                    .operand_nodes = children,
                    .operands = operands.span()});
    }
}

/// `if`: the branch that is not chosen is not evaluated.
Qud::Handle Evaluator::evaluate_choice(const Frame& frame, const Node& node, const Evl::FunctionRow& row)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node).subspan(1);
    if (!takes(row, children.size()))
        refuse_count(frame, node, row, children.size());
    bool chosen = false;
    {
        const Qud::Handle condition = evaluate(frame, children[0]);
        try {
            chosen = holds(condition);
        } catch (...) {
            rethrow_at({.frame = frame,
                        .node = node,
                        .offset = node.start,
                        .function = row.name,
                        .operand_nodes = children,
                        .operands = {&condition, 1}});
        }
    }
    return evaluate(frame, children[chosen ? 1 : 2]);
}

Qud::Handle Evaluator::call_function(const Frame& frame, const Node& node, const Qud::FunVal& function)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node).subspan(1);
    const bool is_row = is_worksheet_function(function);
    if (!function.takes(children.size()))
        raise_at(frame, node.start, msg::wrong_number_of_arguments, is_row ? function.name() : std::string(),
                 count_words(function.name(), function.least(), function.most(), children.size()));
    Operands operands(children.size());
    for (std::size_t k = 0; k < children.size(); ++k)
        operands[k] = evaluate(frame, children[k]);
    try {
        return function.call(operands.span());
    } catch (...) {
        Site site{.frame = frame, .node = node, .offset = node.start};
        if (is_row) {
            site.function = function.name();
            site.operand_nodes = children;
            site.operands = operands.span();
        }
        rethrow_at(site);
    }
}

Qud::Handle Evaluator::call_user_function(const UserFunction& function, std::span<const Qud::Handle> arguments)
{
    check_count(arguments.size() == function.body.parameters.size());
    if (m_call_depth >= max_call_depth || m_stack.is_reached())
        throw LocatedError(msg::nesting_too_deep, -1, "");
    struct Depth {
        std::size_t& count;
        ~Depth() { --count; }
    } depth{++m_call_depth};
    return evaluate({.tree = function.body, .arguments = arguments, .is_body = true}, function.root);
}

Qud::Handle Evaluator::user_function_value(Statement& statement)
{
    auto function = std::make_shared<UserFunction>();
    function->name = statement.name;
    function->body = std::move(statement.tree);
    function->root = statement.root;
    const std::size_t count = function->body.parameters.size();
    return std::make_shared<const Qud::FunVal>(
        statement.name, count, count,
        [this, function](std::span<const Qud::Handle> arguments) { return call_user_function(*function, arguments); });
}

} // namespace worksheet
