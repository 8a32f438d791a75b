#pragma once

#include "bailuxhost/error.hpp"
#include "tests/support/raises.hpp"

#include <concepts>

namespace support {

/// What the call raises as the host's error; an empty message if it returns.
template <std::invocable Call>
Raised host_raised_by(Call call)
{
    try {
        call();
    } catch (const Evl::Run::AppException& error) {
        return {.message = error.message(), .index = error.index(), .detail = error.detail()};
    }
    return {};
}

} // namespace support
