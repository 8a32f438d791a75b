#pragma once

#include "worksheet_check.hpp"

#include <string>
#include <vector>

/// Rows of the function tables against worksheets: a pair of message and index in some row that no worksheet raises,
/// and a raised pair that stands neither in the function's row nor among what every call can raise.
std::vector<std::string> compare_raises(const std::set<RaisedError>& raised);

/// Evaluates every row's example, files taken from the folder; the examples that fail.
std::vector<std::string> run_examples(const std::string& folder);
