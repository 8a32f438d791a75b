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

/// The singular values of M, the largest first.
/// @param M   m by n, m not less than n, one unit
/// @return    n by 1, real, without unit
/// @throws    "must be scalar matrix" (1), "number of rows less than number of columns" (-1), "invalid dimension" (-1)
///            without elements, "not converging" (-1), also for infinities and NaN, "matrix too big" (1)
/// @see       Golub and Van Loan, Matrix Computations, section 8.6
BAILUXSKO_API Qud::Handle svds(const Qud::Handle& M);

/// The singular value decomposition M = U * S * V'. Of a matrix of one column, U and V' have the opposite of LAPACK's
/// signs.
/// @param M   m by n, m not less than n, one unit
/// @return    a nested column of the singular values (n by 1, the largest first), U (m by n) and V' (n by n, whose rows
///            are the right singular vectors); without units; U and V' are complex when M carries an imaginary array,
///            V' then being the conjugate transpose
/// @throws    as svds
/// @see       Golub and Van Loan, Matrix Computations, section 8.6
BAILUXSKO_API Qud::Handle svd(const Qud::Handle& M);

/// LU with partial pivoting, P * M = L * U, of a matrix of any shape. A singular one has a zero on the diagonal of U.
/// @param M   m by n, one unit
/// @return    a nested column of P (m by m, zeros and ones), L (m by k, unit diagonal) and U (k by n), k = min(m, n);
///            without units; L and U are complex when M carries an imaginary array
/// @throws    "must be scalar matrix" (1), "invalid dimension" (-1) without elements, "matrix too big" (1)
/// @see       Golub and Van Loan, Matrix Computations, section 3.4
BAILUXSKO_API Qud::Handle LU(const Qud::Handle& M);

/// QR by Householder reflectors, with Q square and R of M's shape.
/// @param M       m by n, one unit
/// @param pivot   a whole number, 1 when absent; its unit is not looked at
/// @return        pivot other than 0: a nested column of P (n by n, zeros and ones), Q (m by m) and R (m by n) with
///                M * P = Q * R, the diagonal of R falling in magnitude; pivot 0: of Q and R with M = Q * R; without
///                units; Q and R are complex when M carries an imaginary array
/// @throws        "must be scalar matrix" (1), "must be integer" (2), "invalid dimension" (-1) without elements,
///                "not converging" (-1), "matrix too big" (1)
/// @see           Golub and Van Loan, Matrix Computations, sections 5.2 and 5.4
BAILUXSKO_API Qud::Handle QR(const Qud::Handle& M, const Qud::Handle& pivot = nullptr);

/// The Cholesky factor of a positive definite matrix, of which one triangle only is read.
/// @param M       n by n, one unit
/// @param pivot   a whole number, 1 when absent; its unit is not looked at
/// @param upper   a whole number, 0 when absent; 0 reads the lower triangle and makes L with L * L' = M, any other
/// reads
///                the upper one and makes U with U' * U = M
/// @return        pivot other than 0: a nested column of P (n by n, zeros and ones) and the factor of P' * M * P;
///                pivot 0: the factor of M; zeros in the other triangle; without units; the factor is complex when M
///                carries an imaginary array
/// @throws        "must be scalar matrix" (1), "must be square" (1), "must be integer" (2), (3), "invalid dimension"
/// (-1)
///                without elements, "non-positive definite matrix" (-1), with pivoting also for a semidefinite M,
///                "matrix too big" (1)
/// @see           Golub and Van Loan, Matrix Computations, section 4.2
BAILUXSKO_API Qud::Handle Cholesky(const Qud::Handle& M, const Qud::Handle& pivot = nullptr,
                                   const Qud::Handle& upper = nullptr);

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
