#include "worksheet_check.hpp"

#include "expectation.hpp"
#include "same_value.hpp"
#include "worksheet/json.hpp"
#include "worksheet/session.hpp"
#include "worksheet/syntax/source.hpp"

#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

namespace {

using Result = worksheet::StatementResult;

std::string json_of(const Result& result)
{
    std::string text;
    worksheet::append_json(text, result);
    return text;
}

/// Checks one statement's result; an empty text means that it is as expected.
class Check {
public:
    Check(worksheet::Session& session, const Expectation& expectation) : m_session(session), m_expectation(expectation)
    {
    }

    std::string operator()(const Result& result)
    {
        switch (m_expectation.kind) {
        case Expectation::Kind::success:
            return result.kind == Result::Kind::error ? "fails: " + json_of(result) : std::string();
        case Expectation::Kind::value:
            return check_value(result);
        case Expectation::Kind::error:
            return check_error(result);
        case Expectation::Kind::json:
            return json_of(result) == m_expectation.json ? std::string() : "gives " + json_of(result);
        }
        return {};
    }

private:
    std::string check_value(const Result& result)
    {
        Result expected;
        std::size_t count = 0;
        m_session.evaluate(m_expectation.expression, [&](const Result& r) {
            expected = r;
            ++count;
        });
        if (count != 1 || expected.kind != Result::Kind::value)
            return "the expectation gives " + json_of(expected);
        if (result.value == nullptr || !same_value(result.value, expected.value, m_expectation.tolerance))
            return "gives " + json_of(result) + "\n    expected " + json_of(expected);
        return {};
    }

    std::string check_error(const Result& result)
    {
        const worksheet::StatementError& error = result.error;
        const bool same = result.kind == Result::Kind::error &&
                          (m_expectation.message_begins ? error.message.starts_with(m_expectation.message)
                                                        : error.message == m_expectation.message) &&
                          m_expectation.index.value_or(error.index) == error.index &&
                          m_expectation.function.value_or(error.function) == error.function &&
                          m_expectation.column.value_or(error.column) == error.column;
        return same ? std::string() : "gives " + json_of(result);
    }

    worksheet::Session& m_session;
    const Expectation& m_expectation;
};

std::string content_of(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw std::runtime_error("cannot read " + file.string());
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace

CheckedWorksheet check_worksheet(const std::filesystem::path& file)
{
    CheckedWorksheet checked;
    const std::string source = content_of(file);
    worksheet::SheetSettings settings;
    settings.folder = std::filesystem::absolute(file).parent_path().string();
    worksheet::Session session(settings);
    worksheet::StatementReader reader(source);
    auto statement = reader.next();
    while (statement) {
        const std::size_t behind = reader.offset();
        const auto following = reader.next();
        const std::size_t next =
            following ? static_cast<std::size_t>(following->text.data() - source.data()) : source.size();
        const Expectation expectation = read_expectation(std::string_view(source).substr(behind, next - behind));
        session.evaluate(statement->text, [&](const Result& result) {
            ++checked.statements;
            if (result.kind == Result::Kind::error && !result.error.function.empty())
                checked.raised.emplace(result.error.function, result.error.message, result.error.index);
            if (const std::string fault = Check(session, expectation)(result); !fault.empty()) {
                std::ostringstream line;
                line << file.string() << ':' << statement->line << ": " << statement->text << "\n    " << fault;
                checked.failures.push_back(line.str());
            }
        });
        statement = following;
    }
    return checked;
}
