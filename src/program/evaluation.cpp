#include "program/evaluation.hpp"

#include "program/output.hpp"
#include "program/prompt.hpp"
#include "program/source.hpp"
#include "worksheet/display/error_text.hpp"
#include "worksheet/display/value_text.hpp"
#include "worksheet/json.hpp"
#include "worksheet/session.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>

namespace program {

namespace {

using worksheet::StatementResult;

/// Shows results in the chosen form and remembers whether any was an error.
class Reporter {
public:
    Reporter(bool json, std::string source_name)
        : m_json(json), m_source_name(std::move(source_name)), m_colours(wants_colours(STDERR_FILENO))
    {
        m_results.width = terminal_width(STDOUT_FILENO, m_results.width);
        m_errors.width = terminal_width(STDERR_FILENO, m_errors.width);
    }

    /// A result that there is no memory to show is an error of its statement, and the worksheet goes on.
    void report(const StatementResult& result)
    {
        try {
            show(result);
        } catch (const std::bad_alloc&) {
            m_failed = true;
            show_out_of_memory(result.line);
        }
    }

    const std::string& source_name() const { return m_source_name; }
    int exit_status() const { return m_failed ? some_failed : all_succeeded; }

private:
    void show(const StatementResult& result)
    {
        using worksheet::display::error_text;
        using worksheet::display::value_text;

        const bool failed = result.kind == StatementResult::Kind::error;
        m_failed = m_failed || failed;
        if (m_json) {
            m_line.clear();
            worksheet::append_json(m_line, result);
            m_line += '\n';
            write_output(m_line);
        } else if (failed) {
            write_error(error_text(result, m_source_name, m_errors, m_colours) + '\n');
        } else if (result.kind == StatementResult::Kind::value) {
            const worksheet::ShownUnit* const shown = result.shown_unit ? &*result.shown_unit : nullptr;
            write_output(value_text(result.value, m_results, shown) + '\n');
        }
    }

    void show_out_of_memory(std::size_t line) const
    {
        if (!m_json) {
            write_error("error: out of memory\n");
            return;
        }
        std::array<char, 160> text{}; // room enough for the largest number
        const int length = std::snprintf(text.data(), text.size(),
                                         "{\"kind\":\"error\",\"message\":\"out of memory\",\"index\":-1,"
                                         "\"function\":\"\",\"line\":%zu,\"column\":1}\n",
                                         line);
        write_output({text.data(), static_cast<std::size_t>(length)});
    }

    const bool m_json;
    const std::string m_source_name;
    const bool m_colours;
    worksheet::display::Room m_results;
    worksheet::display::Room m_errors;
    std::string m_line;
    bool m_failed = false;
};

std::string folder_of(const std::string& file)
{
    const std::string folder = file == "-" ? std::string() : std::filesystem::path(file).parent_path().string();
    return folder.empty() ? "." : folder;
}

/// The statements of a source that is a part of another one, with so many lines before it.
void evaluate_part(worksheet::Session& session, std::string_view part, std::size_t lines_before, Reporter& reporter)
{
    session.evaluate(part, [&](StatementResult result) {
        result.line += lines_before;
        reporter.report(result);
    });
}

bool evaluate_standard_input(worksheet::Session& session, Reporter& reporter, std::string& failure)
{
    std::size_t lines_before = 0;
    return read_standard_input(
        [&](std::string_view piece) {
            evaluate_part(session, piece, lines_before, reporter);
            lines_before += static_cast<std::size_t>(std::count(piece.begin(), piece.end(), '\n'));
        },
        failure);
}

/// The statements of a file or of standard input. False when it cannot be read.
bool evaluate_source(const CommandLine& line, const std::string& file, Reporter& reporter)
{
    worksheet::SheetSettings settings = line.settings;
    settings.folder = folder_of(file);
    worksheet::Session session(settings);
    std::string failure;
    if (file == "-") {
        if (evaluate_standard_input(session, reporter, failure))
            return true;
    } else if (const std::optional<std::string> source = read_source(file, failure)) {
        session.evaluate(*source, [&](const StatementResult& result) { reporter.report(result); });
        return true;
    }
    write_error("bailuxsko: cannot read " + reporter.source_name() + ": " + failure + "\n");
    return false;
}

/// Each argument by itself, as if it stood on a line of its own: an open bracket does not swallow the next one.
void evaluate_arguments(const CommandLine& line, Reporter& reporter)
{
    worksheet::Session session(line.settings);
    std::size_t lines_before = 0;
    for (const std::string& statement : line.statements)
        evaluate_part(session, statement, lines_before++, reporter);
}

/// What people type who look for the way out of a prompt; both are ordinary names.
bool is_farewell(std::string_view source)
{
    const std::size_t length = source.find_last_not_of(" \n") + 1;
    const std::string_view typed = source.substr(0, length);
    return typed == "quit" || typed == "exit" || typed == "quit()" || typed == "exit()";
}

void evaluate_prompt(const CommandLine& line, Reporter& reporter)
{
    worksheet::Session session(line.settings);
    Prompt prompt(session, line.json);
    std::string source;
    while (prompt.read(source))
        session.evaluate(source, [&](const StatementResult& result) {
            reporter.report(result);
            if (result.kind == StatementResult::Kind::error && is_farewell(source))
                write_error("Control-D ends the program.\n");
        });
}

} // namespace

int evaluate(const CommandLine& line)
{
    const bool is_run = line.command == CommandLine::Command::run;
    const bool is_prompt = !is_run && line.statements.empty() && ::isatty(STDIN_FILENO) != 0;
    const bool is_source = is_run || (line.statements.empty() && !is_prompt);
    const std::string file = is_run ? line.file : "-";
    Reporter reporter(line.json, !is_source ? "" : file == "-" ? "standard input" : file);
    try {
        if (is_prompt)
            evaluate_prompt(line, reporter);
        else if (!is_source)
            evaluate_arguments(line, reporter);
        else if (!evaluate_source(line, file, reporter))
            return unusable;
    } catch (const ReaderGone&) { // it has what it wanted
    }
    return reporter.exit_status();
}

} // namespace program
