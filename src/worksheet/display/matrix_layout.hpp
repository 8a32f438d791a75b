#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/matval.hpp"
#include "worksheet/display/value_text.hpp"

#include <string>
#include <vector>

namespace worksheet::display {

/// A complex number with its unit, as it stands alone: "3 + 4i", "(3 + 4i) ohm", "2i".
std::string scalar_text(double re, double im, const Qud::Dim& unit, const ShownUnit* shown);

/// The lines of a matrix. Each of its rows opens a bracket on the row's first line and closes it on its last, so that
/// rows which nested arrays make several lines high stay apart. The unit stands once, behind the last row, or in every
/// cell where they differ or where texts and arrays stand between the numbers.
/// @param depth   how many matrices this one is nested in
std::vector<std::string> matrix_lines(const Qud::MatVal& M, const Room& room, const ShownUnit* shown, int depth = 0);

} // namespace worksheet::display
