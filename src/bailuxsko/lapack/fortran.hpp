#pragma once

#include "bailuxsko/intel_mkl.hpp"

#include <cstddef>

/// The LAPACK routines that the drivers use, as Fortran compilers pass arguments: by address, and the length of each
/// text as a value at the end.
namespace lapack::fortran {

extern "C" {

void dgesv_(const int* n, const int* nrhs, double* A, const int* lda, int* ipiv, double* B, const int* ldb, int* info);
void zgesv_(const int* n, const int* nrhs, MKL_Complex16* A, const int* lda, int* ipiv, MKL_Complex16* B,
            const int* ldb, int* info);

void dgelsy_(const int* m, const int* n, const int* nrhs, double* A, const int* lda, double* B, const int* ldb,
             int* jpvt, const double* rcond, int* rank, double* work, const int* lwork, int* info);
void zgelsy_(const int* m, const int* n, const int* nrhs, MKL_Complex16* A, const int* lda, MKL_Complex16* B,
             const int* ldb, int* jpvt, const double* rcond, int* rank, MKL_Complex16* work, const int* lwork,
             double* rwork, int* info);

void dgetrf_(const int* m, const int* n, double* A, const int* lda, int* ipiv, int* info);
void zgetrf_(const int* m, const int* n, MKL_Complex16* A, const int* lda, int* ipiv, int* info);
void dgetri_(const int* n, double* A, const int* lda, const int* ipiv, double* work, const int* lwork, int* info);
void zgetri_(const int* n, MKL_Complex16* A, const int* lda, const int* ipiv, MKL_Complex16* work, const int* lwork,
             int* info);

void dsytrf_(const char* uplo, const int* n, double* A, const int* lda, int* ipiv, double* work, const int* lwork,
             int* info, std::size_t uplo_length);
void dsytri_(const char* uplo, const int* n, double* A, const int* lda, const int* ipiv, double* work, int* info,
             std::size_t uplo_length);

} // extern "C"

} // namespace lapack::fortran
