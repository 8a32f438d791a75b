#pragma once

#include "worksheet/session.hpp"

#include <string>

namespace worksheet {

/// Appends the JSON object of a statement's result, on one line, without a line end. Numbers are in SI base units and
/// read back to the same bits.
/// @throws std::bad_alloc
void append_json(std::string& out, const StatementResult& result);

} // namespace worksheet
