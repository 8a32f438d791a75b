#include "worksheet/evaluation/evaluator.hpp"

#include "bailuxhost/matval.hpp"
#include "efiutl/messages.hpp"
#include "worksheet/functions.hpp"
#include "worksheet/operators/comparison.hpp"
#include "worksheet/operators/element.hpp"
#include "worksheet/operators/sum.hpp"

#include <array>
#include <utility>

namespace worksheet {

namespace {

/// What an operator makes of the values of a node's children; what it raises stands at the operator.
template <class Operation>
Qud::Handle placed(const Frame& frame, const Node& node, std::span<const Qud::Handle> operands, Operation operation)
{
    try {
        return operation();
    } catch (...) {
        rethrow_at({.frame = frame,
                    .node = node,
                    .offset = node.offset,
                    .operand_nodes = frame.tree.children_of(node),
                    .operands = operands});
    }
}

} // namespace

Evaluator::Evaluator(SheetSettings settings) : m_settings(std::move(settings)) {}

Qud::Handle Evaluator::evaluate(const Frame& frame, NodeIndex index)
{
    const Node& node = frame.tree.nodes[index];
    if (node.child_count > 0 && m_stack.is_reached())
        raise_at(frame, node.offset, msg::nesting_too_deep);
    switch (node.kind) {
    case NodeKind::number:
        return Qud::NumVal::make(frame.tree.numbers[node.content]);
    case NodeKind::imaginary:
        return Qud::NumVal::make(0.0, frame.tree.numbers[node.content]);
    case NodeKind::text:
        return frame.tree.texts[node.content];
    case NodeKind::parameter:
        return frame.arguments[node.content];
    case NodeKind::name:
        return evaluate_name(frame, node);
    case NodeKind::matrix:
        return evaluate_matrix(frame, node);
    case NodeKind::call:
        return evaluate_call(frame, node);
    case NodeKind::element:
        return evaluate_element(frame, node);
    case NodeKind::transpose:
        return evaluate_transpose(frame, node);
    case NodeKind::negate:
        return evaluate_negation(frame, node);
    case NodeKind::chain:
        return evaluate_chain(frame, node);
    }
    __builtin_unreachable();
}

Qud::Handle Evaluator::evaluate_chain(const Frame& frame, const Node& node)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node);
    std::array<Qud::Handle, 2> operands{evaluate(frame, children[0]), nullptr};
    for (std::size_t k = 1; k < children.size(); ++k) {
        const Node& right = frame.tree.nodes[children[k]];
        operands[1] = evaluate(frame, children[k]);
        try {
            operands[0] = apply(right.op, operands);
        } catch (...) {
            // the left operand begins where the chain begins
            const std::array nodes{children[0], children[k]};
            rethrow_at({.frame = frame,
                        .node = node,
                        .offset = right.op_offset,
                        .operand_nodes = nodes,
                        .operands = operands});
        }
    }
    return std::move(operands[0]);
}

Qud::Handle Evaluator::apply_row(std::string_view function, std::span<const Qud::Handle> operands)
{
    return find_function(function)->entry(host_settings(), operands);
}

Qud::Handle Evaluator::apply(Operator op, std::span<const Qud::Handle> operands)
{
    const Qud::Handle& a = operands[0];
    const Qud::Handle& b = operands[1];
    const auto truth = [](bool holds) { return Qud::NumVal::make(holds ? 1.0 : 0.0); };
    switch (op) {
    case Operator::none:
        break;
    case Operator::multiply:
    case Operator::juxtapose:
        return apply_row("mult", operands);
    case Operator::divide:
        return apply_row("div", operands);
    case Operator::power:
        return apply_row("pwr", operands);
    case Operator::add:
        return sum(a, b);
    case Operator::subtract:
        return difference(a, b);
    case Operator::equal:
        return truth(equal(a, b));
    case Operator::not_equal:
        return truth(!equal(a, b));
    case Operator::less:
        return truth(order(a, b) == Order::less);
    case Operator::greater:
        return truth(order(a, b) == Order::greater);
    case Operator::less_equal: {
        const Order found = order(a, b);
        return truth(found == Order::less || found == Order::equal);
    }
    case Operator::greater_equal: {
        const Order found = order(a, b);
        return truth(found == Order::greater || found == Order::equal);
    }
    }
    __builtin_unreachable();
}

Qud::Handle Evaluator::evaluate_negation(const Frame& frame, const Node& node)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node);
    const Qud::Handle operand = evaluate(frame, children[0]);
    return placed(frame, node, {&operand, 1}, [&] { return negation(operand); });
}

Qud::Handle Evaluator::evaluate_transpose(const Frame& frame, const Node& node)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node);
    const Qud::Handle operand = evaluate(frame, children[0]);
    return placed(frame, node, {&operand, 1}, [&] { return apply_row("transpose", {&operand, 1}); });
}

Qud::Handle Evaluator::evaluate_element(const Frame& frame, const Node& node)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node);
    Operands operands(children.size());
    for (std::size_t k = 0; k < children.size(); ++k)
        operands[k] = evaluate(frame, children[k]);
    return placed(frame, node, operands.span(),
                  [&] { return element(operands[0], operands.span().subspan(1), m_settings.origin); });
}

Qud::Handle Evaluator::evaluate_matrix(const Frame& frame, const Node& node)
{
    const std::span<const NodeIndex> children = frame.tree.children_of(node);
    if (children.empty())
        return Qud::MatVal::empty();
    const std::size_t columns = node.content;
    try {
        Qud::MatBuilder builder(static_cast<std::uint32_t>(children.size() / columns),
                                static_cast<std::uint32_t>(columns));
        for (std::size_t k = 0; k < children.size(); ++k) {
            const Node& child = frame.tree.nodes[children[k]];
            if (child.kind == NodeKind::number) // the usual element needs no value of its own
                builder.set_number(k / columns, k % columns, frame.tree.numbers[child.content], 0.0,
                                   Qud::Dim::identity);
            else
                builder.set(k / columns, k % columns, evaluate(frame, children[k]));
        }
        return builder.finish();
    } catch (...) {
        rethrow_at({.frame = frame, .node = node, .offset = node.offset});
    }
}

} // namespace worksheet
