#pragma once

#include <cstddef>
#include <string_view>

/// Worksheets are UTF-8: how their characters are read, counted and told apart.
namespace worksheet {

/// One character of a text and the bytes it takes.
struct Character {
    static constexpr char32_t invalid = 0xFFFFFFFF; ///< bytes that are no UTF-8; the first of them counts as one

    char32_t code = invalid;
    std::size_t bytes = 1;
};

/// The character that begins at `offset`, which is before the text's end. Overlong forms, surrogates and what is cut
/// off are invalid.
Character character_at(std::string_view text, std::size_t offset) noexcept;

bool is_valid_utf8(std::string_view text) noexcept;

/// How many characters the text has; invalid bytes count as one each, CR LF counts as one.
std::size_t count_characters(std::string_view text) noexcept;

/// Whether a name may begin with the character: a letter of any script, or `_`.
bool begins_name(char32_t code) noexcept;
/// Whether a name may go on with the character: also digits, and the marks that belong to a letter.
bool continues_name(char32_t code) noexcept;

/// The bytes that a name takes at the start of the text, 0 when none begins there.
std::size_t name_length(std::string_view text) noexcept;

} // namespace worksheet
