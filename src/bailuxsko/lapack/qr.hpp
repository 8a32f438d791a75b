#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

/// QR by Householder reflectors, with Q square. The unit of M is not looked at.
/// All throw "invalid dimension" (-1) without elements, "matrix too big" (1), "not converging" (-1) where a routine
/// refuses, "out of memory" (-1); those with pivoting raise as native routines do, the others as the host does.
/// @see       Golub and Van Loan, Matrix Computations, sections 5.2 and 5.4
namespace lapack {

/// @param M   m by n, real
/// @return    a nested column of Q (m by m) and R (m by n, zeros below the diagonal) with M = Q * R
BAILUXSKO_API Qud::Handle dqr(EfiCallContext* ctx, const Qud::MatVal& M);

/// The same of a complex M: Q and R carry imaginary arrays.
BAILUXSKO_API Qud::Handle zqr(EfiCallContext* ctx, const Qud::MatVal& M);

/// With column pivoting: the column that is farthest from those before it comes next, so the diagonal of R falls in
/// magnitude.
/// @param M   m by n, real
/// @return    a nested column of P (n by n, zeros and ones), Q (m by m) and R (m by n) with M * P = Q * R
BAILUXSKO_API Qud::Handle dqr_pvt(EfiCallContext* ctx, const Qud::MatVal& M);

/// The same of a complex M: Q and R carry imaginary arrays, P does not.
BAILUXSKO_API Qud::Handle zqr_pvt(EfiCallContext* ctx, const Qud::MatVal& M);

} // namespace lapack
