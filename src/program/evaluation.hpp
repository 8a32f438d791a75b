#pragma once

#include "program/command_line.hpp"

namespace program {

constexpr int all_succeeded = 0;
constexpr int some_failed = 1;
constexpr int unusable = 2; ///< the command line cannot be used, the file not be read, the results not be written

/// `run` and `eval`: evaluates the statements and shows each result before the next one starts, results on standard
/// output, errors on standard error (with --json all on standard output).
/// Stops early when nobody reads them any more.
/// @return    the exit status
/// @throws    OutputFailed
int evaluate(const CommandLine& line);

} // namespace program
