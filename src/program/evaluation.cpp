#include "program/evaluation.hpp"

#include "program/output.hpp"
#include "program/prompt.hpp"
#include "program/source.hpp"
#include "worksheet/display/error_text.hpp"
#include "worksheet/display/value_text.hpp"
#include "worksheet/json.hpp"
#include "worksheet/session.hpp"

#include <filesystem>
#include <optional>
#include <string>
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

    void report(const StatementResult& result)
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

    int exit_status() const { return m_failed ? some_failed : all_succeeded; }

private:
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

/// The statements of a file or of standard input.
int evaluate_source(const CommandLine& line, const std::string& file, const std::string& shown_name)
{
    std::string failure;
    const std::optional<std::string> source = read_source(file, failure);
    if (!source) {
        write_error("bailuxsko: cannot read " + shown_name + ": " + failure + "\n");
        return unusable;
    }
    worksheet::SheetSettings settings = line.settings;
    settings.folder = folder_of(file);
    worksheet::Session session(settings);
    Reporter reporter(line.json, shown_name);
    session.evaluate(*source, [&](const StatementResult& result) { reporter.report(result); });
    return reporter.exit_status();
}

/// Each argument by itself, as if it stood on a line of its own: an open bracket does not swallow the next one.
int evaluate_arguments(const CommandLine& line)
{
    worksheet::Session session(line.settings);
    Reporter reporter(line.json, {});
    std::size_t lines_before = 0;
    for (const std::string& statement : line.statements) {
        session.evaluate(statement, [&](StatementResult result) {
            result.line += lines_before;
            reporter.report(result);
        });
        ++lines_before;
    }
    return reporter.exit_status();
}

int evaluate_prompt(const CommandLine& line)
{
    worksheet::Session session(line.settings);
    Reporter reporter(line.json, {});
    Prompt prompt(session, line.json);
    std::string source;
    while (prompt.read(source))
        session.evaluate(source, [&](const StatementResult& result) { reporter.report(result); });
    return reporter.exit_status();
}

} // namespace

int evaluate(const CommandLine& line)
{
    if (line.command == CommandLine::Command::run)
        return evaluate_source(line, line.file, line.file == "-" ? "standard input" : line.file);
    if (!line.statements.empty())
        return evaluate_arguments(line);
    if (::isatty(STDIN_FILENO) != 0)
        return evaluate_prompt(line);
    return evaluate_source(line, "-", "standard input");
}

} // namespace program
