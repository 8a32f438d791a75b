#pragma once

#include "bailuxhost/matdim.hpp"
#include "bailuxhost/matval.hpp"

#include <string>

/// What stands beside the message when units do not allow an operation: where, and what was found there.
namespace Efi {

/// The element that breaks the unit pattern of M; empty when none does.
std::string pattern_detail(const Qud::MatVal& M);

/// The first term of the sums of the product a * b whose unit is not that of the first term, shown at the element in
/// the upper left corner; of two columns of one length, the term of their inner product. Empty when all agree.
std::string sum_detail(const Qud::MatDim& a, const Qud::MatDim& b);

} // namespace Efi
