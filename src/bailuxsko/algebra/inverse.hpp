#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

namespace Efi {

/// The inverse with units: unit(M)^-1, or the inverted pattern of units by row and column.
/// @param M   square
/// @throws    "must be a linear algebra matrix" (1), all of matrix_inv
BAILUXSKO_API Qud::Handle Inv(const Qud::MatVal& M);

/// The inverse of plain numbers, without unit: the library's own where the worksheet checks singularity strictly, else
/// LAPACK's.
/// @throws    "invalid dimension" (-1); strict: "singular matrix" (-1), "floating point exception" (0);
///            else: "singularity" (-1), "matrix too big" (1)
BAILUXSKO_API Qud::Handle matrix_inv(const Qud::MatVal& M);

} // namespace Efi
