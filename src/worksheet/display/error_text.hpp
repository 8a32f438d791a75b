#pragma once

#include "worksheet/display/value_text.hpp"
#include "worksheet/session.hpp"

#include <string>
#include <string_view>

namespace worksheet::display {

/// A failed statement as people read it: the message, the line of the source that is at fault, a caret below it and
/// what was found there or which names come near:
///
///     error: must be square
///       truss.ws:12 |  d := lu(K) * 2
///                   |          ^ argument 1 of lu is 2 by 3
///
/// @param source_name   the file; empty for statements of the command line, which show no place
/// @param use_colours   for a terminal
std::string error_text(const StatementResult& result, std::string_view source_name, const Room& room, bool use_colours);

} // namespace worksheet::display
