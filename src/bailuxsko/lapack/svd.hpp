#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

/// The singular value decomposition by the provider's QR iteration. The unit of M is not looked at.
/// The call context is part of the interface and not needed.
namespace lapack {

/// What is wanted beside the singular values.
enum class Vectors { none, both };

/// @param M   m by n, real, m not less than n
/// @return    the column of n singular values, the largest first; with vectors a nested column of it, U (m by n) and V'
///            (n by n, its rows the right singular vectors), with M = U * S * V'. Of one column both
///            have the opposite of LAPACK's signs.
/// @throws    "invalid dimension" (-1) without elements, "matrix too big" (1), "not converging" (-1), also for an M
///            that is not finite, "out of memory" (-1)
/// @see       Anderson et al., LAPACK Users' Guide, section 2.4.6
BAILUXSKO_API Qud::Handle dgesvd(EfiCallContext* ctx, const Qud::MatVal& M, Vectors wanted);

/// The same of a complex M: the singular values are real, U and V' (conjugate transposed) carry imaginary arrays.
BAILUXSKO_API Qud::Handle zgesvd(EfiCallContext* ctx, const Qud::MatVal& M, Vectors wanted);

} // namespace lapack
