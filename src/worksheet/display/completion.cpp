#include "worksheet/display/completion.hpp"

#include "bailuxhost/unit_names.hpp"
#include "worksheet/evaluation/names.hpp"
#include "worksheet/functions.hpp"

#include <algorithm>
#include <set>

namespace worksheet::display {

namespace {

bool is_name_byte(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           (static_cast<unsigned char>(c) & 0x80U) != 0; // letters of other scripts
}

std::string_view name_at_end(std::string_view text)
{
    std::size_t start = text.size();
    while (start > 0 && is_name_byte(text[start - 1]))
        --start;
    while (start < text.size() && text[start] >= '0' && text[start] <= '9')
        ++start; // "5kN": the digits are a number
    return text.substr(start);
}

std::string common_prefix(const std::vector<std::string>& words)
{
    std::string prefix = words.front();
    for (const std::string& word : words)
        prefix.resize(static_cast<std::size_t>(
            std::mismatch(prefix.begin(), prefix.end(), word.begin(), word.end()).first - prefix.begin()));
    while (!prefix.empty() && prefix.size() < words.front().size() &&
           (static_cast<unsigned char>(words.front()[prefix.size()]) & 0xC0U) == 0x80U)
        prefix.pop_back(); // never half a character
    return prefix;
}

} // namespace

Completion complete_name(std::string_view before_cursor, const Session& session)
{
    const std::string_view typed = name_at_end(before_cursor);
    std::set<std::string> names;
    const auto offer = [&](std::string_view name) {
        if (name.starts_with(typed))
            names.emplace(name);
    };
    for (const std::string& name : session.names())
        offer(name);
    for (const Evl::FunctionRow* const row : all_functions())
        offer(row->name);
    for (const std::string_view name : constant_names())
        offer(name);
    for (const std::string& name : Qud::unit_names())
        offer(name);

    Completion found{.addition = {}, .choices = {names.begin(), names.end()}};
    if (typed.empty() || found.choices.empty())
        return found;
    found.addition = common_prefix(found.choices).substr(typed.size());
    if (found.choices.size() == 1 && find_function(found.choices.front()) != nullptr)
        found.addition += '(';
    return found;
}

} // namespace worksheet::display
