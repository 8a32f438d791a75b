#include "worksheet/display/value_text.hpp"

#include "bailuxhost/matval.hpp"
#include "worksheet/display/matrix_layout.hpp"
#include "worksheet/display/text_width.hpp"

#include <string_view>

namespace worksheet::display {

namespace {

constexpr std::size_t longest_text = 10000; // bytes; beyond, the middle is left out

std::string whole_text(const std::string& text)
{
    if (text.size() <= longest_text)
        return printable_lines(text);
    const std::string_view all(text);
    const std::size_t half = longest_text / 2;
    return printable_lines(prefix_of_width(all.substr(0, half), half)) + "\n... " + std::to_string(text.size()) +
           " bytes ...\n" + printable_lines(all.substr(all.size() - half));
}

std::string function_text(const Qud::FunVal& function)
{
    const std::size_t least = function.least();
    const std::size_t most = function.most();
    std::string count = std::to_string(least);
    if (most == Qud::FunVal::any_count)
        count += " or more arguments";
    else if (most != least)
        count += " to " + std::to_string(most) + " arguments";
    else
        count += least == 1 ? " argument" : " arguments";
    return "function " + function.name() + " of " + count;
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + line;
    return text;
}

} // namespace

std::string value_text(const Qud::Handle& value, const Room& room, const ShownUnit* shown)
{
    if (const Qud::NumVal* const number = Qud::as_number(value))
        return scalar_text(number->re(), number->im(), number->m_dim, shown);
    if (const Qud::MatVal* const M = Qud::matrix_of(value))
        return joined(matrix_lines(*M, room, shown));
    if (const Qud::StrVal* const text = Qud::as_text(value))
        return whole_text(text->text());
    if (const Qud::FunVal* const function = Qud::as_function(value))
        return function_text(*function);
    return {};
}

} // namespace worksheet::display
