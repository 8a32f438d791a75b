#include "worksheet/syntax/parser.hpp"

#include "efiutl/messages.hpp"
#include "worksheet/stack_limit.hpp"
#include "worksheet/syntax/lexer.hpp"
#include "worksheet/syntax/syntax_error.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace worksheet {

namespace {

/// How tightly an operator of a chain binds; unary minus stands between `product` and what is tighter.
enum class Rank : std::uint8_t { comparison, sum, product };

struct Ranked {
    Operator op = Operator::none;
    Rank rank = Rank::comparison;
};

Ranked ranked(TokenKind kind)
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

constexpr Rank tighter(Rank rank)
{
    return rank == Rank::comparison ? Rank::sum : Rank::product;
}

/// Recursive descent: one function a row of the table of operators, the three ranks of chains in one.
class Parser {
public:
    Parser(std::string_view text, Statement& statement)
        : m_text(text), m_statement(statement), m_tree(statement.tree), m_lexer(text)
    {
        advance();
    }

    void statement();

private:
    void advance()
    {
        m_last = m_token.kind;
        m_token = m_lexer.next();
    }
    bool at(TokenKind kind) const { return m_token.kind == kind; }
    bool accept(TokenKind kind)
    {
        if (!at(kind))
            return false;
        advance();
        return true;
    }
    void expect(TokenKind kind, const char* what)
    {
        if (!accept(kind))
            raise_syntax_error(fmt::format("{} expected, not {}", what, description(m_token)), m_token.offset);
    }

    bool is_function_header();
    void function_header();
    void setting();
    void shown_unit();

    NodeIndex expression() { return chain(Rank::comparison); }
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
    std::uint32_t here() const { return static_cast<std::uint32_t>(m_token.offset); }

    /// One level of nesting, as long as it lives.
    class Level {
    public:
        explicit Level(Parser& parser) : m_parser(parser)
        {
            if (++parser.m_depth > Tree::max_height || parser.m_stack.is_reached())
                throw SyntaxError(msg::nesting_too_deep, parser.m_token.offset);
        }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { --m_parser.m_depth; }

    private:
        Parser& m_parser;
    };

    std::string_view m_text;
    Statement& m_statement;
    Tree& m_tree;
    Lexer m_lexer;
    Token m_token;
    TokenKind m_last = TokenKind::end;
    std::size_t m_depth = 0;
    StackLimit m_stack;
    std::vector<NodeIndex> m_pending; ///< children of nodes that are not complete yet
};

NodeIndex Parser::add(Node node, std::size_t mark)
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

NodeIndex Parser::add_leaf(NodeKind kind, std::size_t content)
{
    const Node leaf{.kind = kind, .start = here(), .offset = here(), .content = static_cast<std::uint32_t>(content)};
    return add(leaf, m_pending.size());
}

void Parser::push_operand(NodeIndex operand, Operator op, std::size_t op_offset)
{
    m_tree.nodes[operand].op = op;
    m_tree.nodes[operand].op_offset = static_cast<std::uint32_t>(op_offset);
    m_pending.push_back(operand);
}

void Parser::statement()
{
    const Lexer behind_first = m_lexer;
    const Token first = m_token;
    if (first.kind == TokenKind::name) {
        m_statement.name_offset = here();
        if (is_function_header()) {
            m_statement.kind = StatementKind::function;
            m_statement.name = first.text;
            function_header();
            m_statement.root = expression();
        } else {
            advance();
            if (accept(TokenKind::define)) {
                m_statement.kind = StatementKind::variable;
                m_statement.name = first.text;
                m_statement.root = expression();
            } else if (first.text == "set" && at(TokenKind::name)) {
                setting();
                return;
            } else {
                m_lexer = behind_first;
                m_token = first;
            }
        }
    }
    if (m_statement.kind == StatementKind::expression) {
        m_statement.root = expression();
        if (at(TokenKind::arrow))
            shown_unit();
    }
    if (at(TokenKind::define))
        raise_syntax_error("only a name, or a function with the names of its parameters, is defined by ':='",
                           m_token.offset);
    if (at(TokenKind::arrow))
        raise_syntax_error("'->' shows a value in a unit, once, at the end of an expression", m_token.offset);
    if (!at(TokenKind::end))
        raise_syntax_error("unexpected " + description(m_token), m_token.offset);
}

/// Looks ahead for `name(p, q) :=`; what cannot be read is not one.
bool Parser::is_function_header()
{
    Lexer ahead = m_lexer;
    Token token = ahead.next();
    if (token.kind != TokenKind::open_parenthesis)
        return false;
    token = ahead.next();
    while (token.kind == TokenKind::name) {
        token = ahead.next();
        if (token.kind == TokenKind::comma)
            token = ahead.next();
    }
    return token.kind == TokenKind::close_parenthesis && ahead.next().kind == TokenKind::define;
}

void Parser::function_header()
{
    std::vector<std::string>& parameters = m_tree.parameters;
    advance();
    advance();
    while (!at(TokenKind::close_parenthesis)) {
        if (!parameters.empty())
            expect(TokenKind::comma, "','");
        if (at(TokenKind::name) && std::find(parameters.begin(), parameters.end(), m_token.text) != parameters.end())
            raise_syntax_error(fmt::format("the parameter {} stands there twice", m_token.text), m_token.offset);
        parameters.emplace_back(m_token.text);
        expect(TokenKind::name, "the name of a parameter");
    }
    advance();
    advance();
}

void Parser::setting()
{
    m_statement.kind = StatementKind::setting;
    m_statement.name = m_token.text;
    m_statement.name_offset = here();
    const std::size_t behind_name = m_token.offset + m_token.text.size();
    advance();
    m_statement.setting_value = at(TokenKind::end) ? std::string() : std::string(m_text.substr(m_token.offset));
    m_statement.setting_value_offset = at(TokenKind::end) ? static_cast<std::uint32_t>(behind_name) : here();
}

void Parser::shown_unit()
{
    m_statement.arrow_offset = here();
    advance();
    const std::size_t begin = m_token.offset;
    m_statement.unit = chain(Rank::product);
    const std::size_t end = at(TokenKind::end) ? m_text.size() : m_token.offset;
    m_statement.unit_text = m_text.substr(begin, end - begin);
}

/// Operands of one rank, in a row: a long sum is not deep.
NodeIndex Parser::chain(Rank rank)
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

NodeIndex Parser::signed_operand()
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
NodeIndex Parser::literals_and_names()
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

NodeIndex Parser::power()
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
NodeIndex Parser::exponent()
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

NodeIndex Parser::postfix()
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

NodeIndex Parser::primary()
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

NodeIndex Parser::literal()
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

NodeIndex Parser::name()
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

NodeIndex Parser::in_parentheses()
{
    const Level level(*this);
    const std::uint32_t offset = here();
    advance();
    const NodeIndex node = expression();
    expect(TokenKind::close_parenthesis, "')'");
    m_tree.nodes[node].start = offset;
    return node;
}

NodeIndex Parser::matrix()
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
            raise_syntax_error(fmt::format("this row has {} elements, the first one {}", length, columns), row_offset);
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

NodeIndex Parser::call(NodeIndex function)
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

NodeIndex Parser::element(NodeIndex array)
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

} // namespace

void parse(std::string_view text, Statement& statement)
{
    if (text.size() > std::numeric_limits<std::uint32_t>::max())
        raise_syntax_error("the statement is longer than 4 GiB", 0);
    Parser(text, statement).statement();
}

} // namespace worksheet
