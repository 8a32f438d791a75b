#include "worksheet/syntax/characters.hpp"

#include <unicode/uchar.h>

namespace worksheet {

namespace {

constexpr bool is_ascii_letter(char32_t code) noexcept
{
    return (code >= U'a' && code <= U'z') || (code >= U'A' && code <= U'Z');
}

constexpr bool is_continuation(char byte) noexcept
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// The general category of a character as a bit of ICU's masks. Its tables are compiled in: nothing is loaded.
std::uint32_t category(char32_t code) noexcept
{
    return U_GET_GC_MASK(static_cast<UChar32>(code));
}

} // namespace

Character character_at(std::string_view text, std::size_t offset) noexcept
{
    const auto first = static_cast<unsigned char>(text[offset]);
    if (first < 0x80)
        return {.code = first, .bytes = 1};
    const std::size_t bytes = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || offset + bytes > text.size())
        return {};
    char32_t code = first & (0x7FU >> bytes);
    for (std::size_t i = 1; i < bytes; ++i) {
        if (!is_continuation(text[offset + i]))
            return {};
        code = code << 6 | (static_cast<unsigned char>(text[offset + i]) & 0x3FU);
    }
    const bool overlong = (bytes == 3 && code < 0x800) || (bytes == 4 && code < 0x10000);
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (overlong || surrogate || code > 0x10FFFF)
        return {};
    return {.code = code, .bytes = bytes};
}

bool is_valid_utf8(std::string_view text) noexcept
{
    for (std::size_t i = 0; i < text.size();) {
        const Character c = character_at(text, i);
        if (c.code == Character::invalid)
            return false;
        i += c.bytes;
    }
    return true;
}

std::size_t count_characters(std::string_view text) noexcept
{
    std::size_t count = 0;
    for (std::size_t i = 0; i < text.size(); ++count) {
        const bool line_end_of_two = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        i += line_end_of_two ? 2 : character_at(text, i).bytes;
    }
    return count;
}

bool begins_name(char32_t code) noexcept
{
    if (code < 0x80)
        return is_ascii_letter(code) || code == U'_';
    return code != Character::invalid && (category(code) & U_GC_L_MASK) != 0;
}

bool continues_name(char32_t code) noexcept
{
    if (code < 0x80)
        return is_ascii_letter(code) || code == U'_' || (code >= U'0' && code <= U'9');
    return code != Character::invalid && (category(code) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_ND_MASK)) != 0;
}

std::size_t name_length(std::string_view text) noexcept
{
    if (text.empty() || !begins_name(character_at(text, 0).code))
        return 0;
    std::size_t length = 0;
    while (length < text.size()) {
        const Character c = character_at(text, length);
        if (!continues_name(c.code))
            break;
        length += c.bytes;
    }
    return length;
}

} // namespace worksheet
