#pragma once

#include "bailuxhost/value.hpp"

#include <optional>

/// Whether two values are the same: kind, shape, unit of every number, imaginary array, texts, nested arrays.
/// Without a tolerance numbers agree to the bit (any NaN is NaN, -0 is not 0); with one they may differ by the
/// tolerance times the largest number of the expected array, or by the tolerance itself where that is all zeros.
bool same_value(const Qud::Handle& value, const Qud::Handle& expected, std::optional<double> tolerance);
