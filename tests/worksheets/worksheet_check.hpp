#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <tuple>
#include <vector>

/// A message and index that a worksheet function has raised.
using RaisedError = std::tuple<std::string, std::string, int>; // function, message, index

struct CheckedWorksheet {
    std::vector<std::string> failures; ///< each with file and line
    std::set<RaisedError> raised;      ///< by its statements, as they should
    std::size_t statements = 0;
};

/// Evaluates a worksheet and compares every statement's result with the comment under it.
CheckedWorksheet check_worksheet(const std::filesystem::path& file);
