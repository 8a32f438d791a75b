#include "program/command_line.hpp"
#include "program/evaluation.hpp"
#include "program/function_pages.hpp"
#include "program/output.hpp"

#include <csignal>
#include <exception>

namespace {

/// Piece by piece: there may be no memory left to join them.
void complain(const char* what, const char* why)
{
    for (const char* const piece : {"bailuxsko: ", what, why, "\n"})
        program::write_error(piece);
}

} // namespace

int main(int argc, char** argv)
{
    using Command = program::CommandLine::Command;

    std::signal(SIGPIPE, SIG_IGN); // a reader that goes away is an ordinary error of writing,
    std::signal(SIGXFSZ, SIG_IGN); // and so is a file that may not grow
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
        complain("cannot write results: ", failure.what());
    } catch (const std::exception& failure) {
        complain("", failure.what());
    }
    return program::unusable;
}
