#pragma once

#include "bailuxhost/matval.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <vector>

/// Matrices for the tests of the drivers, and the residuals by which results are judged.
namespace matrices {

using Complex = std::complex<double>;
using Rows = std::initializer_list<std::initializer_list<double>>;
using ComplexRows = std::initializer_list<std::initializer_list<Complex>>;

inline constexpr double eps = std::numeric_limits<double>::epsilon();
inline constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double inf = std::numeric_limits<double>::infinity();

/// A host matrix with columns anr apart (0: packed) and its first element at offset; what lies between is 1e300.
/// element(i, j) is a double or a Complex.
template <class Element>
Qud::Handle generate(std::uint32_t rows, std::uint32_t cols, Element element, std::uint32_t anr = 0,
                     std::size_t offset = 0)
{
    constexpr bool is_complex = std::is_same_v<decltype(element(0U, 0U)), Complex>;
    const std::size_t stride = anr == 0 ? rows : anr;
    const std::size_t count = offset + stride * cols;
    const Qud::FreshNumbers re = Qud::fresh_numbers(count);
    const Qud::FreshNumbers im = is_complex ? Qud::fresh_numbers(count) : nullptr;
    std::fill_n(re.get(), count, 1e300);
    if (im)
        std::fill_n(im.get(), count, 1e300);
    for (std::uint32_t j = 0; j < cols; ++j)
        for (std::uint32_t i = 0; i < rows; ++i) {
            const Complex value = element(i, j);
            re[offset + j * stride + i] = value.real();
            if (im)
                im[offset + j * stride + i] = value.imag();
        }
    return Qud::MatVal::make({.rows = rows,
                              .cols = cols,
                              .anr = anr,
                              .offset = offset,
                              .real = re,
                              .imaginary = im,
                              .units = {},
                              .entries = nullptr});
}

/// The same numbers with a gap of three between columns and a shift of five.
inline Qud::Handle as_view(const Qud::Handle& matrix)
{
    const Qud::MatVal& M = *Qud::matrix_of(matrix);
    if (M.HasImag())
        return generate(
            M.Rows(), M.Cols(), [&](auto i, auto j) { return Complex(M.real(i, j), M.imag(i, j)); }, M.Rows() + 3, 5);
    return generate(
        M.Rows(), M.Cols(), [&](auto i, auto j) { return M.real(i, j); }, M.Rows() + 3, 5);
}

inline Qud::Handle real(Rows rows)
{
    return generate(static_cast<std::uint32_t>(rows.size()), static_cast<std::uint32_t>(rows.begin()->size()),
                    [&](auto i, auto j) { return rows.begin()[i].begin()[j]; });
}

inline Qud::Handle complex(ComplexRows rows)
{
    return generate(static_cast<std::uint32_t>(rows.size()), static_cast<std::uint32_t>(rows.begin()->size()),
                    [&](auto i, auto j) { return rows.begin()[i].begin()[j]; });
}

inline Qud::Handle random_real(std::uint32_t rows, std::uint32_t cols, unsigned seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    return generate(rows, cols, [&](auto, auto) { return uniform(engine); });
}

inline Qud::Handle random_complex(std::uint32_t rows, std::uint32_t cols, unsigned seed)
{
    std::mt19937 engine(seed);
    std::uniform_real_distribution<double> uniform(-1.0, 1.0);
    return generate(rows, cols, [&](auto, auto) {
        const double re = uniform(engine);
        return Complex(re, uniform(engine));
    });
}

/// Exactly symmetric.
inline Qud::Handle random_symmetric(std::uint32_t n, unsigned seed)
{
    const Qud::Handle any = random_real(n, n, seed);
    const Qud::MatVal& M = *Qud::matrix_of(any);
    return generate(n, n, [&](auto i, auto j) { return M.real(std::min(i, j), std::max(i, j)); });
}

/// Exactly Hermitian.
inline Qud::Handle random_hermitian(std::uint32_t n, unsigned seed)
{
    const Qud::Handle any = random_complex(n, n, seed);
    const Qud::MatVal& M = *Qud::matrix_of(any);
    return generate(n, n, [&](auto i, auto j) {
        const Complex z(M.real(std::min(i, j), std::max(i, j)), M.imag(std::min(i, j), std::max(i, j)));
        return i == j ? Complex(z.real(), 0.0) : i < j ? z : std::conj(z);
    });
}

/// A matrix as the tests compute with it.
class Dense {
public:
    Dense(std::size_t rows, std::size_t cols) : m_rows(rows), m_cols(cols), m_elements(rows * cols) {}
    explicit Dense(const Qud::Handle& value) : Dense(*Qud::matrix_of(value)) {}
    explicit Dense(const Qud::MatVal& M) : Dense(M.Rows(), M.Cols())
    {
        for (std::size_t j = 0; j < m_cols; ++j)
            for (std::size_t i = 0; i < m_rows; ++i)
                at(i, j) = Complex(M.real(i, j), M.imag(i, j));
    }
    static Dense identity(std::size_t n)
    {
        Dense I(n, n);
        for (std::size_t i = 0; i < n; ++i)
            I.at(i, i) = 1.0;
        return I;
    }

    std::size_t rows() const { return m_rows; }
    std::size_t cols() const { return m_cols; }
    Complex& at(std::size_t i, std::size_t j) { return m_elements[j * m_rows + i]; }
    const Complex& at(std::size_t i, std::size_t j) const { return m_elements[j * m_rows + i]; }

    Dense conjugate_transpose() const
    {
        Dense T(m_cols, m_rows);
        for (std::size_t j = 0; j < m_cols; ++j)
            for (std::size_t i = 0; i < m_rows; ++i)
                T.at(j, i) = std::conj(at(i, j));
        return T;
    }
    /// The largest sum of a column's moduli.
    double norm1() const
    {
        double largest = 0.0;
        for (std::size_t j = 0; j < m_cols; ++j) {
            double sum = 0.0;
            for (std::size_t i = 0; i < m_rows; ++i)
                sum += std::abs(at(i, j));
            largest = std::max(largest, sum);
        }
        return largest;
    }
    friend Dense operator*(const Dense& A, const Dense& B)
    {
        Dense C(A.m_rows, B.m_cols);
        for (std::size_t j = 0; j < B.m_cols; ++j)
            for (std::size_t k = 0; k < A.m_cols; ++k)
                for (std::size_t i = 0; i < A.m_rows; ++i)
                    C.at(i, j) += A.at(i, k) * B.at(k, j);
        return C;
    }
    friend Dense operator-(const Dense& A, const Dense& B)
    {
        Dense C = A;
        for (std::size_t k = 0; k < C.m_elements.size(); ++k)
            C.m_elements[k] -= B.m_elements[k];
        return C;
    }

private:
    std::size_t m_rows;
    std::size_t m_cols;
    std::vector<Complex> m_elements;
};

/// norm1(B - A X) / (n eps norm1(A) norm1(X)): below 30 for a solution.
inline double residual_solve(const Qud::Handle& A, const Qud::Handle& X, const Qud::Handle& B)
{
    const Dense a(A), x(X), b(B);
    const auto n = static_cast<double>(std::max(a.rows(), a.cols()));
    return (b - a * x).norm1() / (n * eps * a.norm1() * x.norm1());
}

/// norm1(A' (B - A X)) / (n eps norm1(A)^2 norm1(B)): below 30 for a least-squares solution.
inline double residual_least_squares(const Qud::Handle& A, const Qud::Handle& X, const Qud::Handle& B)
{
    const Dense a(A), x(X), b(B);
    const auto n = static_cast<double>(std::max(a.rows(), a.cols()));
    return (a.conjugate_transpose() * (b - a * x)).norm1() / (n * eps * a.norm1() * a.norm1() * b.norm1());
}

/// norm1(I - A Y) / (n eps norm1(A) norm1(Y)): below 30 for an inverse Y.
inline double residual_inverse(const Qud::Handle& A, const Qud::Handle& Y)
{
    const Dense a(A), y(Y);
    const auto n = static_cast<double>(a.rows());
    return (Dense::identity(a.rows()) - a * y).norm1() / (n * eps * a.norm1() * y.norm1());
}

/// norm1(A B - C) / (k eps norm1(A) norm1(B)): below 30 for a product C.
inline double residual_product(const Qud::Handle& A, const Qud::Handle& B, const Qud::Handle& C)
{
    const Dense a(A), b(B), c(C);
    return (a * b - c).norm1() / (static_cast<double>(a.cols()) * eps * a.norm1() * b.norm1());
}

/// All that a matrix's arrays hold, the parts between its columns too.
inline std::vector<double> stored(const Qud::Handle& matrix)
{
    const Qud::MatVal& M = *Qud::matrix_of(matrix);
    const std::size_t count = M.m_offset + std::size_t{M.Anr()} * M.Cols();
    std::vector<double> numbers(M.m_rarr, M.m_rarr + count);
    if (M.HasImag())
        numbers.insert(numbers.end(), M.m_iarr, M.m_iarr + count);
    return numbers;
}

} // namespace matrices
