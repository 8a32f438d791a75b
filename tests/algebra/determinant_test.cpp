// Fraction-free elimination on matrices as they come, and what the guard does not see.
#include "bailuxsko/algebra/determinant.hpp"

#include "tests/support/values.hpp"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::matrix;

double det(const Handle& M)
{
    return Efi::det_gb<double>(*Qud::matrix_of(M));
}

/// By expansion along the first column, in whole numbers.
long long expansion(const std::vector<std::vector<long long>>& A)
{
    if (A.empty())
        return 1;
    long long sum = 0;
    for (std::size_t i = 0; i < A.size(); ++i) {
        std::vector<std::vector<long long>> minor;
        for (std::size_t k = 0; k < A.size(); ++k)
            if (k != i)
                minor.emplace_back(A[k].begin() + 1, A[k].end());
        sum += (i % 2 == 0 ? 1 : -1) * A[i][0] * expansion(minor);
    }
    return sum;
}

TEST(DetGb, IntegersAreExact)
{
    std::mt19937_64 random(3);
    for (int repeat = 0; repeat < 2000; ++repeat) {
        const std::size_t n = repeat % 4 + 1;
        std::vector<std::vector<long long>> A(n, std::vector<long long>(n));
        Qud::FreshNumbers numbers = Qud::fresh_numbers(n * n);
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = 0; j < n; ++j) {
                A[i][j] = random() % 3 == 0 ? 0 : std::uniform_int_distribution<long long>(-99, 99)(random);
                numbers[i + j * n] = static_cast<double>(A[i][j]);
            }
        const auto size = static_cast<std::uint32_t>(n);
        EXPECT_EQ(det(Qud::MatVal::make(size, size, numbers)), static_cast<double>(expansion(A)));
    }
}

TEST(DetGb, ZerosAndViews)
{
    EXPECT_EQ(det(matrix({{0, 1, 2}, {0, 3, 4}, {0, 5, 6}})), 0.0);
    EXPECT_EQ(det(matrix({{1, 2}, {2, 4}})), 0.0);
    EXPECT_EQ(det(Qud::MatVal::empty()), 1.0);
    const Handle whole = matrix({{9, 9, 9}, {9, 1, 2}, {9, 3, 4}});
    EXPECT_EQ(det(Qud::matrix_of(whole)->SubMatrix(1, 2, 1, 2)), -2.0);
}

TEST(DetGb, RowsAreExchangedForAnExactZeroOnly)
{
    // A tiny pivot stays: its elimination is exact here, where a quotient by it would not be.
    EXPECT_EQ(det(matrix({{1e-20, 1}, {1, 1}})), 1e-20 - 1.0);
}

TEST(Det, ComplexAndLargeOnesGoByLapack)
{
    const Handle complex = matrix({{0, 1}, {1, 0}}, Qud::Dim::identity, {{1, 0}, {0, 1}});
    EXPECT_EQ(Qud::as_number(Efi::det_impl(*Qud::matrix_of(complex)))->re(), -2);
    const Handle triangle =
        matrix({{2, 1, 1, 1, 1}, {0, 3, 1, 1, 1}, {0, 0, 4, 1, 1}, {0, 0, 0, 5, 1}, {0, 0, 0, 0, 6}});
    EXPECT_EQ(Qud::as_number(Efi::det_impl(*Qud::matrix_of(triangle)))->re(), 720);
}

TEST(Norm, IsNotScaled)
{
    EXPECT_EQ(Efi::vector_norm(*Qud::matrix_of(matrix({{1e200}, {0}}))), HUGE_VAL);
    EXPECT_EQ(Efi::vector_norm(*Qud::matrix_of(matrix({{2}, {1}}, Qud::Dim::identity, {{0}, {2}}))), 3);
}

} // namespace
