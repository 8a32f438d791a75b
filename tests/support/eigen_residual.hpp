#pragma once

#include "tests/support/residuals.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

namespace support {

/// How far A is from a matrix that has the eigenvalue z: the smallest |A * v - z * v| that a few steps of inverse
/// iteration in extended precision find, against the norms of A and v. An upper bound, so nothing passes by mistake.
class EigenvalueResidual {
public:
    explicit EigenvalueResidual(const Wide& A) : m_A(A), m_norm(norm1(A)) {}

    double operator()(Wide::Real z_re, Wide::Real z_im) const
    {
        constexpr int steps = 3;
        const std::size_t n = m_A.rows();
        Factors F = factorise({z_re, z_im});
        std::vector<Complex> v(n);
        for (std::size_t i = 0; i < n; ++i) // nothing is orthogonal to such a vector by chance
            v[i] = Complex(1.0L, static_cast<Wide::Real>(i % 7) / 7.0L);
        double best = std::numeric_limits<double>::infinity();
        for (int step = 0; step < steps; ++step) {
            solve(F, v);
            Wide w(n, 1, true);
            Wide::Real largest = 0.0L;
            for (const Complex& x : v)
                largest = std::max(largest, std::abs(x));
            for (std::size_t i = 0; i < n; ++i) {
                v[i] /= largest;
                w.re(i, 0) = v[i].real();
                w.im(i, 0) = v[i].imag();
            }
            best = std::min(best, residual_eigenvector(m_A, w, z_re, z_im));
        }
        return best;
    }

private:
    using Complex = std::complex<long double>;
    struct Factors {
        std::vector<Complex> m_LU; // column after column
        std::vector<std::size_t> m_pivots;
    };

    /// A - z I = L * U with partial pivoting; a pivot of nothing becomes a very small one.
    Factors factorise(Complex z) const
    {
        const std::size_t n = m_A.rows();
        Factors F{.m_LU = std::vector<Complex>(n * n), .m_pivots = std::vector<std::size_t>(n)};
        for (std::size_t j = 0; j < n; ++j)
            for (std::size_t i = 0; i < n; ++i)
                F.m_LU[i + j * n] = Complex(m_A.re(i, j), m_A.im(i, j)) - (i == j ? z : 0.0L);
        for (std::size_t k = 0; k < n; ++k) {
            Complex* const c = &F.m_LU[k * n];
            const auto size = [](const Complex& x) { return std::fabs(x.real()) + std::fabs(x.imag()); };
            const std::size_t p = static_cast<std::size_t>(
                std::max_element(c + k, c + n, [&](auto& x, auto& y) { return size(x) < size(y); }) - c);
            F.m_pivots[k] = p;
            for (std::size_t j = 0; j < n; ++j)
                std::swap(F.m_LU[k + j * n], F.m_LU[p + j * n]);
            if (size(c[k]) == 0.0L)
                c[k] = std::numeric_limits<long double>::epsilon() * (m_norm > 0.0L ? m_norm : 1.0L);
            for (std::size_t i = k + 1; i < n; ++i)
                c[i] /= c[k];
            for (std::size_t j = k + 1; j < n; ++j)
                subtract(F.m_LU[k + j * n], c + k + 1, &F.m_LU[k + 1 + j * n], n - k - 1);
        }
        return F;
    }

    /// y = y - factor * x, written out: the product of std::complex looks for infinities.
    static void subtract(Complex factor, const Complex* x, Complex* y, std::size_t count)
    {
        const long double a = factor.real();
        const long double b = factor.imag();
        for (std::size_t i = 0; i < count; ++i)
            y[i] = {y[i].real() - (a * x[i].real() - b * x[i].imag()),
                    y[i].imag() - (a * x[i].imag() + b * x[i].real())};
    }

    static void solve(const Factors& F, std::vector<Complex>& v)
    {
        const std::size_t n = v.size();
        for (std::size_t k = 0; k < n; ++k) {
            std::swap(v[k], v[F.m_pivots[k]]);
            subtract(v[k], &F.m_LU[k + 1 + k * n], v.data() + k + 1, n - k - 1);
        }
        for (std::size_t k = n; k-- > 0;) {
            v[k] /= F.m_LU[k + k * n];
            subtract(v[k], &F.m_LU[k * n], v.data(), k);
        }
    }

    const Wide& m_A;
    Wide::Real m_norm;
};

} // namespace support
