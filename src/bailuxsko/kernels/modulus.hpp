#pragma once

#include <cmath>

namespace native {

/// sqrt(re^2 + im^2), from the larger part and the quotient of the two, so that no square overflows. The smaller part
/// is never divided by zero, and a part that is 0.0 leaves the other's magnitude as it is. No branch, so loops use
/// vectors; but a NaN beside a zero is compared, which raises the invalid flag.
[[gnu::always_inline]] inline double modulus(double re, double im)
{
    const double a = std::fabs(re);
    const double b = std::fabs(im);
    const double larger = a > b ? a : b;
    const double smaller = a > b ? b : a;
    const double quotient = smaller / (larger + static_cast<double>(larger == 0.0)); // zero over one, not over zero
    return larger * std::sqrt(1.0 + quotient * quotient);
}

/// The same number by branches, which compare nothing with a NaN beside a zero.
[[gnu::always_inline]] inline double quiet_modulus(double re, double im)
{
    const double a = std::fabs(re);
    const double b = std::fabs(im);
    if (re == 0.0)
        return b;
    if (im == 0.0)
        return a;
    if (a > b)
        return a * std::sqrt(1.0 + (b / a) * (b / a));
    return b * std::sqrt(1.0 + (a / b) * (a / b));
}

} // namespace native
