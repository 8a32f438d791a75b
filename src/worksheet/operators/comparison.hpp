#pragma once

#include "bailuxhost/value.hpp"

namespace worksheet {

/// Whether two values are the same: kind, shape, units and every element. A matrix without an imaginary array equals
/// one whose imaginary parts are all zero, -0 equals 0, NaN equals nothing; a function equals only itself.
bool equal(const Qud::Handle& a, const Qud::Handle& b);

enum class Order { less, equal, greater, none };

/// The order of two real numbers of one unit (none where one is NaN), or of two texts by the root collation.
/// @throws "must be real" (1 or 2), "unit mismatch" (-1)
Order order(const Qud::Handle& a, const Qud::Handle& b);

} // namespace worksheet
