#pragma once

#include "worksheet/session.hpp"

#include <string>
#include <vector>

namespace program {

/// What the program was asked to do.
struct CommandLine {
    enum class Command { run, eval, functions, reference, nothing };

    Command command = Command::nothing;
    std::string file;                    ///< of `run`; "-" is standard input
    std::vector<std::string> statements; ///< of `eval`; none means standard input
    std::string function_name;           ///< of `functions`; empty for all
    bool json = false;
    worksheet::SheetSettings settings;

    int exit_status = 0; ///< of `nothing`: help was shown, or an error reported
};

/// Reads the command line. Help and version go to standard output, what is wrong to standard error: then there is
/// nothing left to do but to leave with the exit status. @throws ReaderGone, OutputFailed
CommandLine read_command_line(int argc, char** argv);

} // namespace program
