#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace worksheet {

enum class TokenKind : std::uint8_t {
    end,
    number,
    imaginary,
    text,
    name,
    define,        // :=
    arrow,         // ->
    equal,         // ==
    not_equal,     // !=
    less,          // <
    less_equal,    // <=
    greater,       // >
    greater_equal, // >=
    plus,
    minus,
    times,
    divide,
    power,
    transpose,
    open_parenthesis,
    close_parenthesis,
    open_bracket,
    close_bracket,
    comma,
    semicolon,
};

struct Token {
    TokenKind kind = TokenKind::end;
    std::size_t offset = 0;
    std::string_view text;
    double number = 0.0;
};

/// Reads the tokens of one statement, one at a time. Line ends inside a statement stand in brackets: they are blanks.
/// A copy goes on from where the original stands.
class Lexer {
public:
    explicit Lexer(std::string_view statement) noexcept : m_text(statement) {}

    /// @throws SyntaxError
    Token next();

private:
    void skip_blanks() noexcept;
    Token number_token() noexcept;
    Token text_token();
    Token symbol_token();
    Token take(TokenKind kind, std::size_t bytes) noexcept;

    std::string_view m_text;
    std::size_t m_offset = 0;
};

/// What the token of a text stands for: without its quotes, escapes resolved. @throws SyntaxError
std::string content_of(const Token& text);

/// For people: "'+'", "the name x", "the end".
std::string description(const Token& token);

} // namespace worksheet
