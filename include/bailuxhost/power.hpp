#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"
#include "efiutl/records.hpp"

namespace Qud {

/// x to the power y, both without units: the principal value; 0^0 is 1. Whole exponents of real numbers and square
/// roots are exact operations; a negative base with an exponent that is not whole gives a complex number.
/// @throws "divide by zero" (2): 0 to a negative power
BAILUXSKO_API aComplex qupwr(aComplex x, aComplex y);

/// x to the power y with units: unit(x)^y.
/// @throws "must be dimless" (2): y has a unit; "divide by zero" (2); then "unit power not representable" (-1)
BAILUXSKO_API Handle qupwr(const NumVal& x, const NumVal& y);

} // namespace Qud
