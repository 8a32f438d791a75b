#pragma once

#include "bailuxhost/dim.hpp"
#include "bailuxhost/matval.hpp"

#include <span>
#include <string>

/// What stands beside the message when units do not allow an operation: where, and what was found there.
namespace Efi {

/// The element that breaks the unit pattern of M; empty when none does.
std::string pattern_detail(const Qud::MatVal& M);

/// The first k for which left[k] * right[k] has another unit than the first pair; empty when all agree.
/// @param left_name, right_name  what the pairs are made of: "column", "row"
std::string inner_detail(std::span<const Qud::Dim> left, const char* left_name, std::span<const Qud::Dim> right,
                         const char* right_name);

} // namespace Efi
