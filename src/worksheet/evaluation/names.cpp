#include "worksheet/evaluation/names.hpp"

#include "bailuxhost/unit_names.hpp"
#include "efiutl/messages.hpp"
#include "worksheet/evaluation/evaluator.hpp"
#include "worksheet/functions.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <numbers>
#include <numeric>

namespace worksheet {

namespace {

struct Constant {
    std::string_view name;
    double value;
};

constexpr std::array constants{
    Constant{"pi", std::numbers::pi},
    Constant{"inf", std::numeric_limits<double>::infinity()},
    Constant{"NaN", std::numeric_limits<double>::quiet_NaN()},
};

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// How many letters must change, go, come or swap places with their neighbour, capitals or not.
/// @see Damerau, A technique for computer detection and correction of spelling errors, 1964
std::size_t distance(std::string_view a, std::string_view b)
{
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t change = lower(a[i - 1]) == lower(b[j - 1]) ? 0 : 1;
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + change});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        std::swap(before, last);
        std::swap(last, row);
    }
    return last[b.size()];
}

} // namespace

std::vector<std::string> nearest(std::string_view name, const std::vector<std::string_view>& candidates)
{
    constexpr std::size_t shown = 3;
    constexpr std::size_t longest = 64; // beyond that nobody has mistyped
    if (name.size() > longest)
        return {};
    const std::size_t allowed = name.size() <= 2 ? 0 : 1 + name.size() / 5;
    std::vector<std::pair<std::size_t, std::string_view>> found;
    for (const std::string_view candidate : candidates)
        if (candidate.size() <= longest)
            if (const std::size_t d = distance(name, candidate); d <= allowed && candidate != name)
                found.emplace_back(d, candidate);
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    std::vector<std::string> names;
    for (std::size_t k = 0; k < std::min(shown, found.size()); ++k)
        names.emplace_back(found[k].second);
    return names;
}

const double* find_constant(std::string_view name) noexcept
{
    for (const Constant& constant : constants)
        if (constant.name == name)
            return &constant.value;
    return nullptr;
}

std::vector<std::string_view> constant_names()
{
    std::vector<std::string_view> names;
    for (const Constant& constant : constants)
        names.push_back(constant.name);
    return names;
}

Qud::Handle Evaluator::evaluate_name(const Frame& frame, const Node& node)
{
    const std::string& name = frame.tree.names[node.content];
    if (const auto definition = m_definitions.find(name); definition != m_definitions.end()) {
        if (definition->second != nullptr)
            return definition->second;
    } else if (const double* const constant = find_constant(name)) {
        return Qud::NumVal::make(*constant);
    } else if (const Evl::FunctionRow* const row = find_function(name)) {
        return function_value(*row);
    } else if (const auto unit = Qud::find_unit(name)) {
        return Qud::NumVal::make(unit->factor, 0.0, unit->dim);
    }
    raise_undefined(frame, node, name);
}

Qud::Handle Evaluator::function_value(const Evl::FunctionRow& row)
{
    Qud::Handle& value = m_function_values[row.name];
    if (value == nullptr) {
        auto call = [this, &row](std::span<const Qud::Handle> arguments) {
            try {
                return row.entry(host_settings(), arguments);
            } catch (const LocatedError&) {
                throw;
            } catch (const Evl::Run::AppException& error) {
                throw LocatedError(error.message(), error.index(), std::string(row.name));
            }
        };
        value = std::make_shared<const Qud::FunVal>(std::string(row.name), row.least, row.most, call);
    }
    return value;
}

bool Evaluator::is_worksheet_function(const Qud::FunVal& function) const
{
    const auto found = m_function_values.find(function.name());
    return found != m_function_values.end() && found->second.get() == &function;
}

std::vector<std::string> Evaluator::near_names(std::string_view name) const
{
    std::vector<std::string_view> candidates = constant_names();
    for (const auto& [defined, value] : m_definitions)
        if (value != nullptr)
            candidates.push_back(defined);
    for (const Evl::FunctionRow* const row : all_functions())
        candidates.push_back(row->name);
    const std::vector<std::string> units = Qud::unit_names();
    candidates.insert(candidates.end(), units.begin(), units.end());
    return nearest(name, candidates);
}

void Evaluator::raise_undefined(const Frame& frame, const Node& node, const std::string& name) const
{
    LocatedError error(msg::undefined_name + name, -1, "");
    error.suggest(near_names(name));
    if (!frame.is_body)
        error.place(node.offset);
    throw error;
}

std::vector<std::string> Evaluator::names() const
{
    std::vector<std::string> names;
    for (const auto& [name, value] : m_definitions)
        if (value != nullptr)
            names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

Qud::Handle Evaluator::value_of(std::string_view name) const
{
    const auto definition = m_definitions.find(name);
    return definition != m_definitions.end() ? definition->second : nullptr;
}

} // namespace worksheet
