#pragma once

#include "bailuxhost/value.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace worksheet {

using NodeIndex = std::uint32_t;

enum class NodeKind : std::uint8_t {
    number,
    imaginary,
    text,
    name,
    parameter, ///< of the function whose body this is
    matrix,    ///< elements in the order of the rows
    call,      ///< what is called, then the arguments
    element,   ///< the array, then one or two indices
    transpose,
    negate,
    chain, ///< operands of binary operators of one rank, applied from left to right
};

enum class Operator : std::uint8_t {
    none,
    multiply,
    divide,
    power,
    juxtapose, ///< a literal before a name: a product that stands at the name
    add,
    subtract,
    equal,
    not_equal,
    less,
    less_equal,
    greater,
    greater_equal,
};

/// One node. What `content` means depends on the kind: an index into the tree's numbers (number, imaginary), texts
/// (text), names (name) or the parameters; the number of columns of a matrix.
struct Node {
    NodeKind kind;
    Operator op = Operator::none; ///< of an operand in a chain: the operator before it
    std::uint16_t height = 0;     ///< of the tree below it
    std::uint32_t start = 0;      ///< where its first character stands in the statement
    std::uint32_t offset = 0;     ///< where an error of its own is shown: the operator, the bracket, the name
    std::uint32_t op_offset = 0;  ///< of an operand in a chain: where `op` stands
    std::uint32_t content = 0;
    std::uint32_t first_child = 0;
    std::uint32_t child_count = 0;
};

/// A syntax tree whose nodes lie in one row, so that however deep it is, it goes away in one sweep.
struct Tree {
    /// How deep brackets, operators and calls may be nested in one statement.
    static constexpr std::size_t max_height = 1000;

    std::vector<Node> nodes;
    std::vector<NodeIndex> children;
    std::vector<double> numbers;
    std::vector<std::string> names;
    std::vector<std::string> parameters; ///< of the function whose body this is
    std::vector<Qud::Handle> texts;

    std::span<const NodeIndex> children_of(const Node& node) const
    {
        return std::span(children).subspan(node.first_child, node.child_count);
    }
};

} // namespace worksheet
