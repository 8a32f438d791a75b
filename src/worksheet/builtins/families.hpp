#pragma once

#include "bailuxhost/function_row.hpp"

#include <span>

/// The rows of the host's own functions, each family beside its code.
namespace worksheet {

std::span<const Evl::FunctionRow> elementary_functions(); ///< sqrt exp ln log10 sin cos tan asin acos atan
std::span<const Evl::FunctionRow> rounding_functions();   ///< floor ceil round mod
std::span<const Evl::FunctionRow> complex_functions();    ///< Re Im conj arg complex
std::span<const Evl::FunctionRow> choice_functions();     ///< if
std::span<const Evl::FunctionRow> csv_functions();        ///< read_csv write_csv

} // namespace worksheet
