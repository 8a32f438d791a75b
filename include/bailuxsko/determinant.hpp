#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Determinants, magnitudes and lengths. Strict forms take one kind of argument, `abs` and `det` any.
namespace Efi::Matrix {

/// The magnitude of a number, the length of a column (a 1-by-1 matrix too), the determinant of another square matrix.
/// Real matrices of at most 4 rows go by fraction-free elimination, which is exact for integers whose intermediate
/// determinants fit a double; complex and larger ones by factorisation, which is LAPACK's for complex ones and for more
/// than 32 rows. The determinant of [] is 1.
/// @return    unit(x); of a determinant unit(x)^n, or the product of the units over the diagonal
/// @throws    "must be a scalar or a matrix" (1), "must be square" (1), "must be scalar matrix" (1) for a column that
/// is
///            not of one unit, "must be a linear algebra matrix" (1), "matrix too big" (1)
/// @see       Bareiss, Sylvester's identity and multistep integer-preserving Gaussian elimination, Math. Comp. 22,
///            1968
BAILUXSKO_API Qud::Handle abs(const Qud::Handle& x);

/// The same as `abs`.
BAILUXSKO_API Qud::Handle det(const Qud::Handle& x);

/// The determinant of a square matrix, of a 1-by-1 one its element.
/// @throws    "must be matrix" (1), "must be square" (1), "must be a linear algebra matrix" (1), "matrix too big" (1)
BAILUXSKO_API Qud::Handle det_f(const Qud::Handle& M);

/// The magnitude of a number. @throws "must be scalar" (1)
BAILUXSKO_API Qud::Handle abs_f(const Qud::Handle& x);

/// The length of a column: the square root of the sum of the squared magnitudes, without scaling.
/// @throws    "must be vector" (1), "must be scalar matrix" (1)
BAILUXSKO_API Qud::Handle norm_f(const Qud::Handle& v);

} // namespace Efi::Matrix
