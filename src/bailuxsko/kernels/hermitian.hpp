#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// All eigenvalues of a Hermitian matrix, without vectors: Householder reflections to a real tridiagonal matrix, then
/// the rational QL algorithm.
/// @param A            n by n, Hermitian; a record without an imaginary array is symmetric; overwritten
/// @param eigenvalues  n doubles, which get the eigenvalues in ascending order
/// @throws "invalid dimension" (-1) without rows or columns, "must be square" (-1), "unknown error" (-1) without a real
///         array, "too many iterations" (-1) after 30 steps for one eigenvalue, "out of memory" (-1)
/// @see    Martin, Reinsch and Wilkinson, Householder's tridiagonalization of a symmetric matrix, Numerische Mathematik
///         11 (1968); Reinsch, Algorithm 464: Eigenvalues of a real, symmetric, tridiagonal matrix, CACM 16 (1973)
BAILUXSKO_API void herm_eigenvalues(EfiCallContext* ctx, aMatrix* A, double* eigenvalues);

} // namespace native
