#include "worksheet/syntax/expression_parser.hpp"

#include "efiutl/messages.hpp"
#include "worksheet/syntax/syntax_error.hpp"

#include <fmt/format.h>

#include <algorithm>

namespace worksheet {

/// One level of nesting, as long as it lives.
class ExpressionParser::Level {
public:
    explicit Level(ExpressionParser& parser) : m_parser(parser)
    {
        if (++parser.m_depth > Tree::max_height || parser.m_stack.is_reached())
            throw SyntaxError(msg::nesting_too_deep, parser.m_token.offset);
    }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { --m_parser.m_depth; }

private:
    ExpressionParser& m_parser;
};

ExpressionParser::Ranked ExpressionParser::ranked(TokenKind kind)
{
    switch (kind) {
    case TokenKind::times:
        return {Operator::multiply, Rank::product};
    case TokenKind::divide:
        return {Operator::divide, Rank::product};
    case TokenKind::plus:
        return {Operator::add, Rank::sum};
    case TokenKind::minus:
        return {Operator::subtract, Rank::sum};
    case TokenKind::equal:
        return {Operator::equal, Rank::comparison};
    case TokenKind::not_equal:
        return {Operator::not_equal, Rank::comparison};
    case TokenKind::less:
        return {Operator::less, Rank::comparison};
    case TokenKind::less_equal:
        return {Operator::less_equal, Rank::comparison};
    case TokenKind::greater:
        return {Operator::greater, Rank::comparison};
    case TokenKind::greater_equal:
        return {Operator::greater_equal, Rank::comparison};
    default:
        return {};
    }
}

ExpressionParser::Rank ExpressionParser::tighter(Rank rank)
{
    return rank == Rank::comparison ? Rank::sum : Rank::product;
}

void ExpressionParser::advance()
{
    m_last = m_token.kind;
    m_token = m_lexer.next();
}

bool ExpressionParser::accept(TokenKind kind)
{
    if (!at(kind))
        return false;
    advance();
    return true;
}

void ExpressionParser::expect(TokenKind kind, const char* what)
{
    if (!accept(kind))
        raise_syntax_error(fmt::format("{} expected, not {}", what, description(m_token)), m_token.offset);
}

NodeIndex ExpressionParser::add(Node node, std::size_t mark)
{
    std::size_t height = 0;
    for (std::size_t i = mark; i < m_pending.size(); ++i)
        height = std::max<std::size_t>(height, m_tree.nodes[m_pending[i]].height + 1U);
    if (height > Tree::max_height)
        throw SyntaxError(msg::nesting_too_deep, node.offset);
    node.height = static_cast<std::uint16_t>(height);
    node.first_child = static_cast<std::uint32_t>(m_tree.children.size());
    node.child_count = static_cast<std::uint32_t>(m_pending.size() - mark);
    m_tree.children.insert(m_tree.children.end(), m_pending.begin() + static_cast<std::ptrdiff_t>(mark),
                           m_pending.end());
    m_pending.resize(mark);
    m_tree.nodes.push_back(node);
    return static_cast<NodeIndex>(m_tree.nodes.size() - 1);
}

NodeIndex ExpressionParser::add_leaf(NodeKind kind, std::size_t content)
{
    const Node leaf{.kind = kind, .start = here(), .offset = here(), .content = static_cast<std::uint32_t>(content)};
    return add(leaf, m_pending.size());
}

void ExpressionParser::push_operand(NodeIndex operand, Operator op, std::size_t op_offset)
{
    m_tree.nodes[operand].op = op;
    m_tree.nodes[operand].op_offset = static_cast<std::uint32_t>(op_offset);
    m_pending.push_back(operand);
}

/// Operands of one rank, in a row: a long sum is not deep.
NodeIndex ExpressionParser::chain(Rank rank)
{
    const std::size_t mark = m_pending.size();
    const auto operand = [&] { return rank == Rank::product ? signed_operand() : chain(tighter(rank)); };
    const NodeIndex first = operand();
    for (Ranked next = ranked(m_token.kind); next.op != Operator::none && next.rank == rank;
         next = ranked(m_token.kind)) {
        if (m_pending.size() == mark)
            push_operand(first, Operator::none, 0);
        const std::size_t op_offset = m_token.offset;
        advance();
        push_operand(operand(), next.op, op_offset);
    }
    if (m_pending.size() == mark)
        return first;
    return add({.kind = NodeKind::chain, .start = start_of(first), .offset = start_of(first)}, mark);
}

NodeIndex ExpressionParser::signed_operand()
{
    if (!at(TokenKind::minus))
        return literals_and_names();
    const Level level(*this);
    const std::uint32_t offset = here();
    advance();
    const std::size_t mark = m_pending.size();
    m_pending.push_back(signed_operand());
    return add({.kind = NodeKind::negate, .start = offset, .offset = offset}, mark);
}

/// `5 m^2`: where a number literal is followed by a name, the power before is multiplied by the power after.
NodeIndex ExpressionParser::literals_and_names()
{
    const std::size_t mark = m_pending.size();
    const NodeIndex first = power();
    while ((m_last == TokenKind::number || m_last == TokenKind::imaginary) && at(TokenKind::name)) {
        if (m_pending.size() == mark)
            push_operand(first, Operator::none, 0);
        const std::size_t name_offset = m_token.offset;
        push_operand(power(), Operator::juxtapose, name_offset);
    }
    if (m_pending.size() == mark)
        return first;
    return add({.kind = NodeKind::chain, .start = start_of(first), .offset = start_of(first)}, mark);
}

NodeIndex ExpressionParser::power()
{
    const NodeIndex base = postfix();
    if (!at(TokenKind::power))
        return base;
    const std::size_t op_offset = m_token.offset;
    advance();
    const std::size_t mark = m_pending.size();
    push_operand(base, Operator::none, 0);
    push_operand(exponent(), Operator::power, op_offset);
    return add({.kind = NodeKind::chain, .start = start_of(base), .offset = start_of(base)}, mark);
}

/// `2^-1`, and `2^3^2` as 2^(3^2).
NodeIndex ExpressionParser::exponent()
{
    const Level level(*this);
    if (!at(TokenKind::minus))
        return power();
    const std::uint32_t offset = here();
    advance();
    const std::size_t mark = m_pending.size();
    m_pending.push_back(exponent());
    return add({.kind = NodeKind::negate, .start = offset, .offset = offset}, mark);
}

NodeIndex ExpressionParser::postfix()
{
    const bool is_literal = at(TokenKind::number) || at(TokenKind::imaginary) || at(TokenKind::text);
    NodeIndex node = primary();
    for (;;) {
        if (at(TokenKind::open_parenthesis)) {
            if (is_literal)
                raise_syntax_error("a number or text cannot be called: is a '*' missing?", m_token.offset);
            node = call(node);
        } else if (at(TokenKind::open_bracket)) {
            node = element(node);
        } else if (at(TokenKind::transpose)) {
            const std::size_t mark = m_pending.size();
            m_pending.push_back(node);
            node = add({.kind = NodeKind::transpose, .start = start_of(node), .offset = here()}, mark);
            advance();
        } else {
            return node;
        }
    }
}

NodeIndex ExpressionParser::primary()
{
    switch (m_token.kind) {
    case TokenKind::number:
    case TokenKind::imaginary:
    case TokenKind::text:
        return literal();
    case TokenKind::name:
        return name();
    case TokenKind::open_parenthesis:
        return in_parentheses();
    case TokenKind::open_bracket:
        return matrix();
    default:
        raise_syntax_error("a value expected, not " + description(m_token), m_token.offset);
    }
}

NodeIndex ExpressionParser::literal()
{
    NodeIndex node = 0;
    if (at(TokenKind::text)) {
        m_tree.texts.push_back(Qud::StrVal::make(content_of(m_token)));
        node = add_leaf(NodeKind::text, m_tree.texts.size() - 1);
    } else {
        m_tree.numbers.push_back(m_token.number);
        node = add_leaf(at(TokenKind::number) ? NodeKind::number : NodeKind::imaginary, m_tree.numbers.size() - 1);
    }
    advance();
    return node;
}

NodeIndex ExpressionParser::name()
{
    const std::vector<std::string>& parameters = m_tree.parameters;
    const auto parameter = std::find(parameters.begin(), parameters.end(), m_token.text);
    NodeIndex node = 0;
    if (parameter != parameters.end()) {
        node = add_leaf(NodeKind::parameter, static_cast<std::size_t>(parameter - parameters.begin()));
    } else {
        m_tree.names.emplace_back(m_token.text);
        node = add_leaf(NodeKind::name, m_tree.names.size() - 1);
    }
    advance();
    return node;
}

NodeIndex ExpressionParser::in_parentheses()
{
    const Level level(*this);
    const std::uint32_t offset = here();
    advance();
    const NodeIndex node = expression();
    expect(TokenKind::close_parenthesis, "')'");
    m_tree.nodes[node].start = offset;
    return node;
}

NodeIndex ExpressionParser::matrix()
{
    const Level level(*this);
    const std::uint32_t offset = here();
    const std::size_t mark = m_pending.size();
    std::size_t columns = 0;
    advance();
    while (!at(TokenKind::close_bracket)) {
        const std::size_t row = m_pending.size();
        const std::size_t row_offset = m_token.offset;
        m_pending.push_back(expression());
        while (accept(TokenKind::comma))
            m_pending.push_back(expression());
        const std::size_t length = m_pending.size() - row;
        if (row == mark)
            columns = length;
        if (length != columns)
            raise_syntax_error(fmt::format("this row has {} {}, the first one {}", length,
                                           length == 1 ? "element" : "elements", columns),
                               row_offset);
        if (at(TokenKind::close_bracket))
            break;
        expect(TokenKind::semicolon, "',', ';' or ']'");
        if (at(TokenKind::close_bracket))
            raise_syntax_error("a row expected, not ']'", m_token.offset);
    }
    advance();
    const Node node{
        .kind = NodeKind::matrix, .start = offset, .offset = offset, .content = static_cast<std::uint32_t>(columns)};
    return add(node, mark);
}

NodeIndex ExpressionParser::call(NodeIndex function)
{
    const Level level(*this);
    const std::size_t mark = m_pending.size();
    m_pending.push_back(function);
    advance();
    if (!at(TokenKind::close_parenthesis)) {
        m_pending.push_back(expression());
        while (accept(TokenKind::comma))
            m_pending.push_back(expression());
    }
    expect(TokenKind::close_parenthesis, "',' or ')'");
    return add({.kind = NodeKind::call, .start = start_of(function), .offset = start_of(function)}, mark);
}

NodeIndex ExpressionParser::element(NodeIndex array)
{
    const Level level(*this);
    const std::uint32_t offset = here();
    const std::size_t mark = m_pending.size();
    m_pending.push_back(array);
    advance();
    m_pending.push_back(expression());
    if (accept(TokenKind::comma))
        m_pending.push_back(expression());
    expect(TokenKind::close_bracket, "']' after one or two indices");
    return add({.kind = NodeKind::element, .start = start_of(array), .offset = offset}, mark);
}

} // namespace worksheet
