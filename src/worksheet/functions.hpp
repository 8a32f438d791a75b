#pragma once

#include "bailuxhost/function_row.hpp"

#include <span>
#include <string_view>
#include <vector>

namespace worksheet {

/// The functions of the host itself (`sqrt`, `if`, `read_csv` ...), in alphabetical order, upper case first.
std::span<const Evl::FunctionRow> host_functions();

/// Every worksheet function, of the library and of the host, in alphabetical order, upper case first.
const std::vector<const Evl::FunctionRow*>& all_functions();

/// The row of a worksheet function, or null.
const Evl::FunctionRow* find_function(std::string_view name);

} // namespace worksheet
