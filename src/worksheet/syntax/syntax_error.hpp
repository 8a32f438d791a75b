#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <utility>

namespace worksheet {

/// Why a statement cannot be read, and where that lies in it. Raised by lexer and parser.
class SyntaxError final : public std::exception {
public:
    SyntaxError(std::string message, std::size_t offset) : m_message(std::move(message)), m_offset(offset) {}

    const char* what() const noexcept override { return m_message.c_str(); }
    const std::string& message() const noexcept { return m_message; }
    std::size_t offset() const noexcept { return m_offset; } ///< in bytes from the statement's first

private:
    std::string m_message;
    std::size_t m_offset;
};

/// Raises "syntax error: what" at a place of the statement.
[[noreturn]] inline void raise_syntax_error(const std::string& what, std::size_t offset)
{
    throw SyntaxError("syntax error: " + what, offset);
}

} // namespace worksheet
