#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

#include <span>

namespace Efi::Matrix {

/// The sample skewness of all numbers among the values, however they are split: the adjusted Fisher-Pearson coefficient
/// N / ((N - 1) * (N - 2)) * sum(((x - mean) / s)^3) with the sample standard deviation s; of complex numbers the same
/// with complex deviations. Where s is 0 it is NaN. The bits depend on the numbers in their order only.
/// @param values  numbers and matrices of one unit
/// @return        a number without unit
/// @throws        "must be uniform scalar matrix" (k), "unit mismatch" (k), "must be a scalar or a matrix" (k),
///                "not enough sample points" (-1) for fewer than three numbers
/// @see           Joanes and Gill, Comparing measures of sample skewness and kurtosis, The Statistician 47, 1998
BAILUXSKO_API Qud::Handle skew(std::span<const Qud::Handle> values);

} // namespace Efi::Matrix
