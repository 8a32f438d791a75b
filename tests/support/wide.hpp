#pragma once

#include "efiutl/columns.hpp"
#include "efiutl/records.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace support {

/// A matrix of extended precision, in which residuals are computed: rounding on the way does not blur them, and squares
/// of very large and very small numbers stay in range.
class Wide {
public:
    using Real = long double;

    Wide(std::size_t m, std::size_t n, bool complex)
        : m_m(m), m_n(n), m_re(m * n, 0.0L), m_im(complex ? m * n : 0, 0.0L)
    {
    }
    static Wide identity(std::size_t n)
    {
        Wide I(n, n, false);
        for (std::size_t k = 0; k < n; ++k)
            I.re(k, k) = 1.0L;
        return I;
    }
    /// Columns first to first + n - 1 of rows top to top + m - 1.
    static Wide block(const aMatrix* A, std::size_t top, std::size_t first, std::size_t m, std::size_t n)
    {
        Wide W(m, n, A->m_iv != nullptr);
        for (std::size_t j = 0; j < n; ++j)
            for (std::size_t i = 0; i < m; ++i) {
                W.re(i, j) = Efi::at(A, top + i, first + j);
                if (W.is_complex())
                    W.im(i, j) = Efi::at_i(A, top + i, first + j);
            }
        return W;
    }
    static Wide of(const aMatrix* A) { return block(A, 0, 0, A->m_rows, A->m_cols); }

    std::size_t rows() const { return m_m; }
    std::size_t cols() const { return m_n; }
    bool is_complex() const { return !m_im.empty(); }
    Real& re(std::size_t i, std::size_t j) { return m_re[i + j * m_m]; }
    Real& im(std::size_t i, std::size_t j) { return m_im[i + j * m_m]; }
    Real re(std::size_t i, std::size_t j) const { return m_re[i + j * m_m]; }
    Real im(std::size_t i, std::size_t j) const { return is_complex() ? m_im[i + j * m_m] : 0.0L; }

    /// The transpose, conjugate where there are imaginary parts.
    Wide adjoint() const
    {
        Wide T(m_n, m_m, is_complex());
        for (std::size_t j = 0; j < m_n; ++j)
            for (std::size_t i = 0; i < m_m; ++i) {
                T.re(j, i) = re(i, j);
                if (is_complex())
                    T.im(j, i) = -im(i, j);
            }
        return T;
    }

    friend Wide operator-(Wide A, const Wide& B)
    {
        if (B.is_complex() && !A.is_complex())
            A.m_im.assign(A.m_re.size(), 0.0L);
        for (std::size_t k = 0; k < A.m_re.size(); ++k)
            A.m_re[k] -= B.m_re[k];
        for (std::size_t k = 0; k < B.m_im.size(); ++k)
            A.m_im[k] -= B.m_im[k];
        return A;
    }

    friend Wide operator*(const Wide& A, const Wide& B)
    {
        Wide C(A.m_m, B.m_n, A.is_complex() || B.is_complex());
        const Wide T = A.transpose();
        T.add_product(T.m_re, B, B.m_re, 1.0L, C.m_re);
        if (A.is_complex() && B.is_complex())
            T.add_product(T.m_im, B, B.m_im, -1.0L, C.m_re);
        if (A.is_complex())
            T.add_product(T.m_im, B, B.m_re, 1.0L, C.m_im);
        if (B.is_complex())
            T.add_product(T.m_re, B, B.m_im, 1.0L, C.m_im);
        return C;
    }

private:
    Wide transpose() const
    {
        Wide T = adjoint();
        for (Real& x : T.m_im)
            x = -x;
        return T;
    }

    /// c += sign * (this array, transposed) * b, four sums at a time, for one alone waits for itself.
    void add_product(const std::vector<Real>& a, const Wide& B, const std::vector<Real>& b, Real sign,
                     std::vector<Real>& c) const
    {
        const std::size_t depth = m_m;
        for (std::size_t j = 0; j < B.m_n; ++j)
            for (std::size_t i = 0; i < m_n; i += 4) {
                const Real* const x[4] = {&a[i * depth], &a[std::min(i + 1, m_n - 1) * depth],
                                          &a[std::min(i + 2, m_n - 1) * depth], &a[std::min(i + 3, m_n - 1) * depth]};
                const Real* const y = b.data() + j * depth;
                Real sum[4] = {};
                for (std::size_t k = 0; k < depth; ++k)
                    for (std::size_t r = 0; r < 4; ++r)
                        sum[r] += x[r][k] * y[k];
                for (std::size_t r = 0; r < std::min<std::size_t>(4, m_n - i); ++r)
                    c[i + r + j * m_n] += sign * sum[r];
            }
    }

    std::size_t m_m;
    std::size_t m_n;
    std::vector<Real> m_re, m_im;
};

/// The largest sum of a column's magnitudes; a NaN among them is the result.
inline Wide::Real norm1(const Wide& A)
{
    Wide::Real largest = 0.0L;
    for (std::size_t j = 0; j < A.cols(); ++j) {
        Wide::Real sum = 0.0L;
        for (std::size_t i = 0; i < A.rows(); ++i)
            sum +=
                A.is_complex() ? std::sqrt(A.re(i, j) * A.re(i, j) + A.im(i, j) * A.im(i, j)) : std::fabs(A.re(i, j));
        if (!(sum <= largest))
            largest = sum;
    }
    return largest;
}

} // namespace support
