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

void dgesvd_(const char* jobu, const char* jobvt, const int* m, const int* n, double* A, const int* lda, double* S,
             double* U, const int* ldu, double* VT, const int* ldvt, double* work, const int* lwork, int* info,
             std::size_t jobu_length, std::size_t jobvt_length);
void zgesvd_(const char* jobu, const char* jobvt, const int* m, const int* n, MKL_Complex16* A, const int* lda,
             double* S, MKL_Complex16* U, const int* ldu, MKL_Complex16* VT, const int* ldvt, MKL_Complex16* work,
             const int* lwork, double* rwork, int* info, std::size_t jobu_length, std::size_t jobvt_length);

void dgeqrf_(const int* m, const int* n, double* A, const int* lda, double* tau, double* work, const int* lwork,
             int* info);
void zgeqrf_(const int* m, const int* n, MKL_Complex16* A, const int* lda, MKL_Complex16* tau, MKL_Complex16* work,
             const int* lwork, int* info);
void dorgqr_(const int* m, const int* n, const int* k, double* A, const int* lda, const double* tau, double* work,
             const int* lwork, int* info);
void zungqr_(const int* m, const int* n, const int* k, MKL_Complex16* A, const int* lda, const MKL_Complex16* tau,
             MKL_Complex16* work, const int* lwork, int* info);

// A provider may come without the first two of these, which are deprecated: see pivoting.hpp.
void dgeqpf_(const int* m, const int* n, double* A, const int* lda, int* jpvt, double* tau, double* work, int* info);
void zgeqpf_(const int* m, const int* n, MKL_Complex16* A, const int* lda, int* jpvt, MKL_Complex16* tau,
             MKL_Complex16* work, double* rwork, int* info);
void dgeqp3_(const int* m, const int* n, double* A, const int* lda, int* jpvt, double* tau, double* work,
             const int* lwork, int* info);
void zgeqp3_(const int* m, const int* n, MKL_Complex16* A, const int* lda, int* jpvt, MKL_Complex16* tau,
             MKL_Complex16* work, const int* lwork, double* rwork, int* info);

void dpotrf_(const char* uplo, const int* n, double* A, const int* lda, int* info, std::size_t uplo_length);
void zpotrf_(const char* uplo, const int* n, MKL_Complex16* A, const int* lda, int* info, std::size_t uplo_length);
void dpstrf_(const char* uplo, const int* n, double* A, const int* lda, int* piv, int* rank, const double* tol,
             double* work, int* info, std::size_t uplo_length);
void zpstrf_(const char* uplo, const int* n, MKL_Complex16* A, const int* lda, int* piv, int* rank, const double* tol,
             double* work, int* info, std::size_t uplo_length);
void dsyev_(const char* jobz, const char* uplo, const int* n, double* A, const int* lda, double* w, double* work,
            const int* lwork, int* info, std::size_t jobz_length, std::size_t uplo_length);
void zheev_(const char* jobz, const char* uplo, const int* n, MKL_Complex16* A, const int* lda, double* w,
            MKL_Complex16* work, const int* lwork, double* rwork, int* info, std::size_t jobz_length,
            std::size_t uplo_length);
void dgeev_(const char* jobvl, const char* jobvr, const int* n, double* A, const int* lda, double* wr, double* wi,
            double* vl, const int* ldvl, double* vr, const int* ldvr, double* work, const int* lwork, int* info,
            std::size_t jobvl_length, std::size_t jobvr_length);
void zgeev_(const char* jobvl, const char* jobvr, const int* n, MKL_Complex16* A, const int* lda, MKL_Complex16* w,
            MKL_Complex16* vl, const int* ldvl, MKL_Complex16* vr, const int* ldvr, MKL_Complex16* work,
            const int* lwork, double* rwork, int* info, std::size_t jobvl_length, std::size_t jobvr_length);
void dggev_(const char* jobvl, const char* jobvr, const int* n, double* A, const int* lda, double* B, const int* ldb,
            double* alphar, double* alphai, double* beta, double* vl, const int* ldvl, double* vr, const int* ldvr,
            double* work, const int* lwork, int* info, std::size_t jobvl_length, std::size_t jobvr_length);
void zggev_(const char* jobvl, const char* jobvr, const int* n, MKL_Complex16* A, const int* lda, MKL_Complex16* B,
            const int* ldb, MKL_Complex16* alpha, MKL_Complex16* beta, MKL_Complex16* vl, const int* ldvl,
            MKL_Complex16* vr, const int* ldvr, MKL_Complex16* work, const int* lwork, double* rwork, int* info,
            std::size_t jobvl_length, std::size_t jobvr_length);
void dladiv_(const double* a, const double* b, const double* c, const double* d, double* re, double* im);

} // extern "C"

} // namespace lapack::fortran
