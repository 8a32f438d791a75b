#pragma once

#include "efiutl/api.hpp"

/// Small real systems without the provider, whose preparations for one of them cost more than its arithmetic. Called
/// and answered like LAPACK's routines; larger systems are handed on to these.
namespace lapack {

/// Systems of more rows or columns go to the provider.
inline constexpr int largest_small_system = 32;

/// LU factors with row exchanges, like `dgetrf`.
BAILUXSKO_API void dgetrf_of_any_size(const int* m, const int* n, double* A, const int* lda, int* ipiv, int* info);

/// The solution of a square system, like `dgesv`.
BAILUXSKO_API void dgesv_of_any_size(const int* n, const int* nrhs, double* A, const int* lda, int* ipiv, double* B,
                                     const int* ldb, int* info);

} // namespace lapack
