#include "bailuxhost/function_row.hpp"

#include "efiutl/messages.hpp"

namespace Evl {

namespace detail {

const Qud::Handle absent_argument;

} // namespace detail

std::span<const Raise> common_raises()
{
    static constexpr Raise raises[] = {
        {msg::out_of_memory, -1},
        {msg::wrong_number_of_arguments, -1},
        {msg::nesting_too_deep, -1},
        {msg::unit_power_not_representable, -1},
    };
    return raises;
}

} // namespace Evl
