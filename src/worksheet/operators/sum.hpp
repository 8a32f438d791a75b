#pragma once

#include "bailuxhost/value.hpp"

namespace worksheet {

/// a + b: numbers, a number and every element of a matrix, matrices of one shape; the units agree.
/// @throws "must be a scalar or a matrix" (1 or 2), "array size mismatch" (-1), "unit mismatch" (-1)
Qud::Handle sum(const Qud::Handle& a, const Qud::Handle& b);

/// a - b, by the same rules.
Qud::Handle difference(const Qud::Handle& a, const Qud::Handle& b);

/// -a, every element; a real number keeps the imaginary part +0. @throws "must be a scalar or a matrix" (1)
Qud::Handle negation(const Qud::Handle& a);

} // namespace worksheet
