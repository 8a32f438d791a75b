#pragma once

#include "efiutl/api.hpp"

namespace Efi {

/// BLAS for hosts: each hands its arguments on to the routine of its name. `order` is 101 for row-major and 102 for
/// column-major, `trans` 111 for the matrix as it is, 112 for its transpose.
struct BAILUXSKO_API MKLBLAS {
    static double ddot(int n, const double* x, int incx, const double* y, int incy);
    static void dcopy(int n, const double* x, int incx, double* y, int incy);
    /// n elements from x + xoffset to y + yoffset.
    static void dcopy2(int n, const double* x, int xoffset, double* y, int yoffset);
    static void daxpy(int n, double alpha, const double* x, int incx, double* y, int incy);
    static void dscal(int n, double alpha, double* x, int incx);
    static void dgemv(int order, int trans, int m, int n, double alpha, const double* a, int lda, const double* x,
                      int incx, double beta, double* y, int incy);
    static void dgemm(int order, int transa, int transb, int m, int n, int k, double alpha, const double* a, int lda,
                      const double* b, int ldb, double beta, double* c, int ldc);
};

/// LAPACK for hosts.
struct BAILUXSKO_API MKLLAPACK {
    /// Solves with n as the leading dimension of a and b, whatever lda and ldb say: both have to be packed,
    /// n by n and n by nrhs. LAPACK's verdict stands in info.
    static void dgesv(int n, int nrhs, double* a, int lda, int* ipiv, double* b, int ldb, int& info);
};

} // namespace Efi
