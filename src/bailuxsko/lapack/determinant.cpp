#include "bailuxsko/lapack/determinant.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "efiutl/messages.hpp"

namespace lapack {

namespace {

/// LAPACK counts pivot rows from 1: row i stays in its place when pivot i is i + 1.
bool is_exchanged(const int* ipiv, std::size_t i)
{
    return ipiv[i] != static_cast<int>(i) + 1;
}

Qud::Handle real_determinant(const Qud::MatVal& A, const int n, int* ipiv)
{
    mkl_auto_ptr<double> buffer;
    double* const u = buffer.allocate_uncleared(A.count());
    packMatval(A, u, 0);
    int info = 0;
    routines().dgetrf(&n, &n, u, &n, ipiv, &info);
    if (info != 0)
        return Qud::NumVal::make(0.0);
    double d = 1.0;
    for (std::size_t i = 0; i < A.Rows(); ++i) {
        d = u[i + i * A.Rows()] * d;
        if (is_exchanged(ipiv, i))
            d = -d;
    }
    return Qud::NumVal::make(d);
}

Qud::Handle complex_determinant(const Qud::MatVal& A, const int n, int* ipiv)
{
    mkl_auto_ptr<MKL_Complex16> buffer;
    const MKL_Complex16* const u = complex_copy(A, buffer);
    int info = 0;
    routines().zgetrf(&n, &n, buffer.get(), &n, ipiv, &info);
    if (info != 0)
        return Qud::NumVal::make(0.0);
    double re = u[0].real();
    double im = u[0].imag();
    for (std::size_t i = 0; i < A.Rows(); ++i) {
        if (i > 0) { // no 1 to begin with: 1 * (inf + 0i) would be inf + NaN i
            const MKL_Complex16 factor = u[i + i * A.Rows()];
            const double product_re = factor.real() * re - factor.imag() * im;
            im = factor.real() * im + factor.imag() * re;
            re = product_re;
        }
        if (is_exchanged(ipiv, i)) {
            re = -re;
            im = -im;
        }
    }
    return Qud::NumVal::make(re, im);
}

} // namespace

Qud::Handle _determinant(EfiCallContext*, const Qud::MatVal& A)
{
    const DriverScope scope;
    refuse_empty(A);
    if (!A.is_square())
        Evl::Run::AppException::Raise(msg::must_be_square, -1);
    const int n = dimension(A.Rows());
    mkl_auto_ptr<int> ipiv;
    ipiv.allocate(A.Rows());
    return A.HasImag() ? complex_determinant(A, n, ipiv.get()) : real_determinant(A, n, ipiv.get());
}

} // namespace lapack
