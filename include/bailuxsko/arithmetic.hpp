#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// The operators * / ^ on numbers and matrices. Of several wrong kinds the second argument's is reported.
/// An array among the elements of a matrix is entered element by element where the operation goes by elements.
/// Results carry an imaginary array exactly when some imaginary part is not zero, but for products of a complex matrix
/// with more than 10 rows or columns on the left, which always carry one.
namespace Efi::Matrix {

/// a * b: product of numbers, number times every element, or the product of matrices. Two columns of equal length give
/// their inner product with the second one conjugated; a 1-by-1 product is a number.
/// @return    unit(a) * unit(b); of matrices with a unit per row and column the pattern of the product
/// @throws    "must be a scalar or a matrix" (2, 1), "array size mismatch" (-1), "invalid dimension" (-1) without rows
///            or columns, "must be a linear algebra matrix" (1, 2), "matrix unit mismatch" (-1),
///            "floating point exception" (0) where a has at most 10 rows and columns
BAILUXSKO_API Qud::Handle mult(const Qud::Handle& a, const Qud::Handle& b);

/// a / b: a times the inverse of a square matrix b, else element by element.
/// @return    unit(a) / unit(b)
/// @throws    "must be a scalar or a matrix" (2, 1), "divide by zero" (2), "array size mismatch" (-1),
///            all that `inv` and `mult` raise for a square b
BAILUXSKO_API Qud::Handle div(const Qud::Handle& a, const Qud::Handle& b);

/// x ^ y: numbers; a square matrix to a whole power of at most 10000, -1 being its inverse; a column element by
/// element; a number to the power of every element of a column; a function f to the power n, which is the function
/// with the value f(...) ^ n.
/// @return    unit(x) ^ y; of a matrix with a unit per row and column the pattern of the power
/// @throws    "must be a scalar or a matrix" (2, 1), "must be scalar" (2), "must be vector" (2), "must be square" (1),
///            "must be integer" (2), "must be self multiplicable" (1), "must be dimless" (2), "divide by zero" (2),
///            "domain error" (1), "matrix too big" (1), "floating point exception" (0), all that `inv` raises
/// @see       Knuth, The Art of Computer Programming, volume 2, section 4.6.3: powers by repeated squaring
BAILUXSKO_API Qud::Handle pwr(const Qud::Handle& x, const Qud::Handle& y);

/// x squared: a number, every element of a column, or the product of a square matrix with itself.
/// @return    unit(x)^2
/// @throws    "must be a scalar or a vector" (1), "floating point error" (-1) where the square of a number overflows,
///            "must be a scalar or a matrix" (1) for a text in a column, "must be square" (1), "invalid dimension"
///            (-1), "must be a linear algebra matrix" (1), "matrix unit mismatch" (-1), "floating point exception" (0)
BAILUXSKO_API Qud::Handle sqr(const Qud::Handle& x);

/// The Kronecker product: block (i, j) is a(i, j) times the whole of b.
/// @return    as many rows and columns as those of a times those of b; every element with the product of the units
/// @throws    "must be matrix" (1, 2), "must be a scalar or a matrix" (2, 1) for a text among the elements; two arrays
///            that meet raise what their product raises
/// @see       Golub and Van Loan, Matrix Computations, section 1.3.6
BAILUXSKO_API Qud::Handle kronecker(const Qud::Handle& a, const Qud::Handle& b);

} // namespace Efi::Matrix
