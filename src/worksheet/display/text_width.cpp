#include "worksheet/display/text_width.hpp"

#include "worksheet/syntax/characters.hpp"

#include <algorithm>
#include <clocale>
#include <cwchar>
#include <locale.h>

namespace worksheet::display {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD
constexpr std::string_view gap = "...";

bool is_control(char32_t character)
{
    // beside the C0 and C1 ranges: the marks that turn the direction of a line around
    return character < 0x20 || (character >= 0x7F && character < 0xA0) ||
           (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

/// The character at `at`, which moves behind it.
char32_t next_character(std::string_view text, std::size_t& at)
{
    const Character character = character_at(text, at);
    at += character.bytes;
    return character.code;
}

/// The C library's table of widths, whatever the environment's locale; null where there is none.
locale_t unicode_locale()
{
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

std::size_t character_width(char32_t character)
{
    if (character < 0x300)
        return is_control(character) ? 0 : 1;
    if (character == Character::invalid || unicode_locale() == nullptr)
        return 1;
    const locale_t before = ::uselocale(unicode_locale());
    const int width = ::wcwidth(static_cast<wchar_t>(character));
    ::uselocale(before);
    return width < 0 ? 1 : static_cast<std::size_t>(width);
}

std::string escape(char32_t character)
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
        const char32_t character = next_character(text, at);
        if (character == Character::invalid)
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
