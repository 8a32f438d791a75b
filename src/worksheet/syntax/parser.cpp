#include "worksheet/syntax/parser.hpp"

#include "worksheet/syntax/expression_parser.hpp"
#include "worksheet/syntax/syntax_error.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace worksheet {

namespace {

class StatementParser {
public:
    StatementParser(std::string_view text, Statement& statement)
        : m_text(text), m_statement(statement), m_tokens(text, statement.tree)
    {
    }

    void statement();

private:
    bool is_name_before(TokenKind kind) const;
    bool is_function_header() const;
    void function_header();
    void setting();
    void shown_unit();
    void expect_end() const;

    std::string_view m_text;
    Statement& m_statement;
    ExpressionParser m_tokens;
};

void StatementParser::statement()
{
    if (m_tokens.at(TokenKind::name))
        m_statement.name_offset = m_tokens.here();
    if (is_function_header()) {
        m_statement.kind = StatementKind::function;
        m_statement.name = m_tokens.token().text;
        function_header();
        m_statement.root = m_tokens.expression();
    } else if (is_name_before(TokenKind::define)) {
        m_statement.kind = StatementKind::variable;
        m_statement.name = m_tokens.token().text;
        m_tokens.advance();
        m_tokens.advance();
        m_statement.root = m_tokens.expression();
    } else if (m_tokens.token().text == "set" && is_name_before(TokenKind::name)) {
        setting();
        return;
    } else {
        m_statement.root = m_tokens.expression();
        if (m_tokens.at(TokenKind::arrow))
            shown_unit();
    }
    expect_end();
}

/// Whether a name stands here and behind it a token of this kind.
bool StatementParser::is_name_before(TokenKind kind) const
{
    return m_tokens.at(TokenKind::name) && m_tokens.ahead().next().kind == kind;
}

/// Looks ahead for `name(p, q) :=`.
bool StatementParser::is_function_header() const
{
    if (!is_name_before(TokenKind::open_parenthesis))
        return false;
    Lexer ahead = m_tokens.ahead();
    ahead.next();
    Token token = ahead.next();
    while (token.kind == TokenKind::name) {
        token = ahead.next();
        if (token.kind == TokenKind::comma)
            token = ahead.next();
    }
    return token.kind == TokenKind::close_parenthesis && ahead.next().kind == TokenKind::define;
}

void StatementParser::function_header()
{
    std::vector<std::string>& parameters = m_statement.tree.parameters;
    m_tokens.advance();
    m_tokens.advance();
    while (!m_tokens.at(TokenKind::close_parenthesis)) {
        if (!parameters.empty())
            m_tokens.expect(TokenKind::comma, "','");
        const Token parameter = m_tokens.token();
        m_tokens.expect(TokenKind::name, "the name of a parameter");
        if (std::find(parameters.begin(), parameters.end(), parameter.text) != parameters.end())
            raise_syntax_error(fmt::format("the parameter {} stands there twice", parameter.text), parameter.offset);
        parameters.emplace_back(parameter.text);
    }
    m_tokens.advance();
    m_tokens.advance();
}

/// `set NAME VALUE`; what the value means is the setting's business.
void StatementParser::setting()
{
    m_tokens.advance();
    const Token name = m_tokens.token();
    m_statement.kind = StatementKind::setting;
    m_statement.name = name.text;
    m_statement.name_offset = m_tokens.here();
    m_tokens.advance();
    const bool has_value = !m_tokens.at(TokenKind::end);
    const std::size_t begin = has_value ? m_tokens.token().offset : name.offset + name.text.size();
    m_statement.setting_value = has_value ? m_text.substr(begin) : std::string_view();
    m_statement.setting_value_offset = static_cast<std::uint32_t>(begin);
}

void StatementParser::shown_unit()
{
    m_statement.arrow_offset = m_tokens.here();
    m_tokens.advance();
    const std::size_t begin = m_tokens.token().offset;
    m_statement.unit = m_tokens.product();
    const std::size_t end = m_tokens.at(TokenKind::end) ? m_text.size() : m_tokens.token().offset;
    m_statement.unit_text = m_text.substr(begin, end - begin);
}

void StatementParser::expect_end() const
{
    const Token& token = m_tokens.token();
    if (token.kind == TokenKind::define)
        raise_syntax_error("only a name, or a function with the names of its parameters, is defined by ':='",
                           token.offset);
    if (token.kind == TokenKind::arrow)
        raise_syntax_error("'->' shows a value in a unit, once, at the end of an expression", token.offset);
    if (token.kind != TokenKind::end)
        raise_syntax_error("an operator or the end expected, not " + description(token), token.offset);
}

} // namespace

void parse(std::string_view text, Statement& statement)
{
    if (text.size() > std::numeric_limits<std::uint32_t>::max())
        raise_syntax_error("the statement is longer than 4 GiB", 0);
    StatementParser(text, statement).statement();
}

} // namespace worksheet
