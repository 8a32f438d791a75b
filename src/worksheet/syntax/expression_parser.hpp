#pragma once

#include "worksheet/stack_limit.hpp"
#include "worksheet/syntax/lexer.hpp"
#include "worksheet/syntax/tree.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace worksheet {

/// Reads expressions by recursive descent: one function a row of the table of operators, the three ranks of chains in
/// one. Stands at a token that has not been taken yet. Everything raises SyntaxError.
class ExpressionParser {
public:
    ExpressionParser(std::string_view text, Tree& tree) : m_tree(tree), m_lexer(text) { advance(); }

    const Token& token() const noexcept { return m_token; }
    std::uint32_t here() const noexcept { return static_cast<std::uint32_t>(m_token.offset); }
    bool at(TokenKind kind) const noexcept { return m_token.kind == kind; }
    void advance();
    bool accept(TokenKind kind);
    void expect(TokenKind kind, const char* what);
    /// A lexer that goes on behind the token, to look ahead with.
    Lexer ahead() const noexcept { return m_lexer; }

    NodeIndex expression() { return chain(Rank::comparison); }
    /// Without comparisons and sums outside parentheses.
    NodeIndex product() { return chain(Rank::product); }

private:
    /// How tightly an operator of a chain binds; unary minus is tighter than a product.
    enum class Rank : std::uint8_t { comparison, sum, product };
    struct Ranked {
        Operator op = Operator::none;
        Rank rank = Rank::comparison;
    };
    static Ranked ranked(TokenKind kind);
    static Rank tighter(Rank rank);

    NodeIndex chain(Rank rank);
    NodeIndex signed_operand();
    NodeIndex literals_and_names();
    NodeIndex power();
    NodeIndex exponent();
    NodeIndex postfix();
    NodeIndex primary();
    NodeIndex literal();
    NodeIndex name();
    NodeIndex in_parentheses();
    NodeIndex matrix();
    NodeIndex call(NodeIndex function);
    NodeIndex element(NodeIndex array);

    /// A node over the children that were pushed since `mark`.
    NodeIndex add(Node node, std::size_t mark);
    NodeIndex add_leaf(NodeKind kind, std::size_t content);
    void push_operand(NodeIndex operand, Operator op, std::size_t op_offset);
    std::uint32_t start_of(NodeIndex node) const { return m_tree.nodes[node].start; }

    class Level;

    Tree& m_tree;
    Lexer m_lexer;
    Token m_token;
    TokenKind m_last = TokenKind::end;
    std::size_t m_depth = 0;
    StackLimit m_stack;
    std::vector<NodeIndex> m_pending; ///< children of nodes that are not complete yet
};

} // namespace worksheet
