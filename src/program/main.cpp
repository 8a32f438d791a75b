#include "program/command_line.hpp"
#include "program/evaluation.hpp"
#include "program/function_pages.hpp"
#include "program/output.hpp"

#include <csignal>
#include <cstdio>
#include <exception>

int main(int argc, char** argv)
{
    using Command = program::CommandLine::Command;

    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is an ordinary error of writing
    try {
        const program::CommandLine line = program::read_command_line(argc, argv);
        switch (line.command) {
        case Command::run:
        case Command::eval:
            return program::evaluate(line);
        case Command::functions:
            return program::show_functions(line.function_name);
        case Command::reference:
            return program::show_reference();
        case Command::nothing:
            return line.exit_status;
        }
    } catch (const program::ReaderGone&) {
        return program::all_succeeded; // the reader has what it wanted
    } catch (const program::OutputFailed& failure) {
        program::write_error(std::string("bailuxsko: cannot write results: ") + failure.what() + "\n");
    } catch (const std::exception& failure) {
        program::write_error(std::string("bailuxsko: ") + failure.what() + "\n");
    }
    return program::unusable;
}
