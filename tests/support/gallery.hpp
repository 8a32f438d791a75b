#pragma once

#include "tests/support/matrix.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

/// Named matrices on which numerical routines are judged (Higham, Accuracy and Stability of Numerical Algorithms,
/// chapter 28; Gregory and Karney, A Collection of Matrices for Testing Computational Algorithms). All come out the
/// same on every machine: nothing but arithmetic and square roots makes them.
namespace gen {

using support::Matrix;
using Random = std::mt19937_64;

/// The small ones, and the neighbourhood of the edges of every kernel's blocks.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr std::uint32_t sizes[] = {1, 2, 3, 5, 10, 17, 50, 65}; // slow enough
#else
inline constexpr std::uint32_t sizes[] = {1, 2, 3, 5, 10, 16, 17, 31, 33, 50, 63, 64, 65, 97, 127, 128, 129, 200, 300};
#endif

inline double uniform(Random& random)
{
    return std::uniform_real_distribution<double>(-1.0, 1.0)(random);
}

/// m by n elements element(i, j).
template <class Element>
Matrix from(std::uint32_t m, std::uint32_t n, Element element)
{
    Matrix A(m, n);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < m; ++i)
            A.re(i, j) = element(i, j);
    return A;
}

inline Matrix random(std::uint32_t m, std::uint32_t n, Random& random)
{
    return from(m, n, [&](std::size_t, std::size_t) { return uniform(random); });
}

/// The leading m rows and n columns.
inline Matrix leading(Matrix A, std::uint32_t m, std::uint32_t n)
{
    Matrix B(m, n);
    if (A.is_complex())
        B.make_complex();
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < m; ++i) {
            B.re(i, j) = A.re(i, j);
            if (A.is_complex())
                B.im(i, j) = A.im(i, j);
        }
    return B;
}

/// A with every row times row(i), and every column times column(j).
template <class Row, class Column>
Matrix scaled(Matrix A, Row row, Column column)
{
    for (std::uint32_t j = 0; j < A.cols(); ++j)
        for (std::uint32_t i = 0; i < A.rows(); ++i) {
            A.re(i, j) *= row(i) * column(j);
            if (A.is_complex())
                A.im(i, j) *= row(i) * column(j);
        }
    return A;
}

inline Matrix scaled(const Matrix& A, double factor)
{
    return scaled(
        A, [=](std::size_t) { return factor; }, [](std::size_t) { return 1.0; });
}

/// D * A * D^H for a diagonal D of powers of i: the same singular values and eigenvalues, and not a bit is lost.
inline Matrix with_phases(Matrix A)
{
    A.make_complex();
    for (std::uint32_t j = 0; j < A.cols(); ++j)
        for (std::uint32_t i = 0; i < A.rows(); ++i) {
            const double x = A.re(i, j);
            const std::uint32_t quarter = (i + 3 * j) % 4; // i^(i - j)
            A.re(i, j) = quarter == 0 ? x : quarter == 2 ? -x : 0.0;
            A.im(i, j) = quarter == 1 ? x : quarter == 3 ? -x : 0.0;
        }
    return A;
}

// The classics.

/// 1 / (i + j + 1): ill-conditioned, positive definite.
inline Matrix hilbert(std::uint32_t n)
{
    return from(n, n, [](std::size_t i, std::size_t j) { return 1.0 / static_cast<double>(i + j + 1); });
}

/// The inverse of the Hilbert matrix, of whole numbers; exact up to n = 12.
inline Matrix inverse_of_hilbert(std::uint32_t n)
{
    const auto binomial = [](std::size_t a, std::size_t b) {
        long double product = 1.0L;
        for (std::size_t k = 1; k <= b; ++k)
            product = product * static_cast<long double>(a - b + k) / static_cast<long double>(k);
        return product;
    };
    return from(n, n, [&](std::size_t i, std::size_t j) {
        const long double square = binomial(i + j, i) * binomial(i + j, i);
        const long double size =
            static_cast<long double>(i + j + 1) * binomial(n + i, n - j - 1) * binomial(n + j, n - i - 1) * square;
        return static_cast<double>((i + j) % 2 == 0 ? size : -size);
    });
}

/// The inverse of pascal(n), of whole numbers; exact up to n = 15.
inline Matrix inverse_of_pascal(std::uint32_t n)
{
    const auto binomial = [](std::size_t a, std::size_t b) {
        double product = 1.0;
        for (std::size_t k = 1; k <= b; ++k)
            product = product * static_cast<double>(a - b + k) / static_cast<double>(k);
        return product;
    };
    return from(n, n, [&](std::size_t i, std::size_t j) {
        double sum = 0.0;
        for (std::size_t k = std::max(i, j); k < n; ++k)
            sum += binomial(k, i) * binomial(k, j);
        return (i + j) % 2 == 0 ? sum : -sum;
    });
}

/// Upper Hessenberg with determinant 1 and ill-conditioned small eigenvalues.
inline Matrix frank(std::uint32_t n)
{
    return from(
        n, n, [=](std::size_t i, std::size_t j) { return i > j + 1 ? 0.0 : static_cast<double>(n - std::max(i, j)); });
}

/// The binomial coefficients: positive definite with determinant 1, and an inverse of whole numbers.
inline Matrix pascal(std::uint32_t n)
{
    Matrix A(n, n);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i)
            A.re(i, j) = i == 0 || j == 0 ? 1.0 : A.re(i - 1, j) + A.re(i, j - 1);
    return A;
}

/// Powers of n points between 1 / n and 1.
inline Matrix vandermonde(std::uint32_t n)
{
    Matrix A(n, n);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i)
            A.re(i, j) = j == 0 ? 1.0 : A.re(i, j - 1) * (i + 1.0) / n;
    return A;
}

/// Symmetric, 8 by 8: eigenvalues in a near tie, equal ones, a zero, and one pair of opposite sign.
inline Matrix rosser()
{
    return {{611, 196, -192, 407, -8, -52, -49, 29}, {196, 899, 113, -192, -71, -43, -8, -44},
            {-192, 113, 899, 196, 61, 49, 8, 52},    {407, -192, 196, 611, 8, 44, 59, -23},
            {-8, -71, 61, 8, 411, -599, 208, 208},   {-52, -43, 49, 44, -599, 411, 208, 208},
            {-49, -8, 8, 59, 208, 208, 99, -911},    {29, -44, 52, -23, 208, 208, -911, 99}};
}

/// Its eigenvalues in ascending order.
inline std::vector<double> eigenvalues_of_rosser()
{
    const double outer = 10.0 * std::sqrt(10405.0);
    const double near_tie = 100.0 * std::sqrt(26.0);
    const double small = 100.0 / (510.0 + near_tie); // 510 - near_tie without cancellation
    return {-outer, 0.0, small, 1000.0, 1000.0, 510.0 + near_tie, 1020.0, outer};
}

/// Tridiagonal, with |i - (n - 1) / 2| on the diagonal: eigenvalues in pairs that nearly agree.
inline Matrix wilkinson(std::uint32_t n)
{
    return from(n, n, [=](std::size_t i, std::size_t j) {
        if (i == j)
            return std::fabs(static_cast<double>(i) - (n - 1) / 2.0);
        return i + 1 == j || j + 1 == i ? 1.0 : 0.0;
    });
}

/// Upper triangular with rows that shrink by 0.8: nearly of rank n - 1 without a small element on the diagonal.
inline Matrix kahan(std::uint32_t n)
{
    std::vector<double> power(n + std::size_t{1}, 1.0);
    for (std::size_t i = 1; i <= n; ++i)
        power[i] = 0.8 * power[i - 1];
    return from(n, n, [&](std::size_t i, std::size_t j) { return i > j ? 0.0 : i == j ? power[i] : -0.6 * power[i]; });
}

/// -1 below the diagonal, 1 on it and in the last column: elimination doubles the last column at every step.
inline Matrix growing(std::uint32_t n)
{
    return from(n, n, [=](std::size_t i, std::size_t j) { return i == j || j + 1 == n ? 1.0 : i > j ? -1.0 : 0.0; });
}

/// 2 on the diagonal, -1 beside it: eigenvalues 4 sin^2(k * pi / (2 n + 2)), k from 1 to n.
inline Matrix second_difference(std::uint32_t n)
{
    return from(n, n, [](std::size_t i, std::size_t j) {
        if (i == j)
            return 2.0;
        return i + 1 == j || j + 1 == i ? -1.0 : 0.0;
    });
}

/// Min(i, j) / max(i, j), counted from 1: positive definite and well-conditioned.
inline Matrix lehmer(std::uint32_t n)
{
    return from(n, n, [](std::size_t i, std::size_t j) {
        return static_cast<double>(std::min(i, j) + 1) / static_cast<double>(std::max(i, j) + 1);
    });
}

// Matrices with known singular values or eigenvalues.

/// A matrix in extended precision, column after column, whose rows and columns reflections mix.
class Mixed {
public:
    Mixed(std::size_t m, std::size_t n) : m_m(m), m_n(n), m_re(m * n, 0.0L), m_im(m * n, 0.0L) {}

    explicit Mixed(Matrix A) : Mixed(A.rows(), A.cols())
    {
        for (std::uint32_t j = 0; j < A.cols(); ++j)
            for (std::uint32_t i = 0; i < A.rows(); ++i)
                m_re[i + j * m_m] = A.re(i, j);
    }

    void set_diagonal(std::span<const double> values)
    {
        for (std::size_t k = 0; k < values.size(); ++k)
            m_re[k + k * m_m] = values[k];
    }

    /// H * A, A * H or H * A * H in the place of A, for a reflection H = I - 2 * v * v^H.
    void reflect(Random& random, bool complex, bool left, bool right)
    {
        const std::vector<long double> v = unit_vector(left ? m_m : m_n, complex, random);
        if (left)
            for (std::size_t j = 0; j < m_n; ++j)
                take_off(v, j * m_m, 1, 1.0L);
        if (right)
            for (std::size_t i = 0; i < m_m; ++i)
                take_off(v, i, m_m, -1.0L);
    }

    Matrix rounded(bool complex) const
    {
        Matrix A(static_cast<std::uint32_t>(m_m), static_cast<std::uint32_t>(m_n));
        if (complex)
            A.make_complex();
        for (std::size_t j = 0; j < m_n; ++j)
            for (std::size_t i = 0; i < m_m; ++i) {
                A.re(i, j) = static_cast<double>(m_re[i + j * m_m]);
                if (complex)
                    A.im(i, j) = static_cast<double>(m_im[i + j * m_m]);
            }
        return A;
    }

private:
    /// Real parts, then imaginary ones.
    static std::vector<long double> unit_vector(std::size_t n, bool complex, Random& random)
    {
        std::vector<long double> v(2 * n, 0.0L);
        long double square = 0.0L;
        for (std::size_t k = 0; k < (complex ? 2 * n : n); ++k) {
            v[k] = uniform(random);
            square += v[k] * v[k];
        }
        for (long double& x : v)
            x /= std::sqrt(square);
        return v;
    }

    /// Of the vector that begins at `first` and takes every step-th element, x = x - 2 * w * (w^H * x), where w is v,
    /// or its conjugate for sign = -1 (a row times H is the reflection of its transpose by the conjugate).
    void take_off(const std::vector<long double>& v, std::size_t first, std::size_t step, long double sign)
    {
        const std::size_t n = v.size() / 2;
        long double re = 0.0L;
        long double im = 0.0L;
        for (std::size_t k = 0; k < n; ++k) {
            const long double x = m_re[first + k * step];
            const long double y = m_im[first + k * step];
            re += v[k] * x + sign * v[n + k] * y;
            im += v[k] * y - sign * v[n + k] * x;
        }
        for (std::size_t k = 0; k < n; ++k) {
            m_re[first + k * step] -= 2.0L * (v[k] * re - sign * v[n + k] * im);
            m_im[first + k * step] -= 2.0L * (v[k] * im + sign * v[n + k] * re);
        }
    }

    std::size_t m_m;
    std::size_t m_n;
    std::vector<long double> m_re, m_im;
};

inline constexpr int reflections = 6;

/// m by n with the given singular values (min(m, n) of them, of either sign), between reflections.
inline Matrix with_singular_values(std::uint32_t m, std::uint32_t n, std::span<const double> values, bool complex,
                                   Random& random)
{
    Mixed A(m, n);
    A.set_diagonal(values);
    for (int k = 0; k < reflections; ++k) {
        A.reflect(random, complex, true, false);
        A.reflect(random, complex, false, true);
    }
    return A.rounded(complex);
}

/// Q * A for an orthogonal Q: the same row space, and thereby the same reduced row echelon form and rank.
inline Matrix rows_mixed(const Matrix& A, Random& random)
{
    Mixed mixed(A);
    for (int k = 0; k < reflections; ++k)
        mixed.reflect(random, false, true, false);
    return mixed.rounded(false);
}

/// Symmetric or Hermitian with the given eigenvalues.
inline Matrix with_eigenvalues(std::span<const double> values, bool complex, Random& random)
{
    const auto n = static_cast<std::uint32_t>(values.size());
    Mixed A(n, n);
    A.set_diagonal(values);
    for (int k = 0; k < reflections; ++k)
        A.reflect(random, complex, true, true);
    Matrix H = A.rounded(complex);
    for (std::uint32_t j = 0; j < n; ++j) {
        if (complex)
            H.im(j, j) = 0.0;
        for (std::uint32_t i = 0; i < j; ++i) {
            H.re(j, i) = H.re(i, j);
            if (complex)
                H.im(j, i) = -H.im(i, j);
        }
    }
    return H;
}

/// From 1 down to 2^-40, evenly.
inline std::vector<double> graded_values(std::size_t n)
{
    std::vector<double> values(n, 1.0);
    for (std::size_t k = 1; k < n; ++k)
        values[k] = std::ldexp(1.0, -static_cast<int>(40 * k / (n - 1)));
    return values;
}

/// All 1 but for the last, which is 2^-30.
inline std::vector<double> clustered_values(std::size_t n)
{
    std::vector<double> values(n, 1.0);
    if (n > 1)
        values[n - 1] = std::ldexp(1.0, -30);
    return values;
}

/// Ones, then zeros: of rank (n + 1) / 2.
inline std::vector<double> deficient_values(std::size_t n)
{
    std::vector<double> values(n, 0.0);
    for (std::size_t k = 0; 2 * k < n; ++k)
        values[k] = 1.0 + 1.0 / static_cast<double>(k + 1);
    return values;
}

} // namespace gen
