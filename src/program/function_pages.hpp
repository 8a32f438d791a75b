#pragma once

#include <string>

namespace program {

/// `functions`: all of them, a line each; with a name: arguments, what it returns, what it raises, an example.
/// @return    the exit status: 2 for a name that no function has
int show_functions(const std::string& name);

/// The reference page in Markdown, made from the function tables; the examples are evaluated for it.
int show_reference();

} // namespace program
