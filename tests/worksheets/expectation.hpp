#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What the comments under a statement say must come.
struct Expectation {
    enum class Kind {
        success, ///< nothing is said: the statement must not fail
        value,   ///< `#= expression`, `#~ tolerance expression`
        error,   ///< `#! "message" index [function] [column N]`; `#! syntax error [column N]`
        json,    ///< `#{...}`: the whole JSON object
    };

    Kind kind = Kind::success;
    std::string expression; ///< of a value; lines that follow one another are one expression
    std::optional<double> tolerance;

    std::string message;
    bool message_begins = false; ///< the message only begins so
    std::optional<int> index;
    std::optional<std::string> function; ///< "" is none
    std::optional<std::size_t> column;

    std::string json;
};

/// Reads the comments between one statement and the next. @throws std::runtime_error for one that cannot be read
Expectation read_expectation(std::string_view comments);
