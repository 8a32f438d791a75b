#include "worksheet/display/text_width.hpp"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace worksheet::display {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD
constexpr std::string_view gap = "...";

/// The character at `at`, which moves behind it; negative for bytes that are not UTF-8.
UChar32 next_character(std::string_view text, std::size_t& at)
{
    auto position = static_cast<std::int64_t>(at);
    const auto length = static_cast<std::int64_t>(text.size());
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 character = 0;
    U8_NEXT(bytes, position, length, character);
    at = static_cast<std::size_t>(position);
    return character;
}

std::size_t character_width(UChar32 character)
{
    if (character >= 0x20 && character < 0x300)
        return character >= 0x7F && character < 0xA0 ? 0 : 1;
    const int category = u_charType(character);
    if (category == U_NON_SPACING_MARK || category == U_ENCLOSING_MARK || category == U_FORMAT_CHAR)
        return 0;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

bool is_control(UChar32 character)
{
    // beside the C0 and C1 ranges: the marks that turn the direction of a line around
    return character < 0x20 || (character >= 0x7F && character < 0xA0) ||
           (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

std::string escape(UChar32 character)
{
    if (character == '\n')
        return "\\n";
    if (character == '\t')
        return "\\t";
    constexpr std::string_view hex = "0123456789abcdef";
    std::string text = "\\x";
    bool leading = true;
    for (int shift = 12; shift >= 0; shift -= 4) {
        const auto digit = static_cast<std::size_t>((character >> shift) & 0xF);
        leading = leading && digit == 0 && shift > 4;
        if (!leading)
            text += hex[digit];
    }
    return text;
}

std::string made_printable(std::string_view text, bool keep_lines)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const UChar32 character = next_character(text, at);
        if (character < 0)
            result += replacement;
        else if (is_control(character) && !(keep_lines && (character == '\n' || character == '\t')))
            result += escape(character);
        else
            result += text.substr(start, at - start);
    }
    return result;
}

} // namespace

std::size_t text_width(std::string_view text)
{
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();)
        width += character_width(next_character(text, at));
    return width;
}

std::string printable(std::string_view text)
{
    return made_printable(text, false);
}

std::string printable_lines(std::string_view text)
{
    return made_printable(text, true);
}

std::string_view prefix_of_width(std::string_view text, std::size_t width)
{
    std::size_t end = 0;
    std::size_t taken = 0;
    for (std::size_t at = 0; at < text.size(); end = at) {
        taken += character_width(next_character(text, at));
        if (taken > width)
            break;
    }
    return text.substr(0, end);
}

std::string_view suffix_of_width(std::string_view text, std::size_t width)
{
    const std::size_t whole = text_width(text);
    std::size_t at = 0;
    for (std::size_t dropped = 0; whole - dropped > width;)
        dropped += character_width(next_character(text, at));
    return text.substr(at);
}

std::string cut_in_the_middle(std::string_view text, std::size_t width)
{
    // a character takes four bytes at most and rarely none: long texts need not be measured
    if (text.size() <= width || (text.size() < 64 * width && text_width(text) <= width))
        return std::string(text);
    const std::size_t kept = width > gap.size() ? width - gap.size() : 0;
    const std::string_view head = prefix_of_width(text, kept - kept / 2);
    std::string_view end = text.substr(text.size() - std::min(text.size(), 64 * width));
    while (!end.empty() && (static_cast<unsigned char>(end.front()) & 0xC0U) == 0x80U)
        end.remove_prefix(1); // the rest of a character that was cut
    return std::string(head) + std::string(gap) + std::string(suffix_of_width(end, kept / 2));
}

} // namespace worksheet::display
