#include "worksheet/builtins/choice.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/messages.hpp"
#include "worksheet/builtins/families.hpp"

#include <array>

namespace worksheet {

bool holds(const Qud::Handle& condition)
{
    const Qud::NumVal* const number = Qud::as_number(condition);
    if (number == nullptr || !number->is_real() || number->m_dim != Qud::Dim::identity)
        Evl::Run::AppException::Raise(msg::must_be_real, 1);
    return number->re() != 0.0;
}

namespace {

/// `if` as a value, handed to another function: its arguments are there already. Where it is called by its name the
/// evaluator evaluates the chosen one only.
Qud::Handle choose(const Qud::Handle& condition, const Qud::Handle& a, const Qud::Handle& b)
{
    return holds(condition) ? a : b;
}

constexpr std::array raises{Evl::Raise{msg::must_be_real, 1}};

constexpr std::array rows{
    Evl::calling<&choose>({
        .name = "if",
        .params = "condition, a, b",
        .summary = "a where the condition is anything but 0, else b; only the chosen one is evaluated.",
        .unit = "that of the chosen one",
        .raises = raises,
        .example = "if(2 > 1, \"more\", \"less\")",
        .family = "Choice",
        .is_lazy = true,
    }),
};

} // namespace

std::span<const Evl::FunctionRow> choice_functions()
{
    return rows;
}

} // namespace worksheet
