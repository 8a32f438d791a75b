#pragma once

#include "bailuxsko/lapack/fortran.hpp"
#include "efiutl/api.hpp"

/// QR with column pivoting, called like `dgeqpf` and `zgeqpf`. LAPACK has deprecated these two in favour of `dgeqp3`
/// and `zgeqp3`, which need a longer workspace; the build finds out whether the provider still has them.
namespace lapack {

/// The workspace that every routine below may use: `dgeqp3` needs 3 n + 1, and with more it works on several columns
/// at a time.
constexpr int pivoting_work(int n) noexcept
{
    return 16 * n;
}

/// The provider's `dgeqpf`, or `dgeqp3` in its place.
BAILUXSKO_API void dgeqpf_of_provider(const int* m, const int* n, double* A, const int* lda, int* jpvt, double* tau,
                                      double* work, int* info);
/// The provider's `zgeqpf`, or `zgeqp3` in its place; rwork holds 2 n.
BAILUXSKO_API void zgeqpf_of_provider(const int* m, const int* n, MKL_Complex16* A, const int* lda, int* jpvt,
                                      MKL_Complex16* tau, MKL_Complex16* work, double* rwork, int* info);

/// `dgeqp3` in the place of `dgeqpf`.
BAILUXSKO_API void dgeqpf_by_dgeqp3(const int* m, const int* n, double* A, const int* lda, int* jpvt, double* tau,
                                    double* work, int* info);
/// `zgeqp3` in the place of `zgeqpf`.
BAILUXSKO_API void zgeqpf_by_zgeqp3(const int* m, const int* n, MKL_Complex16* A, const int* lda, int* jpvt,
                                    MKL_Complex16* tau, MKL_Complex16* work, double* rwork, int* info);

} // namespace lapack
