#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

namespace lapack {

/// The determinant from LU with partial pivoting: the diagonal of U multiplied from the first element down, unscaled,
/// the sign changed for every exchange of rows. An exactly singular A, and whatever else the factorisation refuses,
/// gives 0.
/// @param A   n by n, numbers throughout; the unit is not looked at
/// @return    a number without unit
/// @throws    "invalid dimension" (-1) without elements, "must be square" (-1), "matrix too big" (1),
///            "out of memory" (-1)
BAILUXSKO_API Qud::Handle _determinant(EfiCallContext* ctx, const Qud::MatVal& A);

} // namespace lapack
