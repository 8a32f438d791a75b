#include "worksheet/session.hpp"

#include "efiutl/messages.hpp"
#include "worksheet/evaluation/evaluator.hpp"
#include "worksheet/syntax/characters.hpp"
#include "worksheet/syntax/parser.hpp"
#include "worksheet/syntax/source.hpp"
#include "worksheet/syntax/syntax_error.hpp"

#include <fmt/format.h>

#include <new>
#include <stdexcept>
#include <utility>

namespace worksheet {

namespace {

/// The thread's runtime options are the worksheet's while a statement runs.
class OptionsOfSheet {
public:
    explicit OptionsOfSheet(const SheetSettings& settings) noexcept
        : m_strict(Qud::RuntimeOptions::strict_singularity_checking),
          m_zero_over_zero(Qud::RuntimeOptions::zero_over_zero_is_zero)
    {
        Qud::RuntimeOptions::strict_singularity_checking = settings.strict_singularity_checking;
        Qud::RuntimeOptions::zero_over_zero_is_zero = settings.zero_over_zero_is_zero;
    }
    OptionsOfSheet(const OptionsOfSheet&) = delete;
    OptionsOfSheet& operator=(const OptionsOfSheet&) = delete;
    ~OptionsOfSheet()
    {
        Qud::RuntimeOptions::strict_singularity_checking = m_strict;
        Qud::RuntimeOptions::zero_over_zero_is_zero = m_zero_over_zero;
    }

private:
    bool m_strict;
    bool m_zero_over_zero;
};

std::size_t column_at(std::string_view text, std::size_t offset)
{
    return count_characters(text.substr(0, offset)) + 1;
}

StatementError error_of(const LocatedError& error, std::string_view text)
{
    return {.message = error.message(),
            .index = error.index(),
            .function = error.function(),
            .column = column_at(text, error.offset()),
            .caret = column_at(text, error.caret()),
            .found = error.found(),
            .near_names = error.near_names()};
}

StatementError error_at_column(std::string message, std::size_t column)
{
    StatementError error;
    error.message = std::move(message);
    error.column = error.caret = column;
    return error;
}

/// A bracket that is never closed is the cause of whatever else is wrong behind it.
void read(const StatementText& source, Statement& statement)
{
    try {
        parse(source.text, statement);
    } catch (const SyntaxError& error) {
        if (!source.open_bracket || error.message() == msg::nesting_too_deep)
            throw;
    }
    if (source.open_bracket)
        raise_syntax_error(fmt::format("'{}' is never closed", source.text[*source.open_bracket]),
                           *source.open_bracket);
}

/// Reads and runs one statement; whatever goes wrong ends as its error.
void evaluate_statement(Evaluator& evaluator, const StatementText& source, StatementResult& result)
{
    Statement statement;
    try {
        read(source, statement);
        const OptionsOfSheet options(evaluator.settings());
        evaluator.run(statement, result);
        return;
    } catch (const SyntaxError& error) {
        result.error = error_at_column(error.message(), column_at(source.text, error.offset()));
    } catch (const LocatedError& error) {
        result.error = error_of(error, source.text);
    } catch (const std::bad_alloc&) {
        result.error = error_at_column(msg::out_of_memory, 1);
    } catch (const std::length_error&) {
        result.error = error_at_column(msg::out_of_memory, 1);
    }
    result.kind = StatementResult::Kind::error;
    result.value = nullptr;
    result.name = statement.name;
    if (statement.kind == StatementKind::variable || statement.kind == StatementKind::function)
        evaluator.leave_without_value(statement.name);
}

} // namespace

Session::Session(SheetSettings settings) : m_evaluator(std::make_unique<Evaluator>(std::move(settings))) {}

Session::~Session() = default;

void Session::evaluate(std::string_view source, const Deliver& deliver)
{
    StatementReader reader(source);
    while (const std::optional<StatementText> text = reader.next()) {
        StatementResult result;
        result.line = text->line;
        result.text = text->text;
        evaluate_statement(*m_evaluator, *text, result);
        deliver(result);
    }
}

const SheetSettings& Session::settings() const noexcept
{
    return m_evaluator->settings();
}

std::vector<std::string> Session::names() const
{
    return m_evaluator->names();
}

Qud::Handle Session::value_of(std::string_view name) const
{
    return m_evaluator->value_of(name);
}

bool is_unfinished(std::string_view source)
{
    StatementReader reader(source);
    bool open = false;
    while (const std::optional<StatementText> text = reader.next())
        open = text->open_bracket.has_value();
    return open;
}

} // namespace worksheet
