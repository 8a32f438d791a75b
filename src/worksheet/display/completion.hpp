#pragma once

#include "worksheet/session.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace worksheet::display {

/// What can stand for the name that a line ends with.
struct Completion {
    std::string addition;             ///< the characters that all choices have in common beyond what was typed
    std::vector<std::string> choices; ///< the whole names, in alphabetical order
};

/// Completes the name before the cursor from the worksheet's names, the functions, the constants and the units.
/// A function that is the only choice gets its opening parenthesis.
Completion complete_name(std::string_view before_cursor, const Session& session);

} // namespace worksheet::display
