#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace worksheet {

/// The names that a misspelt one may have meant, nearest first, three at most.
std::vector<std::string> nearest(std::string_view name, const std::vector<std::string_view>& candidates);

/// `pi`, `inf` or `NaN` as a number; null for any other name.
const double* find_constant(std::string_view name) noexcept;

/// The names of the constants.
std::vector<std::string_view> constant_names();

} // namespace worksheet
