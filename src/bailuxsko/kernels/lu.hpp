#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// LU factorisation by Gaussian elimination with implicitly scaled rows and row exchanges.
/// @see Golub and Van Loan, Matrix Computations, sections 3.2 and 3.4;
///      Press et al., Numerical Recipes, section 2.3, for the implicit scaling
namespace native {

/// P, L and U with P * A = L * U.
/// @param A   n by n; not changed
/// @return    n by 3 n: P in columns 0 to n - 1, L in n to 2 n - 1, U in 2 n to 3 n - 1; complex when A is
/// @throws    "must be square" (1) if A is wide, (-1) if it is tall; all that the factorisations raise
BAILUXSKO_API aMatrix* lu(EfiCallContext* ctx, aMatrix* A);

/// Factorises the real part of A in place: multipliers of L below the diagonal, U on and above it.
/// Of equally scaled rows the last becomes the pivot row.
/// @param pivots  null, or n doubles: the number, counted from 0, of the row exchanged with row k
/// @param sign    1.0, or -1.0 after an odd number of exchanges
/// @param strict  refuse a diagonal element, but the first, that is smaller than eps times the elimination's growth
/// @throws  "null pointer" (-1), "invalid dimension" (-1), "must be square" (-1), "out of memory" (-1);
///          "singular matrix" (-1): a row of zeros, a pivot of exactly zero, or refused by the strict test
BAILUXSKO_API void lu_decomp(EfiCallContext* ctx, aMatrix* A, double* pivots, double* sign, bool strict);

/// The same for a complex matrix, both parts in place. It differs from the real routine in this:
/// of equally scaled rows the first becomes the pivot row; pivots counts rows from 1; strict refuses a diagonal
/// element, the first included, whose modulus, computed from the squares, is exactly zero. A matrix without an
/// imaginary array gets one only when an imaginary part that is not zero has to be stored.
/// @throws  "invalid dimension" (-1), "must be square" (-1), "unknown error" (-1) for an absent real array,
///          "out of memory" (-1), "singular matrix" (-1)
BAILUXSKO_API void clu_decomp(EfiCallContext* ctx, aMatrix* A, double* pivots, double* sign, bool strict);

} // namespace native
