#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"
#include "efiutl/records.hpp"

namespace Qud {

/// x to the power y, both without units: the principal value; 0^0 is 1, and so is any other number's power 0.
/// Whole exponents are multiplications: a power of a real number that is a double comes out exactly, any other within a
/// place; Gaussian integers stay whole up to exponent 512. Real square roots are correctly rounded. A negative base
/// with an exponent that is not whole gives a complex number, also -inf (-inf to the power 0.5 is 0 + inf i); other
/// infinities and NaN give what IEEE 754 says of pow. 0 to a complex power is 0 where the real part is above 0, else
/// NaN.
/// @throws "divide by zero" (2): 0 to a negative power
BAILUXSKO_API aComplex qupwr(aComplex x, aComplex y);

/// x to the power y with units: unit(x)^y.
/// @throws "must be dimless" (2): y has a unit; "divide by zero" (2); then "unit power not representable" (-1)
BAILUXSKO_API Handle qupwr(const NumVal& x, const NumVal& y);

} // namespace Qud
