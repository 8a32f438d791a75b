#include "bailuxsko/scalar/pattern.hpp"

#include <charconv>
#include <limits>
#include <new>
#include <pcre2.h>

namespace Efi::Affine {

namespace {

pcre2_match_data* match_data(void* groups)
{
    return static_cast<pcre2_match_data*>(groups);
}

template <class T>
T* allocated(T* object)
{
    if (!object)
        throw std::bad_alloc();
    return object;
}

/// A number of digits and at most one point that no double holds: beyond the largest with a digit in front of the
/// point, else below the smallest.
double out_of_range(std::string_view number)
{
    const std::string_view integer = number.substr(0, number.find('.'));
    const bool is_large = integer.find_first_not_of('0') != std::string_view::npos;
    return is_large ? std::numeric_limits<double>::infinity() : 0.0;
}

} // namespace

void Match::Free::operator()(void* groups) const noexcept
{
    pcre2_match_data_free(match_data(groups));
}

void Pattern::Free::operator()(void* code) const noexcept
{
    pcre2_code_free(static_cast<pcre2_code*>(code));
}

// Without UTF and UCP, \d and \s know ASCII only and every byte is a character. Each of the expressions that matches
// anywhere but at the start of a text is no cover, so that looking there is enough; and what follows each of their
// repeats cannot start with what is repeated or may be missing, so that no text makes the search go back and forth.
Pattern::Pattern(const char* expression)
{
    int error = 0;
    PCRE2_SIZE where = 0;
    m_code.reset(allocated(pcre2_compile(reinterpret_cast<PCRE2_SPTR>(expression), PCRE2_ZERO_TERMINATED,
                                         PCRE2_ANCHORED, &error, &where, nullptr)));
}

std::optional<Match> Pattern::covers(std::string_view text) const
{
    const auto* const code = static_cast<const pcre2_code*>(m_code.get());
    Match match(*this, text);
    match.m_groups.reset(allocated(pcre2_match_data_create_from_pattern(code, nullptr)));
    pcre2_match_data* const groups = match_data(match.m_groups.get());
    const int status = pcre2_match(code, reinterpret_cast<PCRE2_SPTR>(text.data()), text.size(), 0, 0, groups, nullptr);
    if (status == PCRE2_ERROR_NOMEMORY)
        throw std::bad_alloc();
    if (status < 0 || pcre2_get_ovector_pointer(groups)[1] != text.size())
        return std::nullopt;
    return match;
}

std::optional<std::string_view> Match::group(const char* name) const
{
    const auto* const code = static_cast<const pcre2_code*>(m_pattern->m_code.get());
    const int number = pcre2_substring_number_from_name(code, reinterpret_cast<PCRE2_SPTR>(name));
    if (number < 0)
        return std::nullopt;
    const PCRE2_SIZE* const place =
        pcre2_get_ovector_pointer(match_data(m_groups.get())) + std::size_t{2} * static_cast<std::size_t>(number);
    if (place[0] == PCRE2_UNSET)
        return std::nullopt;
    return m_text.substr(place[0], place[1] - place[0]);
}

void parse(const Match& match, const char* group, double& number)
{
    const std::optional<std::string_view> digits = match.group(group);
    if (!digits)
        return;
    const std::from_chars_result read = std::from_chars(digits->data(), digits->data() + digits->size(), number);
    if (read.ec == std::errc::result_out_of_range)
        number = out_of_range(*digits);
}

void parse(const Match& match, const char* group, bool& is_negative)
{
    if (const std::optional<std::string_view> sign = match.group(group))
        is_negative = *sign == "-";
}

} // namespace Efi::Affine
