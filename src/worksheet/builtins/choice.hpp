#pragma once

#include "bailuxhost/value.hpp"

namespace worksheet {

/// Whether the condition of `if` holds: a real number without unit that is anything but 0. @throws "must be real" (1)
bool holds(const Qud::Handle& condition);

} // namespace worksheet
