#include "program/reference.hpp"

#include "worksheet/display/error_text.hpp"
#include "worksheet/display/value_text.hpp"
#include "worksheet/functions.hpp"
#include "worksheet/session.hpp"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <utility>

namespace program {

namespace {

constexpr std::string_view unnamed_family = "Further functions";

std::string_view family_of(const Evl::FunctionRow& row)
{
    return row.family.empty() ? unnamed_family : row.family;
}

/// The families, each once, in alphabetical order.
std::vector<std::string_view> families()
{
    std::vector<std::string_view> names;
    for (const Evl::FunctionRow* const row : worksheet::all_functions())
        names.push_back(family_of(*row));
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    return names;
}

std::string index_text(int index)
{
    if (index == Evl::Raise::any_index)
        return "the argument at fault";
    if (index == -1)
        return "the call";
    if (index == 0)
        return "its arithmetic";
    return "argument " + std::to_string(index);
}

/// A folder for the examples that read or write files, gone afterwards with all that is in it.
class ExampleFolder {
public:
    explicit ExampleFolder(std::string path) : m_path(std::move(path))
    {
        std::ofstream(m_path + "/points.csv") << "x,y\n0,0\n1.5,2\n";
    }
    ExampleFolder(ExampleFolder&& other) noexcept : m_path(std::exchange(other.m_path, {})) {}
    ExampleFolder& operator=(ExampleFolder&&) = delete;
    ~ExampleFolder()
    {
        std::error_code ignored;
        if (!m_path.empty())
            std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& path() const { return m_path; }

private:
    std::string m_path;
};

/// The folder for a function of files, nothing for any other.
std::optional<ExampleFolder> example_folder(const Evl::FunctionRow& row)
{
    if (row.params.find("file") == std::string_view::npos)
        return std::nullopt;
    std::string path = (std::filesystem::temp_directory_path() / "bailuxsko-XXXXXX").string();
    if (::mkdtemp(path.data()) == nullptr)
        return std::nullopt;
    return ExampleFolder(std::move(path));
}

/// The head of a Markdown chapter as its link: lower case, blanks to hyphens, the rest of the punctuation dropped.
std::string anchor(std::string_view title)
{
    std::string link;
    for (const char c : title) {
        if (c == ' ')
            link += '-';
        else if (c >= 'A' && c <= 'Z')
            link += static_cast<char>(c - 'A' + 'a');
        else if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-')
            link += c;
    }
    return link;
}

void add_raises(std::string& page, std::span<const Evl::Raise> raises)
{
    for (std::size_t k = 0; k < raises.size(); ++k)
        page.append(k == 0 ? "" : ", ").append(raise_text(raises[k]));
}

void add_entry(std::string& page, const Evl::FunctionRow& row)
{
    page.append("### `").append(call_form(row)).append("`\n\n").append(row.summary).append("\n\n");
    if (!row.unit.empty())
        page.append("- Unit: ").append(row.unit).append("\n");
    if (const std::string_view settings = handed_over(row); !settings.empty())
        page.append("- Reads ").append(settings).append("\n");
    if (!row.raises.empty()) {
        page.append("- Raises: ");
        add_raises(page, row.raises);
        page.append("\n");
    }
    page.append("\n```worksheet\n").append(row.example).append("\n```\n```output\n");
    for (const std::string& line : evaluated_example(row))
        page.append(line).append("\n");
    page.append("```\n\n");
}

} // namespace

std::string call_form(const Evl::FunctionRow& row)
{
    return std::string(row.name).append("(").append(row.params).append(")");
}

std::string raise_text(const Evl::Raise& raise)
{
    std::string text(raise.message);
    if (text.ends_with(' ')) // what follows is known at the call only
        text += "NAME";
    return text.append(" (").append(index_text(raise.index)).append(")");
}

std::string_view handed_over(const Evl::FunctionRow& row)
{
    if (row.takes_origin && row.takes_tol)
        return "the worksheet's origin and TOL";
    if (row.takes_origin)
        return "the worksheet's origin";
    return row.takes_tol ? "the worksheet's TOL" : "";
}

std::vector<std::string> evaluated_example(const Evl::FunctionRow& row)
{
    using worksheet::StatementResult;
    const worksheet::display::Room room{.width = 80, .rows = 20};
    std::string output;
    const std::optional<ExampleFolder> folder = example_folder(row);
    worksheet::SheetSettings settings;
    if (folder)
        settings.folder = folder->path();
    worksheet::Session session(settings);
    session.evaluate(row.example, [&](const StatementResult& result) {
        if (result.kind == StatementResult::Kind::error)
            output.append(worksheet::display::error_text(result, {}, room, false)).append("\n");
        else if (result.kind == StatementResult::Kind::value)
            output
                .append(worksheet::display::value_text(result.value, room,
                                                       result.shown_unit ? &*result.shown_unit : nullptr))
                .append("\n");
    });
    std::vector<std::string> lines;
    for (std::size_t start = 0; start < output.size();) {
        const std::size_t end = output.find('\n', start);
        lines.push_back(output.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::string reference_page()
{
    std::string page = "# Functions\n\n"
                       "<!-- Made by `bailuxsko functions --markdown` from the function tables: change those. -->\n\n"
                       "Every function of a worksheet, with an example and what evaluating it shows. "
                       "`bailuxsko functions NAME` shows one\non a terminal. Arguments in brackets may be left out.\n\n"
                       "An error names its argument, counted from 1. Besides its own errors every call can raise ";
    add_raises(page, Evl::common_raises());
    page.append(".\n\n");
    for (const std::string_view family : families()) {
        page.append("- [").append(family).append("](#").append(anchor(family)).append("):");
        const char* separator = " ";
        for (const Evl::FunctionRow* const row : worksheet::all_functions())
            if (family_of(*row) == family) {
                page.append(separator).append("`").append(row->name).append("`");
                separator = ", ";
            }
        page.append("\n");
    }
    page.append("\n");
    for (const std::string_view family : families()) {
        page.append("## ").append(family).append("\n\n");
        for (const Evl::FunctionRow* const row : worksheet::all_functions())
            if (family_of(*row) == family)
                add_entry(page, *row);
    }
    page.erase(page.find_last_not_of('\n') + 2);
    return page;
}

} // namespace program
