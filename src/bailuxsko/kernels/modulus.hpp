#pragma once

#include <cmath>

namespace native {

/// sqrt(re^2 + im^2), from the larger part and the quotient of the two, so that no square overflows. The smaller part
/// is never divided by zero, and a part that is 0.0 leaves the other's magnitude as it is.
[[gnu::always_inline]] inline double modulus(double re, double im)
{
    const double a = std::fabs(re);
    const double b = std::fabs(im);
    const double larger = a > b ? a : b;
    const double smaller = a > b ? b : a;
    const double quotient = smaller / (larger == 0.0 ? 1.0 : larger);
    return larger * std::sqrt(1.0 + quotient * quotient);
}

} // namespace native
