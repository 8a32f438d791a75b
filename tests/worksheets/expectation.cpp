#include "expectation.hpp"

#include <sstream>
#include <stdexcept>

namespace {

std::string_view trimmed(std::string_view line)
{
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = line.find_first_not_of(blanks);
    return begin == std::string_view::npos ? std::string_view()
                                           : line.substr(begin, line.find_last_not_of(blanks) - begin + 1);
}

[[noreturn]] void raise_unreadable(std::string_view line)
{
    throw std::runtime_error("this expectation cannot be read: " + std::string(line));
}

void add_value(Expectation& expectation, std::string_view line)
{
    expectation.kind = Expectation::Kind::value;
    if (!expectation.expression.empty())
        expectation.expression += '\n';
    expectation.expression += trimmed(line);
}

void add_near_value(Expectation& expectation, std::string_view line)
{
    std::istringstream words{std::string(line)};
    double tolerance = 0.0;
    if (!(words >> tolerance))
        raise_unreadable(line);
    std::string expression;
    std::getline(words, expression);
    expectation.tolerance = tolerance;
    add_value(expectation, expression);
}

/// The text between the quotes at the start of the line, which is taken off.
std::string take_message(std::string_view& line)
{
    std::string message;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"') {
            line.remove_prefix(i + 1);
            return message;
        }
        if (line[i] == '\\' && i + 1 < line.size())
            ++i;
        message += line[i];
    }
    raise_unreadable(line);
}

void read_error(Expectation& expectation, std::string_view line)
{
    expectation.kind = Expectation::Kind::error;
    std::string_view rest = line;
    if (rest.starts_with("syntax error")) {
        expectation.message = "syntax error";
        expectation.message_begins = true;
        rest.remove_prefix(expectation.message.size());
    } else if (rest.starts_with('"')) {
        expectation.message = take_message(rest);
    } else {
        raise_unreadable(line);
    }
    std::istringstream words{std::string(rest)};
    if (int index = 0; !expectation.message_begins && words >> index)
        expectation.index = index;
    else
        words.clear();
    if (!expectation.message_begins && !expectation.index)
        raise_unreadable(line);
    for (std::string word; words >> word;) {
        std::size_t column = 0;
        if (word == "column" && words >> column)
            expectation.column = column;
        else if (word == "column" || expectation.function)
            raise_unreadable(line);
        else
            expectation.function = word == "\"\"" ? "" : word;
    }
}

} // namespace

Expectation read_expectation(std::string_view comments)
{
    Expectation expectation;
    while (!comments.empty()) {
        const std::size_t end = std::min(comments.find('\n'), comments.size());
        const std::string_view line = trimmed(comments.substr(0, end));
        comments.remove_prefix(std::min(end + 1, comments.size()));
        if (line.starts_with("#="))
            add_value(expectation, line.substr(2));
        else if (line.starts_with("#~"))
            add_near_value(expectation, line.substr(2));
        else if (line.starts_with("#!"))
            read_error(expectation, trimmed(line.substr(2)));
        else if (line.starts_with("#{")) {
            expectation.kind = Expectation::Kind::json;
            expectation.json = line.substr(1);
        }
    }
    return expectation;
}
