#pragma once

#include "tests/support/wide.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <span>

/// How far a result is from what it should be, as LAPACK's own tests judge it (Anderson et al., Installation Guide for
/// LAPACK, LAPACK Working Note 41): the 1-norm of what is left, in units of n times the precision times the norm of
/// what went in. A few units are rounding; a wrong result has thousands. Computed in extended precision.
namespace support {

inline constexpr double eps = std::numeric_limits<double>::epsilon();

/// left / (n * eps * size). Nothing left of nothing is 0.
inline double ratio(Wide::Real left, std::size_t n, Wide::Real size)
{
    if (left == 0.0L)
        return 0.0;
    return static_cast<double>(left / (static_cast<Wide::Real>(std::max<std::size_t>(n, 1)) * eps * size));
}

/// P * A for a permutation P: row i of the product is the row of A where row i of P has its 1.
inline Wide permuted(const Wide& P, const Wide& A)
{
    Wide PA(A.rows(), A.cols(), A.is_complex());
    for (std::size_t k = 0; k < P.cols(); ++k)
        for (std::size_t i = 0; i < P.rows(); ++i)
            if (P.re(i, k) != 0.0L)
                for (std::size_t j = 0; j < A.cols(); ++j) {
                    PA.re(i, j) += P.re(i, k) * A.re(k, j);
                    if (A.is_complex())
                        PA.im(i, j) += P.re(i, k) * A.im(k, j);
                }
    return PA;
}

/// P * A - L * U
inline double residual_lu(const Wide& A, const Wide& P, const Wide& L, const Wide& U)
{
    return ratio(norm1(permuted(P, A) - L * U), A.rows(), norm1(A));
}

/// I - A * X, against both norms
inline double residual_inverse(const Wide& A, const Wide& X)
{
    return ratio(norm1(Wide::identity(A.rows()) - A * X), A.rows(), norm1(A) * norm1(X));
}

/// A - L * L^H
inline double residual_llt(const Wide& A, const Wide& L)
{
    return ratio(norm1(A - L * L.adjoint()), A.rows(), norm1(A));
}

/// A - Q * R
inline double residual_product(const Wide& A, const Wide& Q, const Wide& R)
{
    return ratio(norm1(A - Q * R), std::max(A.rows(), A.cols()), norm1(A));
}

/// I - Q^H * Q
inline double residual_orthogonal(const Wide& Q)
{
    return ratio(norm1(Wide::identity(Q.cols()) - Q.adjoint() * Q), Q.rows(), 1.0L);
}

/// The four conditions of Moore and Penrose, each against the norms of its factors; the worst.
inline double residual_pseudoinverse(const Wide& A, const Wide& X)
{
    const std::size_t n = std::max(A.rows(), A.cols());
    const Wide AX = A * X;
    const Wide XA = X * A;
    const Wide::Real a = norm1(A);
    const Wide::Real x = norm1(X);
    return std::max({ratio(norm1(AX * A - A), n, a * a * x), ratio(norm1(XA * X - X), n, x * x * a),
                     ratio(norm1(AX.adjoint() - AX), n, a * x), ratio(norm1(XA.adjoint() - XA), n, a * x)});
}

/// The largest difference of numbers that should agree, against the largest of them.
inline double residual_values(std::span<const double> found, std::span<const double> expected)
{
    Wide::Real difference = found.size() == expected.size() ? 0.0L : std::numeric_limits<double>::infinity();
    Wide::Real size = 0.0L;
    for (std::size_t k = 0; k < std::min(found.size(), expected.size()); ++k) {
        const Wide::Real off = std::fabs(Wide::Real{found[k]} - expected[k]);
        difference = off <= difference ? difference : off;
        size = std::max<Wide::Real>(size, std::fabs(expected[k]));
    }
    return ratio(difference, expected.size(), size);
}

/// A * v - z * v of one eigenvalue z and its vector, against the norms of A and v.
inline double residual_eigenvector(const Wide& A, const Wide& v, Wide::Real z_re, Wide::Real z_im)
{
    Wide z(1, 1, true);
    z.re(0, 0) = z_re;
    z.im(0, 0) = z_im;
    return ratio(norm1(A * v - v * z), A.rows(), norm1(A) * norm1(v));
}

} // namespace support
