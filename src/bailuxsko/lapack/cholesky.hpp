#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

/// Cholesky factors of a symmetric or Hermitian positive definite M, of which one triangle only is read. The unit of M
/// is not looked at. All throw "invalid dimension" (-1) without elements, "must be square" (-1), "matrix too big" (1),
/// "non-positive definite matrix" (-1), "out of memory" (-1); those with pivoting raise as native routines do, the
/// others as the host does.
/// @see       Golub and Van Loan, Matrix Computations, section 4.2
namespace lapack {

/// Which factor is made, and which triangle of M read: L with M = L * L', or U with M = U' * U.
enum class Triangle { lower, upper };

/// @param M   n by n, real
/// @return    n by n: the factor, zeros in the other triangle
BAILUXSKO_API Qud::Handle dCholesky(EfiCallContext* ctx, const Qud::MatVal& M, Triangle triangle);

/// The same of a complex M; the factor carries an imaginary array.
BAILUXSKO_API Qud::Handle zCholesky(EfiCallContext* ctx, const Qud::MatVal& M, Triangle triangle);

/// With pivoting: of what is left of the diagonal the largest element comes next. A semidefinite M is refused like any
/// other that is not positive definite.
/// @param M   n by n, real
/// @return    a nested column of P (n by n, zeros and ones) and the factor of P' * M * P
BAILUXSKO_API Qud::Handle dCholesky_pvt(EfiCallContext* ctx, const Qud::MatVal& M, Triangle triangle);

/// The same of a complex M: the factor carries an imaginary array, P does not.
BAILUXSKO_API Qud::Handle zCholesky_pvt(EfiCallContext* ctx, const Qud::MatVal& M, Triangle triangle);

} // namespace lapack
