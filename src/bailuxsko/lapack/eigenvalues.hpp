#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

#include <string_view>

/// Eigenvalues or eigenvectors of a square matrix, and of a pair of square matrices of one size, by LAPACK.
///
/// All drivers share this: `mode` is "E" for the eigenvalues, "R" for the right eigenvectors, "L" for the left ones
/// (of a symmetric or Hermitian matrix both are the same). Eigenvalues come as a column, largest real part first,
/// eigenvectors as a matrix with column i belonging to eigenvalue i, scaled as the routine leaves them. Units are not
/// looked at and results have none. The context is not used.
/// @throws "invalid dimension" (-1) without elements, "not converging" (-1) for elements that are not finite and when
///         the routine says so, "index out of bounds" (-1) for a 1-by-1 matrix, "out of memory" (-1), "matrix too big"
///         (1)
/// @see    Golub and Van Loan, Matrix Computations, chapters 7 and 8
namespace lapack {

/// A is symmetric; its upper triangle is read. The results are real.
BAILUXSKO_API Qud::Handle dsyev(EfiCallContext* ctx, const Qud::MatVal& A, std::string_view mode);
/// A is Hermitian; its upper triangle is read. Eigenvalues are real, eigenvectors complex.
BAILUXSKO_API Qud::Handle zheev(EfiCallContext* ctx, const Qud::MatVal& A, std::string_view mode);

/// The real parts of A. The results carry an imaginary array in any case.
BAILUXSKO_API Qud::Handle dgeev(EfiCallContext* ctx, const Qud::MatVal& A, std::string_view mode);
BAILUXSKO_API Qud::Handle zgeev(EfiCallContext* ctx, const Qud::MatVal& A, std::string_view mode);

/// The real parts of A and B. The results carry an imaginary array in any case. Of an infinite eigenvalue (beta is 0)
/// the largest finite number with the sign of alpha stands in the real part, 0 when alpha is 0; its imaginary part,
/// where alpha has one, gets the largest finite number with the sign of the new real part, 0 when that is 0.
BAILUXSKO_API Qud::Handle dggev(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B, std::string_view mode);
/// An infinite eigenvalue is what LAPACK's complex division by 0 gives.
BAILUXSKO_API Qud::Handle zggev(EfiCallContext* ctx, const Qud::MatVal& A, const Qud::MatVal& B, std::string_view mode);

} // namespace lapack
