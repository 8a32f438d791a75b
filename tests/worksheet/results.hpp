#pragma once

#include "worksheet/json.hpp"
#include "worksheet/session.hpp"

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// The JSON lines of a source's statements.
inline std::vector<std::string> json_of(worksheet::Session& session, std::string_view source)
{
    std::vector<std::string> lines;
    session.evaluate(source, [&](const worksheet::StatementResult& result) {
        lines.emplace_back();
        worksheet::append_json(lines.back(), result);
    });
    return lines;
}

inline std::vector<std::string> json_of(std::string_view source)
{
    worksheet::Session session;
    return json_of(session, source);
}

/// What a statement came to, but for its value.
struct Outcome {
    std::string message; ///< empty for success
    int index = 0;
    std::string function;
    std::size_t line = 0;
    std::size_t column = 0;

    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Outcome& o)
    {
        return out << '"' << o.message << "\" " << o.index << " '" << o.function << "' " << o.line << ':' << o.column;
    }
};

inline Outcome outcome_of(const worksheet::StatementResult& result)
{
    if (result.kind != worksheet::StatementResult::Kind::error)
        return {.message = {}, .index = 0, .function = {}, .line = result.line, .column = 0};
    return {.message = result.error.message,
            .index = result.error.index,
            .function = result.error.function,
            .line = result.line,
            .column = result.error.column};
}

inline std::vector<Outcome> outcomes_of(worksheet::Session& session, std::string_view source)
{
    std::vector<Outcome> outcomes;
    session.evaluate(source, [&](const auto& result) { outcomes.push_back(outcome_of(result)); });
    return outcomes;
}

inline std::vector<Outcome> outcomes_of(std::string_view source)
{
    worksheet::Session session;
    return outcomes_of(session, source);
}

/// The only result of a source of one statement.
inline worksheet::StatementResult result_of(worksheet::Session& session, std::string_view source)
{
    worksheet::StatementResult last;
    session.evaluate(source, [&](const worksheet::StatementResult& result) { last = result; });
    return last;
}
