#include "bailuxsko/lapack/pivoting.hpp"

namespace lapack {

namespace {

#if defined(BAILUXSKO_HAS_GEQPF)
constexpr bool has_geqpf = true;
#else
constexpr bool has_geqpf = false;
#endif

} // namespace

void dgeqpf_of_provider(const int* m, const int* n, double* A, const int* lda, int* jpvt, double* tau, double* work,
                        int* info)
{
    if constexpr (has_geqpf)
        fortran::dgeqpf_(m, n, A, lda, jpvt, tau, work, info);
    else
        dgeqpf_by_dgeqp3(m, n, A, lda, jpvt, tau, work, info);
}

void zgeqpf_of_provider(const int* m, const int* n, MKL_Complex16* A, const int* lda, int* jpvt, MKL_Complex16* tau,
                        MKL_Complex16* work, double* rwork, int* info)
{
    if constexpr (has_geqpf)
        fortran::zgeqpf_(m, n, A, lda, jpvt, tau, work, rwork, info);
    else
        zgeqpf_by_zgeqp3(m, n, A, lda, jpvt, tau, work, rwork, info);
}

void dgeqpf_by_dgeqp3(const int* m, const int* n, double* A, const int* lda, int* jpvt, double* tau, double* work,
                      int* info)
{
    const int lwork = pivoting_work(*n);
    fortran::dgeqp3_(m, n, A, lda, jpvt, tau, work, &lwork, info);
}

void zgeqpf_by_zgeqp3(const int* m, const int* n, MKL_Complex16* A, const int* lda, int* jpvt, MKL_Complex16* tau,
                      MKL_Complex16* work, double* rwork, int* info)
{
    const int lwork = pivoting_work(*n);
    fortran::zgeqp3_(m, n, A, lda, jpvt, tau, work, &lwork, rwork, info);
}

} // namespace lapack
