#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

#include <span>

/// The smallest and the largest of any mix of numbers and matrices, or of texts and arrays of texts.
/// Numbers: real and imaginary parts are reduced each by itself, so that the result of complex numbers need not be one
/// of them; a number without imaginary part takes no part in the imaginary ones, every element of a complex matrix
/// does. A NaN never wins, but an array that begins with one is searched from 0, and a NaN that stands by itself
/// counts as 0. Equal zeros: the first stays. What is beyond the finite doubles ends at the largest of them.
/// Texts are compared in the host's order; of equal ones the first wins.
namespace Efi::Matrix {

/// @return    a number of the arguments' common unit, or a text
/// @throws    "vector must have uniform dimension or all strings" (k), "unit mismatch" (k), "invalid dimension" (k) for
///            an empty matrix, "cannot mix scalar and string for this function" (-1), also for a function, "may not be
///            nested" for an array of arrays (its argument counted from 0)
BAILUXSKO_API Qud::Handle min(std::span<const Qud::Handle> values);

/// @return    a number of the arguments' common unit, or a text
/// @throws    as min
BAILUXSKO_API Qud::Handle max(std::span<const Qud::Handle> values);

} // namespace Efi::Matrix
