#include "program/command_line.hpp"

#include "program/output.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <sstream>

namespace program {

namespace {

constexpr int unusable = 2;

struct SettingOption {
    const char* option;
    const char* setting;
    const char* value_name;
    const char* help;
};

constexpr std::array<SettingOption, 4> setting_options = {{
    {"--origin", "origin", "N", "First index of every array (0)"},
    {"--tol", "tol", "X", "The tolerance TOL (1e-3)"},
    {"--strict-singularity-checking", "strict_singularity_checking", "on|off",
     "Invert with the library's own singularity test (on), or by LAPACK (off)"},
    {"--zero-over-zero-is-zero", "zero_over_zero_is_zero", "on|off", "Let 0/0 be 0 (off)"},
}};

void add_evaluation_options(CLI::App& command, CommandLine& line)
{
    command.add_flag("--json", line.json, "Print one JSON object a line for each statement, and nothing else");
    for (const SettingOption& row : setting_options)
        command
            .add_option_function<std::string>(
                row.option,
                [&line, row](const std::string& value) {
                    const std::string wrong = worksheet::apply_setting(line.settings, row.setting, value);
                    if (!wrong.empty())
                        throw CLI::ValidationError(row.option, wrong);
                },
                row.help)
            ->type_name(row.value_name)
            ->take_last()
            ->trigger_on_parse();
}

/// A statement may begin with a minus; `--name` is more likely a slip of the pen than a double negation.
std::optional<std::string> unknown_option(const std::vector<std::string>& statements)
{
    for (const std::string& statement : statements)
        if (statement.size() > 2 && statement.starts_with("--") &&
            std::isalpha(static_cast<unsigned char>(statement[2])) != 0)
            return statement;
    return std::nullopt;
}

/// How many of the words come before the `--` of an `eval` command: what follows it are statements, whatever they
/// look like.
int words_before_separator(int argc, char** argv)
{
    const auto is = [](std::string_view wanted) { return [wanted](const char* word) { return word == wanted; }; };
    char** const separator = std::find_if(argv, argv + argc, is("--"));
    const bool is_eval = std::find_if(argv, separator, is("eval")) != separator;
    return is_eval ? static_cast<int>(separator - argv) : argc;
}

/// What to say of a command line on which no command was found.
std::string without_command(const std::vector<std::string>& unexpected, const CLI::ParseError& error)
{
    if (!unexpected.empty() && unexpected.front().starts_with('-'))
        return "unknown option: " + unexpected.front();
    if (!unexpected.empty())
        return "no command " + unexpected.front() + "; there are run, eval and functions";
    if (error.get_name() == "RequiredError")
        return "a command is missing; there are run, eval and functions";
    return error.what();
}

CommandLine refuse(const std::string& message)
{
    write_error("bailuxsko: " + message + "\nTry bailuxsko --help.\n");
    CommandLine line;
    line.exit_status = unusable;
    return line;
}

} // namespace

CommandLine read_command_line(int argc, char** argv)
{
    CommandLine line;
    CLI::App app("Matrix algebra with units, in worksheets.", "bailuxsko");
    app.set_version_flag("--version", "bailuxsko " BAILUXSKO_VERSION, "Print the version");
    app.require_subcommand(1);
    app.get_formatter()->column_width(36);
    add_evaluation_options(app, line);

    CLI::App* const run = app.add_subcommand("run", "Evaluate a worksheet file and show every result");
    run->add_option("FILE", line.file, "The worksheet; - is standard input")->required()->type_name("");
    add_evaluation_options(*run, line);

    // The statements are what CLI11 calls extras: an option of many values would take "[1,2]" apart.
    CLI::App* const eval = app.add_subcommand("eval", "Evaluate each argument as a statement, or standard input");
    eval->set_help_flag("--help", "Print this help message and exit"); // `-h` is a statement
    eval->allow_extras();
    eval->footer("bailuxsko eval [OPTIONS] [STATEMENT...]: without a statement, standard input is read; on a terminal "
                 "that is a prompt, which Control-D ends.");
    add_evaluation_options(*eval, line);

    bool markdown = false;
    CLI::App* const functions = app.add_subcommand("functions", "List the functions, or show one");
    functions->add_option("NAME", line.function_name, "The function to show")->type_name("");
    functions->add_flag("--markdown", markdown, "Print the reference page")->group("");

    const int words = words_before_separator(argc, argv);
    try {
        app.parse(words, argv);
    } catch (const CLI::Success& asked) { // --help, --version
        std::ostringstream answer;
        line.exit_status = app.exit(asked, answer, answer);
        write_output(answer.str());
        return line;
    } catch (const CLI::ParseError& error) {
        return refuse(app.get_subcommands().empty() ? without_command(app.remaining(), error) : error.what());
    }

    if (run->parsed()) {
        line.command = CommandLine::Command::run;
    } else if (eval->parsed()) {
        line.command = CommandLine::Command::eval;
        line.statements = eval->remaining();
        if (const std::optional<std::string> option = unknown_option(line.statements))
            return refuse("unknown option: " + *option);
        for (int k = words + 1; k < argc; ++k)
            line.statements.emplace_back(argv[k]);
    } else {
        line.command = markdown ? CommandLine::Command::reference : CommandLine::Command::functions;
    }
    return line;
}

} // namespace program
