#include "program/function_pages.hpp"

#include "program/evaluation.hpp"
#include "program/output.hpp"
#include "program/reference.hpp"
#include "worksheet/display/text_width.hpp"
#include "worksheet/evaluation/names.hpp"
#include "worksheet/functions.hpp"

#include <algorithm>
#include <unistd.h>
#include <vector>

namespace program {

namespace {

using worksheet::display::text_width;

std::string padded(std::string text, std::size_t width)
{
    return text.append(width - std::min(width, text_width(text)), ' ');
}

void list_functions()
{
    constexpr std::size_t indent = 2;
    std::size_t widest = 0;
    for (const Evl::FunctionRow* const row : worksheet::all_functions())
        widest = std::max(widest, text_width(call_form(*row)));
    const std::size_t width = terminal_width(STDOUT_FILENO, ~std::size_t{0});
    std::string page;
    for (const Evl::FunctionRow* const row : worksheet::all_functions()) {
        const std::string line = padded(call_form(*row), widest + indent).append(row->summary);
        page.append(worksheet::display::prefix_of_width(line, width)).append("\n");
    }
    write_output(page);
}

void show_function(const Evl::FunctionRow& row)
{
    constexpr std::size_t label_width = 11;
    std::string page = call_form(row);
    page.append("\n  ").append(row.summary).append("\n\n");
    const auto add = [&](const char* label, std::string_view text) {
        page.append(padded(label, label_width)).append(text).append("\n");
    };
    if (!row.unit.empty())
        add("unit", row.unit);
    if (!handed_over(row).empty())
        add("reads", handed_over(row));
    const char* label = "raises";
    for (const Evl::Raise& raise : row.raises) {
        add(label, raise_text(raise));
        label = "";
    }
    add(label, "and what every call can raise:");
    for (const Evl::Raise& raise : Evl::common_raises())
        add("", raise_text(raise));
    add("example", row.example);
    for (const std::string& line : evaluated_example(row))
        add("", line);
    write_output(page);
}

int refuse_name(const std::string& name)
{
    std::string message = "bailuxsko: no function " + name;
    std::vector<std::string_view> names;
    for (const Evl::FunctionRow* const row : worksheet::all_functions())
        names.push_back(row->name);
    const std::vector<std::string> near = worksheet::nearest(name, names);
    for (std::size_t k = 0; k < near.size(); ++k)
        message.append(k == 0 ? "; did you mean " : " or ").append(near[k]);
    write_error(message.append(near.empty() ? "; bailuxsko functions lists them\n" : "?\n"));
    return unusable;
}

} // namespace

int show_reference()
{
    write_output(reference_page());
    return all_succeeded;
}

int show_functions(const std::string& name)
{
    if (name.empty()) {
        list_functions();
        return all_succeeded;
    }
    const Evl::FunctionRow* const row = worksheet::find_function(name);
    if (row == nullptr)
        return refuse_name(name);
    show_function(*row);
    return all_succeeded;
}

} // namespace program
