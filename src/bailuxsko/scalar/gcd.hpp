#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

#include <span>

namespace Efi {

namespace detail {

constexpr double whole_power(double base, unsigned exponent)
{
    double result = 1.0;
    for (; exponent != 0; exponent >>= 1U, base *= base)
        if ((exponent & 1U) != 0)
            result *= base;
    return result;
}

} // namespace detail

/// 2^53: up to here doubles hold all whole numbers.
inline constexpr double max_fp_int = detail::whole_power(2.0, 53);

/// Folds two whole numbers into one.
using FoldOperation = double (*)(double, double);

/// All numbers of the values, their signs taken off, folded from the first on: matrices column by column. 0 where there
/// are none; the operation is not called for the very first number of the first value, which starts the fold.
/// @return  a number without unit
/// @throws  as gcd, and what the operation raises
BAILUXSKO_API Qud::Handle fold(std::span<const Qud::Handle> values, FoldOperation operation);

/// The greatest common divisor of two whole numbers of up to 2^53; NaN when either is NaN.
BAILUXSKO_API double GCD(double a, double b);

/// The least common multiple of two whole numbers from 0 to 2^53; of 0 and 0 it is NaN.
/// @throws "significance lost" (-1) above 2^53
BAILUXSKO_API double LCM(double a, double b);

} // namespace Efi
