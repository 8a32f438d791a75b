#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

namespace lapack {

/// P, L and U with P * M = L * U, by LU with partial pivoting. A singular M has factors like any other, with a zero on
/// the diagonal of U. The unit of M is not looked at.
/// @param M   m by n, real
/// @return    a nested column of P (m by m, zeros and ones), L (m by k, unit diagonal) and U (k by n), k = min(m, n)
/// @throws    "invalid dimension" (-1) without elements, "matrix too big" (1), "out of memory" (-1)
/// @see       Golub and Van Loan, Matrix Computations, section 3.4
BAILUXSKO_API Qud::Handle dlu(EfiCallContext* ctx, const Qud::MatVal& M);

/// The same of a complex M: L and U carry imaginary arrays, P does not.
BAILUXSKO_API Qud::Handle zlu(EfiCallContext* ctx, const Qud::MatVal& M);

} // namespace lapack
