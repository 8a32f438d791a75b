#pragma once

#include "efiutl/api.hpp"

#include <string_view>

namespace Evl {

/// Orders two UTF-8 texts by the root collation at tertiary strength, whatever the environment:
/// negative, 0 or positive. Texts that differ only in what that order does not see (control characters) give 0; bytes
/// that are no UTF-8 count as U+FFFD. Each thread has a collator of its own, opened at its first unequal pair.
/// @throws "cannot order texts" (-1) where ICU cannot be loaded; std::bad_alloc, also for texts of 2 GiB and more
BAILUXSKO_API int text_order(std::string_view a, std::string_view b);

} // namespace Evl
