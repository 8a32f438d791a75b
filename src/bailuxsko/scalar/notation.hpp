#pragma once

#include "bailuxhost/value.hpp"

namespace Efi::Affine {

/// The three numbers of a notation.
struct Three {
    double first = 0.0;
    double second = 0.0;
    double third = 0.0;
};

/// Three arguments as numbers; the second and third may be absent. @throws "must be real" (1, 2, 3)
Three as_three_numbers(const Qud::Handle& x, const Qud::Handle& y, const Qud::Handle& z);

/// Whether a single text was given.
bool is_text_alone(const Qud::Handle& x, const Qud::Handle& y, const Qud::Handle& z) noexcept;

/// A real number of any unit. @throws "must be real" (1)
double as_real(const Qud::Handle& x);

/// "NaN", "inf" or "-inf" for a number that is not finite.
Qud::Handle text_of_not_finite(double x);

} // namespace Efi::Affine
