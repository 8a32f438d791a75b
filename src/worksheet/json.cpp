#include "worksheet/json.hpp"

#include "bailuxhost/matval.hpp"
#include "worksheet/syntax/number_text.hpp"

#include <fmt/format.h>

#include <cmath>
#include <iterator>

namespace worksheet {

namespace {

void append_text(std::string& out, std::string_view text)
{
    out += '"';
    for (const char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20)
                fmt::format_to(std::back_inserter(out), "\\u{:04x}", static_cast<unsigned>(c));
            else
                out += c;
        }
    }
    out += '"';
}

/// The shortest form that reads back to the same bits, always with a point or an exponent.
void append_double(std::string& out, double value)
{
    if (!std::isfinite(value)) {
        out += std::isnan(value) ? "\"nan\"" : value > 0 ? "\"inf\"" : "\"-inf\"";
        return;
    }
    const std::size_t begin = out.size();
    append_number(out, value);
    if (out.find_first_of(".e", begin) == std::string::npos)
        out += ".0";
}

void append_value(std::string& out, const Qud::Handle& value);

void append_element(std::string& out, const Qud::MatVal& M, std::size_t i, std::size_t j)
{
    if (const Qud::Handle* const entry = M.entry(i, j)) {
        if (const Qud::StrVal* const text = Qud::as_text(*entry)) {
            out += R"({"text":)";
            append_text(out, text->text());
            out += '}';
        } else {
            append_value(out, *entry);
        }
    } else if (M.HasImag()) {
        out += '[';
        append_double(out, M.real(i, j));
        out += ',';
        append_double(out, M.imag(i, j));
        out += ']';
    } else {
        append_double(out, M.real(i, j));
    }
}

/// The rows of a matrix as a list of lists; a matrix of no elements is an empty list.
template <class Append>
void append_rows(std::string& out, const Qud::MatVal& M, Append append)
{
    out += '[';
    for (std::size_t i = 0; i < M.Rows() && !M.is_empty(); ++i) {
        out += i == 0 ? "[" : ",[";
        for (std::size_t j = 0; j < M.Cols(); ++j) {
            if (j > 0)
                out += ',';
            append(i, j);
        }
        out += ']';
    }
    out += ']';
}

void append_matrix(std::string& out, const Qud::MatVal& M)
{
    fmt::format_to(std::back_inserter(out), R"({{"kind":"matrix","rows":{},"cols":{},"complex":{},)", M.Rows(),
                   M.Cols(), M.HasImag());
    if (const Qud::Dim* const unit = M.number_unit()) {
        out += R"("unit":)";
        append_text(out, unit->text());
    } else {
        out += R"("units":)";
        append_rows(out, M, [&](std::size_t i, std::size_t j) {
            append_text(out, M.entry(i, j) != nullptr ? std::string() : M.unit(i, j).text());
        });
    }
    out += R"(,"data":)";
    append_rows(out, M, [&](std::size_t i, std::size_t j) { append_element(out, M, i, j); });
    out += '}';
}

void append_value(std::string& out, const Qud::Handle& value)
{
    if (const Qud::NumVal* const number = Qud::as_number(value)) {
        out += R"({"kind":"number","re":)";
        append_double(out, number->re());
        out += R"(,"im":)";
        append_double(out, number->im());
        out += R"(,"unit":)";
        append_text(out, number->m_dim.text());
        out += '}';
    } else if (const Qud::MatVal* const M = Qud::matrix_of(value)) {
        append_matrix(out, *M);
    } else if (const Qud::StrVal* const text = Qud::as_text(value)) {
        out += R"({"kind":"text","text":)";
        append_text(out, text->text());
        out += '}';
    } else {
        // of a function that takes a varying number of arguments, the fewest
        const Qud::FunVal& function = *Qud::as_function(value);
        out += R"({"kind":"function","name":)";
        append_text(out, function.name());
        fmt::format_to(std::back_inserter(out), R"(,"params":{}}})",
                       function.most() == Qud::FunVal::any_count ? function.least() : function.most());
    }
}

void append_error(std::string& out, const StatementResult& result)
{
    out += R"({"kind":"error","message":)";
    append_text(out, result.error.message);
    fmt::format_to(std::back_inserter(out), R"(,"index":{},"function":)", result.error.index);
    append_text(out, result.error.function);
    fmt::format_to(std::back_inserter(out), R"(,"line":{},"column":{}}})", result.line, result.error.column);
}

void append_named(std::string& out, std::string_view kind, std::string_view name)
{
    fmt::format_to(std::back_inserter(out), R"({{"kind":"{}","name":)", kind);
    append_text(out, name);
    out += '}';
}

} // namespace

void append_json(std::string& out, const StatementResult& result)
{
    switch (result.kind) {
    case StatementResult::Kind::variable:
    case StatementResult::Kind::function:
        append_named(out, "definition", result.name);
        break;
    case StatementResult::Kind::setting:
        append_named(out, "setting", result.name);
        break;
    case StatementResult::Kind::value:
        append_value(out, result.value);
        break;
    case StatementResult::Kind::error:
        append_error(out, result);
        break;
    }
}

} // namespace worksheet
