#include "worksheet/syntax/source.hpp"

#include <algorithm>

namespace worksheet {

namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

std::size_t end_of_line(std::string_view source, std::size_t offset) noexcept
{
    return std::min(source.find('\n', offset), source.size());
}

/// Where the text that begins at `offset` ends: behind its closing quote, or at the end of its line.
std::size_t end_of_text(std::string_view source, std::size_t offset, bool& closed) noexcept
{
    closed = false;
    for (std::size_t i = offset + 1; i < source.size() && source[i] != '\n'; ++i) {
        if (source[i] == '"') {
            closed = true;
            return i + 1;
        }
        if (source[i] == '\\' && i + 1 < source.size() && source[i + 1] != '\n')
            ++i;
    }
    return end_of_line(source, offset);
}

/// Walks over one statement from its first character.
struct Walk {
    std::size_t offset;         ///< where it stopped: a line end, a comment at the end, or the end of the source
    std::size_t last;           ///< behind the last character that is no blank and in no comment
    std::size_t first_open = 0; ///< the outermost bracket that is open
    std::size_t depth = 0;
    std::size_t line_ends = 0;
    bool ends_here = false;

    void step(std::string_view source) noexcept
    {
        const char c = source[offset];
        if (c == '\n') {
            ends_here = depth == 0;
            if (!ends_here) {
                ++line_ends;
                ++offset;
            }
        } else if (c == '#') {
            ends_here = depth == 0;
            if (!ends_here)
                offset = end_of_line(source, offset);
        } else if (c == '"') {
            bool closed = false;
            offset = end_of_text(source, offset, closed);
            last = offset;
            if (!closed) {
                ends_here = true;
                depth = 0;
            }
        } else {
            bracket(c);
            ++offset;
            if (!is_blank(c))
                last = offset;
        }
    }

    void bracket(char c) noexcept
    {
        if (c == '(' || c == '[') {
            if (depth++ == 0)
                first_open = offset;
        } else if ((c == ')' || c == ']') && depth > 0) {
            --depth;
        }
    }
};

} // namespace

StatementReader::StatementReader(std::string_view source) noexcept : m_source(source)
{
    if (source.starts_with(byte_order_mark))
        m_offset = byte_order_mark.size();
}

void StatementReader::skip_blank_lines() noexcept
{
    while (m_offset < m_source.size()) {
        const char c = m_source[m_offset];
        if (c == '\n')
            ++m_line;
        if (c == '#')
            m_offset = end_of_line(m_source, m_offset);
        else if (is_blank(c) || c == '\n')
            ++m_offset;
        else
            return;
    }
}

std::optional<StatementText> StatementReader::next() noexcept
{
    skip_blank_lines();
    if (m_offset == m_source.size())
        return std::nullopt;
    const std::size_t begin = m_offset;
    Walk walk{.offset = begin, .last = begin};
    while (!walk.ends_here && walk.offset < m_source.size())
        walk.step(m_source);

    StatementText statement{.text = m_source.substr(begin, walk.last - begin), .line = m_line, .open_bracket = {}};
    if (walk.depth > 0)
        statement.open_bracket = walk.first_open - begin;
    m_offset = walk.offset;
    m_line += walk.line_ends;
    return statement;
}

} // namespace worksheet
