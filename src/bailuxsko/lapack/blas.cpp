#include "bailuxsko/blas.hpp"

#include "bailuxsko/lapack/routines.hpp"

#include <cblas.h>

namespace Efi {

namespace {

CBLAS_ORDER order_of(int order)
{
    return static_cast<CBLAS_ORDER>(order);
}

CBLAS_TRANSPOSE transpose_of(int trans)
{
    return static_cast<CBLAS_TRANSPOSE>(trans);
}

} // namespace

double MKLBLAS::ddot(int n, const double* x, int incx, const double* y, int incy)
{
    return cblas_ddot(n, x, incx, y, incy);
}

void MKLBLAS::dcopy(int n, const double* x, int incx, double* y, int incy)
{
    cblas_dcopy(n, x, incx, y, incy);
}

void MKLBLAS::dcopy2(int n, const double* x, int xoffset, double* y, int yoffset)
{
    cblas_dcopy(n, x + xoffset, 1, y + yoffset, 1);
}

void MKLBLAS::daxpy(int n, double alpha, const double* x, int incx, double* y, int incy)
{
    cblas_daxpy(n, alpha, x, incx, y, incy);
}

void MKLBLAS::dscal(int n, double alpha, double* x, int incx)
{
    cblas_dscal(n, alpha, x, incx);
}

void MKLBLAS::dgemv(int order, int trans, int m, int n, double alpha, const double* a, int lda, const double* x,
                    int incx, double beta, double* y, int incy)
{
    cblas_dgemv(order_of(order), transpose_of(trans), m, n, alpha, a, lda, x, incx, beta, y, incy);
}

void MKLBLAS::dgemm(int order, int transa, int transb, int m, int n, int k, double alpha, const double* a, int lda,
                    const double* b, int ldb, double beta, double* c, int ldc)
{
    cblas_dgemm(order_of(order), transpose_of(transa), transpose_of(transb), m, n, k, alpha, a, lda, b, ldb, beta, c,
                ldc);
}

void MKLLAPACK::dgesv(int n, int nrhs, double* a, int, int* ipiv, double* b, int, int& info)
{
    lapack::routines().dgesv(&n, &nrhs, a, &n, ipiv, b, &n, &info);
}

} // namespace Efi
