#pragma once

#include "tests/lapack/matrices.hpp"

#include <gtest/gtest.h>

/// Factors taken out of nested results, and the residuals by which they are judged: below 30 is good.
namespace matrices {

inline Qud::Handle factor(const Qud::Handle& column, std::size_t k)
{
    return *Qud::matrix_of(column)->entry(k, 0);
}

inline double scaled(const Dense& difference, double n, double norm)
{
    return norm == 0.0 ? difference.norm1() : difference.norm1() / norm / (n * eps);
}

/// norm1(M - L R) / (max(m, n) eps norm1(M)).
inline double residual_factors(const Dense& M, const Dense& L, const Dense& R)
{
    return scaled(M - L * R, static_cast<double>(std::max(M.rows(), M.cols())), M.norm1());
}

/// norm1(I - Q' Q) / (n eps), Q' conjugated.
inline double residual_orthogonal(const Dense& Q)
{
    const auto n = static_cast<double>(std::max(Q.rows(), Q.cols()));
    return scaled(Q.conjugate_transpose() * Q - Dense::identity(Q.cols()), n, 1.0);
}

/// Zeros and ones, one of them in each row and column, no imaginary array.
inline void expect_permutation(const Qud::Handle& value, std::size_t n)
{
    const Qud::MatVal& P = *Qud::matrix_of(value);
    ASSERT_EQ(P.Rows(), n);
    ASSERT_EQ(P.Cols(), n);
    EXPECT_FALSE(P.HasImag());
    std::vector<int> in_row(n);
    for (std::size_t j = 0; j < n; ++j) {
        int in_column = 0;
        for (std::size_t i = 0; i < n; ++i) {
            EXPECT_TRUE(P.real(i, j) == 0.0 || P.real(i, j) == 1.0);
            const int one = P.real(i, j) == 1.0 ? 1 : 0;
            in_column += one;
            in_row[i] += one;
        }
        EXPECT_EQ(in_column, 1);
    }
    EXPECT_EQ(in_row, std::vector<int>(n, 1));
}

/// Exact zeros (+0) in all places that `is_zero(i, j)` names.
template <class IsZero>
void expect_zeros(const Qud::Handle& value, IsZero is_zero)
{
    const Qud::MatVal& M = *Qud::matrix_of(value);
    for (std::size_t j = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i)
            if (is_zero(i, j)) {
                EXPECT_TRUE(M.real(i, j) == 0.0 && !std::signbit(M.real(i, j))) << i << ", " << j;
                EXPECT_TRUE(M.imag(i, j) == 0.0 && !std::signbit(M.imag(i, j))) << i << ", " << j;
            }
}

inline bool below_diagonal(std::size_t i, std::size_t j)
{
    return i > j;
}
inline bool above_diagonal(std::size_t i, std::size_t j)
{
    return i < j;
}

inline std::string shape(const Qud::Handle& value)
{
    const Qud::MatVal& M = *Qud::matrix_of(value);
    return std::to_string(M.Rows()) + " by " + std::to_string(M.Cols()) + (M.HasImag() ? ", complex" : ", real");
}

/// B B' + n I: Hermitian, positive definite and well conditioned.
inline Qud::Handle positive_definite(const Qud::Handle& value)
{
    const Dense B(value);
    const Dense S = B * B.conjugate_transpose();
    const auto n = static_cast<std::uint32_t>(S.rows());
    const auto at = [&](auto i, auto j) { return S.at(i, j) + (i == j ? double(n) : 0.0); };
    if (Qud::matrix_of(value)->HasImag())
        return generate(n, n, [&](auto i, auto j) { return Complex(at(i, j)); });
    return generate(n, n, [&](auto i, auto j) { return at(i, j).real(); });
}

} // namespace matrices
