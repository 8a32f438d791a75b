#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Eigenvalues and eigenvectors by LAPACK. A matrix that is symmetric or Hermitian to the last bit takes the routine
/// for such matrices, any other the general one; complex is a matrix that carries an imaginary array.
///
/// Eigenvalues are ordered by their real parts, largest first; equal ones stand as the index heap sort leaves them,
/// which may turn a conjugate pair round. Column i of the eigenvectors belongs to eigenvalue i; their scale, sign and
/// phase are LAPACK's: orthonormal columns of symmetric and Hermitian matrices, columns of length 1 with a real
/// largest component of general ones, of a pair of matrices columns whose largest |re| + |im| is 1.
/// @see Golub and Van Loan, Matrix Computations, chapters 7 and 8
namespace Efi::IntelMKL {

/// The eigenvalues of M.
/// @param M   n by n, n at least 2, one unit; not changed
/// @return    n by 1, unit(M); real for a symmetric or Hermitian M, else with an imaginary array
/// @throws    "must be scalar matrix" (1), "must be square" (1), "invalid dimension" (-1) without elements,
///            "not converging" (-1), also for elements that are not finite, "index out of bounds" (-1) for a 1-by-1 M,
///            "out of memory" (-1), "matrix too big" (1)
BAILUXSKO_API Qud::Handle eigenvals(const Qud::Handle& M);

/// The eigenvectors of M.
/// @param M     as in `eigenvals`
/// @param side  "R" for the right ones, which it is when absent, "L" for the left ones
/// @return      n by n, without unit; real for a real symmetric M, else with an imaginary array
/// @throws      "must be scalar matrix" (1), "must be string" (2), "invalid argument" (2), "must be square" (1), and
///              from "invalid dimension" on as in `eigenvals`
BAILUXSKO_API Qud::Handle eigenvecs(const Qud::Handle& M, const Qud::Handle& side);

/// The generalised eigenvalues: A x = lambda B x. A decides between real and complex: beside a real A the imaginary
/// parts of B are dropped. Beside a real A an infinite eigenvalue is the largest finite number with its sign.
/// @param A   n by n, n at least 2, one unit; not changed
/// @param B   n by n, one unit, which need not be that of A; not changed
/// @return    n by 1, without unit, with an imaginary array
/// @throws    "must be scalar matrix" (1), (2), "must be square" (1), (2), "array size mismatch" (-1), and from
///            "invalid dimension" on as in `eigenvals`
BAILUXSKO_API Qud::Handle genvals(const Qud::Handle& A, const Qud::Handle& B);

/// The generalised eigenvectors.
/// @param side  as in `eigenvecs`
/// @return      n by n, without unit, with an imaginary array
/// @throws      "must be scalar matrix" (1), (2), "must be square" (1), (2), "array size mismatch" (-1), "must be
///              string" (3), "invalid argument" (3), and from "invalid dimension" on as in `eigenvals`
BAILUXSKO_API Qud::Handle genvecs(const Qud::Handle& A, const Qud::Handle& B, const Qud::Handle& side);

} // namespace Efi::IntelMKL
