#pragma once

#include <optional>
#include <string>

namespace program {

/// All of a file, "-" being standard input; or nothing, and `failure` says why.
std::optional<std::string> read_source(const std::string& file, std::string& failure);

} // namespace program
