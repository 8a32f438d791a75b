#pragma once

#include <cmath>

namespace plain {

/// sqrt(re^2 + im^2) without squaring anything larger than 1.
inline double modulus(double re, double im)
{
    const double a = std::fabs(re);
    const double b = std::fabs(im);
    if (a == 0.0)
        return b;
    if (b == 0.0)
        return a;
    if (a > b)
        return a * std::sqrt(1.0 + (b / a) * (b / a));
    return b * std::sqrt(1.0 + (a / b) * (a / b));
}

} // namespace plain
