#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace program {

/// All of a file, "-" being standard input; or nothing, and `failure` says why.
std::optional<std::string> read_source(const std::string& file, std::string& failure);

/// Hands standard input over as it comes, in pieces that end where a statement does, the last one where the input ends:
/// a program at the other end of a pipe gets its answer before it asks the next question. False when it cannot be read,
/// and `failure` says why.
bool read_standard_input(const std::function<void(std::string_view)>& piece, std::string& failure);

} // namespace program
