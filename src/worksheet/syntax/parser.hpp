#pragma once

#include "worksheet/syntax/tree.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace worksheet {

enum class StatementKind : std::uint8_t { expression, variable, function, setting };

/// A statement that has been read.
struct Statement {
    StatementKind kind = StatementKind::expression;
    std::string name; ///< of a definition or setting
    std::uint32_t name_offset = 0;

    Tree tree;
    NodeIndex root = 0;

    std::optional<NodeIndex> unit; ///< what stands behind `->`
    std::string unit_text;
    std::uint32_t arrow_offset = 0;

    std::string setting_value; ///< as it was written
    std::uint32_t setting_value_offset = 0;
};

/// Reads one statement. What is known of it stands in `statement` also when it is left by an error: the name of a
/// definition is.
/// @throws SyntaxError, whose message is "nesting too deep" beyond Tree::max_height
void parse(std::string_view text, Statement& statement);

} // namespace worksheet
