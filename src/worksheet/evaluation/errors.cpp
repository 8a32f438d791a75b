#include "bailuxhost/matval.hpp"
#include "efiutl/messages.hpp"
#include "worksheet/evaluation/evaluator.hpp"

#include <fmt/format.h>

#include <cmath>
#include <new>
#include <stdexcept>

namespace worksheet {

namespace {

std::string unit_words(const Qud::Dim* unit)
{
    if (unit == nullptr)
        return ", of different units";
    const std::string text = unit->text();
    return text.empty() ? text : ", in " + text;
}

std::string number_words(const Qud::NumVal& number)
{
    const std::string unit = unit_words(&number.m_dim);
    if (!number.is_real())
        return "a complex number" + unit;
    if (std::isnan(number.re()))
        return "NaN" + unit;
    if (number.get_IsInt())
        return fmt::format("{:.15g}{}", number.re(), unit);
    return fmt::format("{}{}", number.re(), unit); // with all digits: what is almost whole is seen not to be
}

std::string matrix_words(const Qud::MatVal& M)
{
    return fmt::format("{} by {}{}{}{}", M.Rows(), M.Cols(), M.HasImag() ? ", complex" : "",
                       M.has_entries() ? ", with texts or nested arrays" : "", unit_words(M.number_unit()));
}

/// Whether the error's index names one of the site's operands.
bool names_operand(const Site& site, int index)
{
    return index >= 1 && static_cast<std::size_t>(index) <= site.operands.size();
}

/// "argument 1 of lu is 2 by 3"
std::string argument_words(const Site& site, std::size_t argument)
{
    return fmt::format("argument {} of {} is {}", argument, site.function, description(site.operands[argument - 1]));
}

bool is_about_shapes(const std::string& message)
{
    return message == msg::invalid_dimension || message == msg::must_be_square || message == msg::array_size_mismatch ||
           message == msg::rows_less_than_columns;
}

/// What is worth saying of a call that failed as a whole: the matrices among its arguments when shapes are at fault,
/// else those without elements.
std::string call_words(const Site& site, const std::string& message)
{
    std::string words;
    for (std::size_t k = 1; k <= site.operands.size(); ++k) {
        const Qud::MatVal* const M = Qud::matrix_of(site.operands[k - 1]);
        if (M != nullptr && (M->is_empty() || is_about_shapes(message)))
            words.append(words.empty() ? "" : "; ").append(argument_words(site, k));
    }
    return words;
}

/// The argument that the error's index names; for an operator both sides.
std::string found_words(const Site& site, const Evl::Run::AppException& error)
{
    if (!error.detail().empty())
        return error.detail();
    if (!site.function.empty())
        return names_operand(site, error.index()) ? argument_words(site, static_cast<std::size_t>(error.index()))
                                                  : call_words(site, error.message());
    if (site.node.kind == NodeKind::chain && site.operands.size() == 2)
        return fmt::format("left is {}; right is {}", description(site.operands[0]), description(site.operands[1]));
    if (!site.operands.empty())
        return fmt::format("it is {}", description(site.operands[0]));
    return {};
}

[[noreturn]] void raise_located(const Site& site, LocatedError error, const Evl::Run::AppException& cause)
{
    if (!site.frame.is_body) {
        error.place(site.offset);
        if (names_operand(site, cause.index()))
            error.point_at(
                site.frame.tree.nodes[site.operand_nodes[static_cast<std::size_t>(cause.index() - 1)]].start);
    }
    error.say_found(found_words(site, cause));
    throw error;
}

} // namespace

std::string description(const Qud::Handle& value)
{
    if (const Qud::NumVal* const number = Qud::as_number(value))
        return number_words(*number);
    if (const Qud::MatVal* const M = Qud::matrix_of(value))
        return matrix_words(*M);
    if (const Qud::FunVal* const function = Qud::as_function(value))
        return fmt::format("the function {}", function->name());
    return "a text";
}

void rethrow_at(const Site& site)
{
    try {
        throw;
    } catch (LocatedError& error) {
        if (!site.frame.is_body && !error.is_placed())
            error.place(site.offset);
        throw;
    } catch (const Evl::Run::AppException& error) {
        raise_located(site, LocatedError(error.message(), error.index(), std::string(site.function)), error);
    } catch (const std::bad_alloc&) {
        raise_at(site.frame, site.offset, msg::out_of_memory, std::string(site.function));
    } catch (const std::length_error&) { // a container that could never be so long
        raise_at(site.frame, site.offset, msg::out_of_memory, std::string(site.function));
    }
}

void raise_at(const Frame& frame, std::uint32_t offset, std::string message, std::string function, std::string found)
{
    LocatedError error(std::move(message), -1, std::move(function));
    error.say_found(std::move(found));
    if (!frame.is_body)
        error.place(offset);
    throw error;
}

} // namespace worksheet
