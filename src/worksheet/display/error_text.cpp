#include "worksheet/display/error_text.hpp"

#include "worksheet/display/text_width.hpp"
#include "worksheet/syntax/characters.hpp"

#include <algorithm>

namespace worksheet::display {

namespace {

constexpr std::string_view red = "\x1b[1;31m";
constexpr std::string_view blue = "\x1b[34m";
constexpr std::string_view plain = "\x1b[0m";
constexpr std::string_view gap = "...";
constexpr std::size_t narrowest_source = 30; // even where the file's name leaves less room

/// The line of a statement that a column points at.
struct Place {
    std::string_view line;
    std::size_t number; // counted from the statement's first line, which is 0
    std::size_t offset; // of the pointed-at character in the line, in bytes
};

/// @param column   counts characters from 1, a line end as one
Place find_place(std::string_view text, std::size_t column)
{
    std::size_t start = 0;
    std::size_t lines = 0;
    std::size_t at = 0;
    for (std::size_t passed = 1; at < text.size() && passed < column; ++passed) {
        if (text.substr(at, 2) == "\r\n")
            ++at; // one line end
        if (text[at] == '\n') {
            start = at + 1;
            ++lines;
        }
        at += character_at(text, at).bytes;
    }
    const std::size_t end = std::min(text.find_first_of("\r\n", start), text.size());
    return {.line = text.substr(start, end - start), .number = lines, .offset = std::min(at, end) - start};
}

std::string without_tabs(std::string_view text)
{
    std::string result;
    for (const char c : text)
        result += c == '\t' ? ' ' : c;
    return printable(result);
}

/// A line cut to the room around the place that the caret points at.
struct Excerpt {
    std::string text;
    std::size_t caret; // cells before it
};

Excerpt excerpt(const Place& place, std::size_t width)
{
    const std::string before = without_tabs(place.line.substr(0, place.offset));
    const std::string after =
        without_tabs(place.line.substr(place.offset, 16 * width)); // a long line's end is not read
    Excerpt result{.text = before, .caret = text_width(before)};
    if (result.caret + text_width(after) <= width && place.offset + 16 * width >= place.line.size()) {
        result.text += after;
        return result;
    }
    const std::size_t ahead = width * 2 / 3;
    if (result.caret > ahead) {
        result.text = std::string(gap).append(suffix_of_width(before, ahead - gap.size()));
        result.caret = text_width(result.text);
    }
    const std::size_t left = width - result.caret;
    if (text_width(after) <= left)
        result.text += after;
    else
        result.text.append(prefix_of_width(after, left - gap.size())).append(gap);
    return result;
}

std::string quoted_names(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t k = 0; k < names.size(); ++k) {
        if (k > 0)
            text += k + 1 == names.size() ? " or " : ", ";
        text += printable(names[k]);
    }
    return text;
}

std::string remark(const StatementError& error)
{
    if (!error.near_names.empty())
        return "did you mean " + quoted_names(error.near_names) + "?";
    return printable(error.found);
}

} // namespace

std::string error_text(const StatementResult& result, std::string_view source_name, const Room& room, bool use_colours)
{
    const auto coloured = [&](std::string_view colour, std::string_view text) {
        std::string piece;
        if (use_colours)
            piece += colour;
        piece += text;
        if (use_colours)
            piece += plain;
        return piece;
    };

    const StatementError& error = result.error;
    const Place place = find_place(result.text, error.caret);
    std::string where = "  ";
    if (!source_name.empty())
        where.append(printable(source_name)).append(":").append(std::to_string(result.line + place.number)).append(" ");
    const std::size_t taken = text_width(where) + 3; // "|  "
    const Excerpt shown = excerpt(place, std::max(narrowest_source, room.width - std::min(room.width, taken)));

    std::string text = coloured(red, "error:");
    text.append(" ").append(cut_in_the_middle(printable(error.message), 4 * room.width)).append("\n");
    text.append(coloured(blue, where + "|")).append("  ").append(shown.text).append("\n");
    text.append(coloured(blue, std::string(text_width(where), ' ') + "|")).append(shown.caret + 2, ' ');
    text.append(coloured(red, "^"));
    const std::string found = remark(error);
    if (!found.empty())
        text.append(" ").append(found);
    return text;
}

} // namespace worksheet::display
