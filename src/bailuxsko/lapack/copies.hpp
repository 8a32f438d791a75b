#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/buffers.hpp"
#include "efiutl/api.hpp"

#include <cstddef>

/// Host matrices into LAPACK's layouts and back. A leading dimension of 0 stands for the number of rows; elements of
/// the destination between the rows and the leading dimension are left alone.
namespace lapack {

/// The real parts of M into D, column j at D + j * ld.
BAILUXSKO_API void packMatval(const Qud::MatVal& M, double* D, std::size_t ld);

/// M into Z. Imaginary slots are written only if M has imaginary parts: for a real M they have to be zero before.
BAILUXSKO_API void cmat2mkl(const Qud::MatVal& M, MKL_Complex16* Z, std::size_t ld);

/// Z into both arrays of a record (the arrays of a host matrix in the making), which has an imaginary one.
BAILUXSKO_API void mkl2cmat(const MKL_Complex16* Z, const aMatrix& M, std::size_t ld);

/// M with leading dimension ld in a buffer of its own, imaginary parts 0 where M is real. When ld is more than its
/// rows, the elements between are zeros. @throws "out of memory" (-1)
BAILUXSKO_API MKL_Complex16* complex_copy(const Qud::MatVal& M, mkl_auto_ptr<MKL_Complex16>& buffer,
                                          std::size_t ld = 0);

/// M, packed, with a column of zeros behind it. For routines that take a row of M as the vector of a product:
/// OpenBLAS's complex gemv loads the element behind the last one, a whole column beyond the end. @throws "out of
/// memory" (-1)
BAILUXSKO_API MKL_Complex16* complex_copy_and_a_column(const Qud::MatVal& M, mkl_auto_ptr<MKL_Complex16>& buffer);

/// A complex host matrix of rows by cols from Z with leading dimension ld. @throws std::bad_alloc
BAILUXSKO_API Qud::Handle complex_matrix(const MKL_Complex16* Z, std::uint32_t rows, std::uint32_t cols,
                                         std::size_t ld = 0);

} // namespace lapack
