#pragma once

#include "bailuxhost/function_row.hpp"
#include "efiutl/api.hpp"

#include <span>

namespace Efi {

/// Every worksheet function of the library, once, in alphabetical order (upper case before lower).
BAILUXSKO_API std::span<const Evl::FunctionRow> functions();

} // namespace Efi
