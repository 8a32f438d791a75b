#pragma once

#include "efiutl/api.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Efi::Affine {

class Pattern;

/// A text that a pattern covers from its first to its last byte, and what its named groups took. Points into the text.
class BAILUXSKO_API Match {
public:
    /// What the group took, or nothing when it took no part. The pattern has a group of that name.
    std::optional<std::string_view> group(const char* name) const;

    struct Free {
        void operator()(void* groups) const noexcept;
    };

private:
    friend class Pattern;
    Match(const Pattern& pattern, std::string_view text) : m_pattern(&pattern), m_text(text) {}

    const Pattern* m_pattern;
    std::string_view m_text;
    std::unique_ptr<void, Free> m_groups;
};

/// A regular expression with named groups. Digits and blanks are those of ASCII, texts are bytes and may hold NUL.
class BAILUXSKO_API Pattern {
public:
    /// Compiles the expression, which is one of ours. @throws std::bad_alloc
    explicit Pattern(const char* expression);

    /// The first match in the text, if it is the whole text. A shorter first match counts as none, although another way
    /// to match might cover all: "11/2" is not 1 and 1/2. Takes a time that grows with the length of the text only.
    /// @throws std::bad_alloc
    std::optional<Match> covers(std::string_view text) const;

private:
    friend class Match;
    struct Free {
        void operator()(void* code) const noexcept;
    };
    std::unique_ptr<void, Free> m_code;
};

/// Reads the group's digits, with a point whatever the locale says; leaves the number alone when the group took no
/// part. What no double holds is inf or 0.
BAILUXSKO_API void parse(const Match& match, const char* group, double& number);
/// Whether the group took a "-"; leaves the flag alone when the group took no part.
BAILUXSKO_API void parse(const Match& match, const char* group, bool& is_negative);

} // namespace Efi::Affine
