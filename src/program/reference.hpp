#pragma once

#include "bailuxhost/function_row.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace program {

/// How the function is called: "lu(A)".
std::string call_form(const Evl::FunctionRow& row);

/// An error and where it points: "must be square (argument 1)".
std::string raise_text(const Evl::Raise& raise);

/// What the worksheet hands over beside the arguments: "the worksheet's origin and TOL"; empty for nothing.
std::string_view handed_over(const Evl::FunctionRow& row);

/// The output of a function's example, line by line, as `eval` shows it in 80 columns. Its files are in a folder that
/// comes and goes: points.csv holds the lines x,y / 0,0 / 1.5,2.
std::vector<std::string> evaluated_example(const Evl::FunctionRow& row);

/// The reference page in Markdown: a chapter for each family, an entry for each function.
std::string reference_page();

} // namespace program
