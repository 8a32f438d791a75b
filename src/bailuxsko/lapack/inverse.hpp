#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

/// The inverse by the provider's routines. A is n by n, of numbers throughout; its unit is not looked at.
/// All throw "invalid dimension" (-1) without elements, "must be square" (-1), "matrix too big" (1),
/// "singularity" (-1), "out of memory" (-1). The call context is part of the interface and not needed.
/// @see Anderson et al., LAPACK Users' Guide, section 2.4.1
namespace lapack {

/// Of a real A: the symmetric way for an exactly symmetric A, else LU with partial pivoting.
BAILUXSKO_API Qud::Handle dinv(EfiCallContext* ctx, const Qud::MatVal& A);

/// Of a real symmetric A, from its upper triangle (Bunch and Kaufman's pivoting); the result is exactly symmetric.
BAILUXSKO_API Qud::Handle dsinv(EfiCallContext* ctx, const Qud::MatVal& A);

/// Of a complex A, Hermitian or not; the result carries an imaginary array.
BAILUXSKO_API Qud::Handle zinv(EfiCallContext* ctx, const Qud::MatVal& A);

} // namespace lapack
