#pragma once

#include "efiutl/api.hpp"

#include <string_view>

namespace Evl {

/// Orders two UTF-8 texts by the root collation at tertiary strength, whatever the environment:
/// negative, 0 or positive. Each thread has a collator of its own, opened at its first call.
BAILUXSKO_API int text_order(std::string_view a, std::string_view b);

} // namespace Evl
