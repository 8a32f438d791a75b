#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

namespace lapack {

/// A * B by BLAS. Two columns of equal length multiply to their inner product, the second one conjugated:
/// the sum of A(i) * conj(B(i)).
/// @param A   m by k, numbers throughout; the unit is not looked at
/// @param B   k by n, likewise
/// @return    m by n, or a number when that is 1 by 1; with an imaginary array when A or B has one; without unit
/// @throws    "invalid dimension" (-1) without elements, "array size mismatch" (-1), "matrix too big" (1),
///            "out of memory" (-1)
BAILUXSKO_API Qud::Handle _gemm(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B);

} // namespace lapack
