#include "worksheet/syntax/lexer.hpp"

#include "worksheet/syntax/characters.hpp"
#include "worksheet/syntax/number_text.hpp"
#include "worksheet/syntax/source.hpp"
#include "worksheet/syntax/syntax_error.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace worksheet {

namespace {

struct Symbol {
    std::string_view text;
    TokenKind kind;
};

/// Longer ones first where one begins another.
constexpr std::array symbols{
    Symbol{":=", TokenKind::define},
    Symbol{"->", TokenKind::arrow},
    Symbol{"==", TokenKind::equal},
    Symbol{"!=", TokenKind::not_equal},
    Symbol{"<=", TokenKind::less_equal},
    Symbol{">=", TokenKind::greater_equal},
    Symbol{"<", TokenKind::less},
    Symbol{">", TokenKind::greater},
    Symbol{"+", TokenKind::plus},
    Symbol{"-", TokenKind::minus},
    Symbol{"*", TokenKind::times},
    Symbol{"/", TokenKind::divide},
    Symbol{"^", TokenKind::power},
    Symbol{"'", TokenKind::transpose},
    Symbol{"(", TokenKind::open_parenthesis},
    Symbol{")", TokenKind::close_parenthesis},
    Symbol{"[", TokenKind::open_bracket},
    Symbol{"]", TokenKind::close_bracket},
    Symbol{",", TokenKind::comma},
    Symbol{";", TokenKind::semicolon},
};

/// A character that belongs to nothing, told in words.
std::string unexpected(std::string_view text, std::size_t offset)
{
    const Character c = character_at(text, offset);
    if (c.code == Character::invalid)
        return "these bytes are not UTF-8";
    if (c.code == U'=')
        return "'=' alone means nothing: ':=' defines, '==' compares";
    if (c.code == 0)
        return "a NUL character";
    if (c.code < 0x20 || c.code == 0x7F || (c.code >= 0x80 && c.code <= 0xA0))
        return fmt::format("unexpected character U+{:04X}", static_cast<std::uint32_t>(c.code));
    return fmt::format("unexpected '{}'", text.substr(offset, c.bytes));
}

} // namespace

void Lexer::skip_blanks() noexcept
{
    while (m_offset < m_text.size()) {
        const char c = m_text[m_offset];
        if (c == '#')
            m_offset = std::min(m_text.find('\n', m_offset), m_text.size());
        else if (is_blank(c) || c == '\n')
            ++m_offset;
        else
            return;
    }
}

Token Lexer::take(TokenKind kind, std::size_t bytes) noexcept
{
    Token token{.kind = kind, .offset = m_offset, .text = m_text.substr(m_offset, bytes)};
    m_offset += bytes;
    return token;
}

Token Lexer::next()
{
    const std::size_t behind = m_offset;
    skip_blanks();
    if (m_offset == m_text.size())
        return {.kind = TokenKind::end, .offset = behind, .text = {}};
    const std::string_view rest = m_text.substr(m_offset);
    if (rest[0] == '"')
        return text_token();
    if (const Token number = number_token(); number.kind != TokenKind::end)
        return number;
    if (const std::size_t length = name_length(rest); length > 0)
        return take(TokenKind::name, length);
    return symbol_token();
}

Token Lexer::number_token() noexcept
{
    const std::string_view rest = m_text.substr(m_offset);
    const ReadNumber read = read_number(rest);
    if (read.length == 0)
        return {};
    // "2i" is imaginary, "2in" is 2 times the name `in`
    const std::string_view behind = rest.substr(read.length);
    const bool imaginary = behind.starts_with('i') && name_length(behind) == 1;
    Token token = take(imaginary ? TokenKind::imaginary : TokenKind::number, read.length + (imaginary ? 1 : 0));
    token.number = read.value;
    return token;
}

Token Lexer::text_token()
{
    for (std::size_t i = m_offset + 1; i < m_text.size() && m_text[i] != '\n';) {
        const Character c = character_at(m_text, i);
        if (c.code == Character::invalid || c.code == 0)
            raise_syntax_error(unexpected(m_text, i), i);
        i += c.bytes;
        if (c.code == U'"')
            return take(TokenKind::text, i - m_offset);
        if (c.code == U'\\' && i < m_text.size() && m_text[i] != '\n')
            i += character_at(m_text, i).bytes;
    }
    raise_syntax_error("this text is not closed", m_offset);
}

Token Lexer::symbol_token()
{
    const std::string_view rest = m_text.substr(m_offset);
    const auto* const symbol =
        std::find_if(symbols.begin(), symbols.end(), [&](const Symbol& s) { return rest.starts_with(s.text); });
    if (symbol == symbols.end())
        raise_syntax_error(unexpected(m_text, m_offset), m_offset);
    return take(symbol->kind, symbol->text.size());
}

std::string content_of(const Token& text)
{
    std::string content;
    const std::string_view inside = text.text.substr(1, text.text.size() - 2);
    for (std::size_t i = 0; i < inside.size(); ++i) {
        if (inside[i] != '\\') {
            content += inside[i];
            continue;
        }
        const char escaped = inside[++i];
        if (escaped == 'n')
            content += '\n';
        else if (escaped == 't')
            content += '\t';
        else if (escaped == '"' || escaped == '\\')
            content += escaped;
        else
            raise_syntax_error("a text knows the escapes \\\" \\\\ \\n \\t", text.offset + i);
    }
    return content;
}

std::string description(const Token& token)
{
    switch (token.kind) {
    case TokenKind::end:
        return "the end";
    case TokenKind::number:
    case TokenKind::imaginary:
        return fmt::format("the number {}", token.text);
    case TokenKind::text:
        return "a text";
    case TokenKind::name:
        return fmt::format("the name {}", token.text);
    default:
        return fmt::format("'{}'", token.text);
    }
}

} // namespace worksheet
