#pragma once

#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"

#include <span>

namespace worksheet {

/// A[i, j], or v[i] of one column or one row; indices count from origin.
/// @throws "must be matrix", "must be vector" (v[i]), "must be integer", "index out of bounds", all (-1)
Qud::Handle element(const Qud::Handle& array, std::span<const Qud::Handle> indices, Qud::Origin origin);

} // namespace worksheet
