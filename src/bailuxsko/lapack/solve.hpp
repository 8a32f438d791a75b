#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

/// X with A * X = B by the provider's drivers. Units are not looked at; the arguments are numbers throughout.
/// The call context is part of the interface and not needed.
namespace lapack {

/// LU with partial pivoting.
/// @param A   n by n, real
/// @param B   n by nrhs, real
/// @return    n by nrhs, real
/// @throws    "invalid dimension" (-1) without elements, "matrix too big" (1), "not converging" (-1): A exactly
/// singular,
///            "out of memory" (-1)
/// @see       Anderson et al., LAPACK Users' Guide, section 2.3.1
BAILUXSKO_API Qud::Handle dgesv(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B);

/// The same where A, B or both are complex; the result carries an imaginary array.
BAILUXSKO_API Qud::Handle zgesv(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B);

/// The least-squares solution of minimum norm, by a complete orthogonal factorisation; columns that contribute less
/// than 1e-15 of the largest count as dependent.
/// @param A   m by n, real
/// @param B   m by nrhs, real
/// @return    n by nrhs, real, with columns max(m, n) apart
/// @throws    "invalid dimension" (-1) without elements, "matrix too big" (1), "not converging" (-1), "out of memory"
/// (-1)
/// @see       Anderson et al., LAPACK Users' Guide, section 2.3.2
BAILUXSKO_API Qud::Handle dgelss(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B);

/// The same where A, B or both are complex; the result is packed and carries an imaginary array.
BAILUXSKO_API Qud::Handle zgelss(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B);

} // namespace lapack
