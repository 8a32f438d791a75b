#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Between customary notations and base units. Texts are read and written with a point and ASCII digits, whatever the
/// locale says. Arguments that may be left out are null handles then and count as 0. An inverse gives "NaN", "inf" or
/// "-inf" for such a number.
namespace Efi::Affine {

/// The length of a text such as 5' 3-1/2" or 7/8", or of feet, inches and a fraction of an inch as numbers. A sign
/// leads the text and holds for all of it; an empty one is 0.
/// @return  a number in metres
/// @throws  "bad_fif_string" (1), "must be real" (1, 2, 3)
BAILUXSKO_API Qud::Handle FIF(const Qud::Handle& feet_or_text, const Qud::Handle& inches, const Qud::Handle& fraction);

/// Metres as feet, inches and a fraction with a denominator of at most 256; "inf" where no double holds the inches. The
/// unit of x is not looked at.
/// @throws  "must be real" (1)
BAILUXSKO_API Qud::Handle FIF_inverse(const Qud::Handle& x);

/// The angle of degrees, minutes and seconds, given as numbers or as a column of one to three of them. Each has its own
/// sign.
/// @return  a number without unit, in radians
/// @throws  "must be real" (1, 2, 3); of a column "must be real vector" (1), "must be dimless" (1),
///          "must be a 3 element vector" (1)
BAILUXSKO_API Qud::Handle DMS(const Qud::Handle& degrees_or_vector, const Qud::Handle& minutes,
                              const Qud::Handle& seconds);

/// Radians as degrees, minutes and seconds, less than a full turn and all with the sign of x. Seconds are not rounded:
/// an angle a rounding below a full minute has almost 60 of them.
/// @return  a column of three numbers without unit; the text "NaN" for a NaN
/// @throws  "must be real" (1)
BAILUXSKO_API Qud::Handle DMS_inverse(const Qud::Handle& x);

/// The time of a text such as 12:05:30.25 (two digits of minutes at most, but up to 99) or of hours, minutes and
/// seconds as numbers. A sign leads the text and holds for all of it.
/// @return  a number in seconds
/// @throws  "bad_hhmmss_string" (1), "must be real" (1, 2, 3)
BAILUXSKO_API Qud::Handle HMS(const Qud::Handle& hours_or_text, const Qud::Handle& minutes, const Qud::Handle& seconds);

/// Seconds as hours, minutes and seconds, rounded to the millisecond; 59.9996 are 60, which do not carry. The unit of x
/// is not looked at.
/// @throws  "must be real" (1)
BAILUXSKO_API Qud::Handle HMS_inverse(const Qud::Handle& x);

/// a - floor(a / b) * b, or 0 where that is negative by rounding.
BAILUXSKO_API double mod(double a, double b) noexcept;

} // namespace Efi::Affine
