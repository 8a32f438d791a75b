#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"
#include "efiutl/records.hpp"

#include <complex>
#include <cstddef>

namespace lapack {

/// A complex element of LAPACK's matrices: real part, then imaginary part.
using MKL_Complex16 = std::complex<double>;
static_assert(sizeof(MKL_Complex16) == 16);

} // namespace lapack

/// Operations on LAPACK.
namespace Efi::IntelMKL {

/// The number of threads that LAPACK was last told to work on. Without unit.
BAILUXSKO_API Qud::Handle getMaxThreads();

/// Lets LAPACK work on `count` threads from now on, in every function library of the host.
/// @param count   a whole number above 0; its unit is not looked at
/// @return        the count until now, without unit
/// @throws        "must be positive integer" (1), also when absent or beyond 32-bit integers; the count then stays
BAILUXSKO_API Qud::Handle setNumThreads(const Qud::Handle& count);

/// X with A * X = B: by LU for a square A, else the least-squares solution of minimum norm.
/// @param A   m by n; one unit, or a unit per row and column
/// @param B   m by nrhs, likewise
/// @return    n by nrhs, unit(B) / unit(A); with an imaginary array when A or B has one
/// @throws    "must be matrix" (1), (2), "array size mismatch" (-1), "invalid dimension" (-1) without elements,
///            "not converging" (-1): a square A is exactly singular, "must be a linear algebra matrix" (1), (2),
///            "matrix unit mismatch" (-1), "unit power not representable" (-1), "matrix too big" (1)
/// @see       Golub and Van Loan, Matrix Computations, sections 3.4 and 5.5
BAILUXSKO_API Qud::Handle lsolve(const Qud::Handle& A, const Qud::Handle& B);

/// The same for two matrices of numbers, whose units are not looked at; X has no unit.
BAILUXSKO_API Qud::Handle ScalarLsolve(const Qud::MatVal& A, const Qud::MatVal& B);

/// The same for matrices whose elements carry different units. The numbers are solved first: a numeric failure is
/// reported ahead of a unit error. Texts and nested arrays are no numbers and are refused before.
BAILUXSKO_API Qud::Handle CrazyLsolve(const Qud::MatVal& A, const Qud::MatVal& B);

} // namespace Efi::IntelMKL

namespace Efi {

/// Copies between host matrices and LAPACK's layouts. A leading dimension of 0 stands for the number of rows.
struct BAILUXSKO_API MKLUtilityFunctions {
    /// The real parts of M into D, column j at D + j * ld.
    static void packMatval(const Qud::MatVal& M, double* D, std::size_t ld);
    /// M into Z; the imaginary slots are left alone when M is real.
    static void cmat2mkl(const Qud::MatVal& M, lapack::MKL_Complex16* Z, std::size_t ld);
    /// Z into both arrays of M, the record of a host matrix in the making, which has an imaginary array.
    static void mkl2cmat(const lapack::MKL_Complex16* Z, const aMatrix& M, std::size_t ld);
};

} // namespace Efi
