#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace worksheet::display {

/// How many cells of a terminal the text takes: combining marks none, wide characters (Chinese, Japanese, Korean,
/// emoji) two.
std::size_t text_width(std::string_view text);

/// The text with control characters as escapes ("\n", "\t", "\x1b") and what is not UTF-8 as U+FFFD: nothing that a
/// worksheet or a data file holds can steer a terminal.
std::string printable(std::string_view text);
/// The same, with line ends and tabs kept.
std::string printable_lines(std::string_view text);

/// The beginning of the text that fits `width` cells.
std::string_view prefix_of_width(std::string_view text, std::size_t width);
/// The end of the text that fits `width` cells.
std::string_view suffix_of_width(std::string_view text, std::size_t width);

/// The text, or its beginning and end with "..." between them where it is wider than `width` cells.
std::string cut_in_the_middle(std::string_view text, std::size_t width);

} // namespace worksheet::display
