#include "table_check.hpp"

#include "worksheet/functions.hpp"
#include "worksheet/json.hpp"
#include "worksheet/session.hpp"

#include <algorithm>

namespace {

/// A message of the table that ends with a blank is followed by a name.
bool matches(const Evl::Raise& raise, std::string_view message, int index)
{
    const bool same = raise.message.ends_with(' ') ? message.starts_with(raise.message) : message == raise.message;
    return same && (raise.index == Evl::Raise::any_index || raise.index == index);
}

bool has(std::span<const Evl::Raise> raises, std::string_view message, int index)
{
    return std::any_of(raises.begin(), raises.end(), [&](const auto& r) { return matches(r, message, index); });
}

std::string pair_text(std::string_view message, int index)
{
    const std::string number = index == Evl::Raise::any_index ? "any" : std::to_string(index);
    return '"' + std::string(message) + "\" (" + number + ')';
}

} // namespace

std::vector<std::string> compare_raises(const std::set<RaisedError>& raised)
{
    std::vector<std::string> faults;
    for (const Evl::FunctionRow* const row : worksheet::all_functions())
        for (const Evl::Raise& raise : row->raises)
            if (std::none_of(raised.begin(), raised.end(), [&](const RaisedError& error) {
                    return std::get<0>(error) == row->name && matches(raise, std::get<1>(error), std::get<2>(error));
                }))
                faults.push_back(std::string(row->name) + ": no worksheet raises " +
                                 pair_text(raise.message, raise.index));
    for (const auto& [function, message, index] : raised) {
        const Evl::FunctionRow* const row = worksheet::find_function(function);
        if (row == nullptr || !(has(row->raises, message, index) || has(Evl::common_raises(), message, index)))
            faults.push_back(function + ": its row does not name " + pair_text(message, index));
    }
    return faults;
}

std::vector<std::string> run_examples(const std::string& folder)
{
    std::vector<std::string> faults;
    for (const Evl::FunctionRow* const row : worksheet::all_functions()) {
        worksheet::SheetSettings settings;
        settings.folder = folder;
        worksheet::Session session(settings);
        std::size_t count = 0;
        session.evaluate(row->example, [&](const worksheet::StatementResult& result) {
            ++count;
            if (result.kind == worksheet::StatementResult::Kind::error) {
                std::string text;
                worksheet::append_json(text, result);
                faults.push_back(std::string(row->name) + ": " + std::string(row->example) + " gives " + text);
            }
        });
        if (count == 0)
            faults.push_back(std::string(row->name) + ": there is no example");
    }
    return faults;
}
