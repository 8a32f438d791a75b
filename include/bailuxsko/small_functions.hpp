#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Identity matrix, cross product, trace and sum.
namespace Efi::Matrix {

/// The n by n identity matrix, real, without unit.
/// @throws    "must be positive integer" (1), "matrix too big" (1) for n > 4096
BAILUXSKO_API Qud::Handle identity(const Qud::Handle& n);

/// The cross product of two columns of 3 elements, in complex arithmetic and without conjugation.
/// @return    3 by 1, unit(a) * unit(b); complex only when some imaginary part is not zero (a position that is NaN in
///            both parts has a real NaN)
/// @throws    "must be a 3 element vector" (1, 2), "must be of uniform dimension" (1, 2), "floating point exception"
/// (0)
BAILUXSKO_API Qud::Handle crossprod(const Qud::Handle& a, const Qud::Handle& b);

/// The trace: the sum of the diagonal of a square matrix of one unit; 0 of [].
/// @return    unit(M)
/// @throws    "must be scalar matrix" (1), "must be square" (1), "floating point exception" (0)
BAILUXSKO_API Qud::Handle tr(const Qud::Handle& M);

/// The sum of the elements of one column or one row, of one unit.
/// @return    unit(v)
/// @throws    "must be scalar matrix" (1), "must be vector" (1), "floating point exception" (0)
BAILUXSKO_API Qud::Handle sigmasum(const Qud::Handle& v);

} // namespace Efi::Matrix
