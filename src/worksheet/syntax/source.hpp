#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace worksheet {

/// A statement as it stands in a source, from its first character to its last.
struct StatementText {
    std::string_view text;
    std::size_t line = 1; ///< where it begins, from 1
    /// The outermost bracket that is never closed: the statement runs to the end of the source.
    std::optional<std::size_t> open_bracket;
};

/// Cuts a source into statements: a statement ends with its line, except inside brackets; `#` begins a comment. Any
/// closing bracket closes the innermost open one, and a text that is not closed ends its statement with its line, so
/// that one slip does not swallow the lines after it.
class StatementReader {
public:
    /// A byte-order mark at the start is skipped.
    explicit StatementReader(std::string_view source) noexcept;

    /// The next statement, or nothing at the end of the source.
    std::optional<StatementText> next() noexcept;

    /// Where the reader stands in the source: behind the statement handed out last, before its comment.
    std::size_t offset() const noexcept { return m_offset; }

private:
    void skip_blank_lines() noexcept;

    std::string_view m_source;
    std::size_t m_offset = 0;
    std::size_t m_line = 1;
};

/// Blanks inside a line; a carriage return only ever stands before a line's end.
constexpr bool is_blank(char c) noexcept
{
    return c == ' ' || c == '\t' || c == '\r';
}

} // namespace worksheet
