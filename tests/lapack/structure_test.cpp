#include "bailuxsko/lapack/structure.hpp"
#include "tests/lapack/matrices.hpp"

#include <gtest/gtest.h>

namespace {

using lapack::isHermitianMatrix;
using lapack::isSymRealMatrix;
using matrices::as_view;
using matrices::Complex;
using matrices::complex;
using matrices::inf;
using matrices::NaN;
using matrices::real;
using Qud::matrix_of;

struct Case {
    const char* name;
    Qud::Handle M;
    bool symmetric;
    bool hermitian;
};

const Case cases[] = {
    {"1 by 1", real({{5}}), true, false},
    {"2 by 2", real({{1, 2}, {2, 3}}), true, false},
    {"last bit differs", real({{1, 2}, {2 + 4 * matrices::eps, 3}}), false, false},
    {"wide", real({{1, 2}}), false, false},
    {"tall", real({{1}, {2}}), false, false},
    {"zeros of both signs", real({{1, 0.0}, {-0.0, 1}}), true, false},
    {"NaN on the diagonal", real({{NaN, 2}, {2, 3}}), true, false},
    {"NaN at both places", real({{1, NaN}, {NaN, 3}}), false, false},
    {"infinities that have no difference", real({{1, inf}, {inf, 3}}), false, false},
    {"imaginary array of zeros", complex({{1, 2}, {2, 3}}), false, true},
    {"imaginary array of zeros, unsymmetric", complex({{1, 2}, {4, 3}}), false, false},
    {"Hermitian", complex({{1, {2, 5}}, {{2, -5}, 3}}), false, true},
    {"complex symmetric", complex({{1, {2, 5}}, {{2, 5}, 3}}), false, false},
    {"imaginary diagonal", complex({{{1, 1}, 2}, {2, 3}}), false, false},
    {"imaginary NaN on the diagonal", complex({{{1, NaN}, 2}, {2, 3}}), false, false},
    {"real NaN on the diagonal", complex({{NaN, 2}, {2, 3}}), false, true},
    {"imaginary NaN off the diagonal", complex({{1, {2, NaN}}, {{2, NaN}, 3}}), false, false},
    {"real NaN off the diagonal", complex({{1, {NaN, 1}}, {{NaN, -1}, 3}}), false, false},
    {"complex 1 by 1", complex({{5}}), false, true},
    {"complex wide", complex({{1, 2}}), false, false},
};

TEST(Structure, IsTestedExactly)
{
    for (const Case& c : cases) {
        EXPECT_EQ(isSymRealMatrix(*matrix_of(c.M)), c.symmetric) << c.name;
        EXPECT_EQ(isHermitianMatrix(*matrix_of(c.M)), c.hermitian) << c.name;
        EXPECT_EQ(isSymRealMatrix(*matrix_of(as_view(c.M))), c.symmetric) << c.name << ", a view";
        EXPECT_EQ(isHermitianMatrix(*matrix_of(as_view(c.M))), c.hermitian) << c.name << ", a view";
    }
}

TEST(Structure, EveryPairOfALargeMatrixCounts)
{
    constexpr std::uint32_t n = 67; // two whole blocks of the comparison and a piece
    const auto symmetric = [](auto i, auto j) { return 1.0 + double(std::min(i, j)) * n + double(std::max(i, j)); };
    EXPECT_TRUE(isSymRealMatrix(*matrix_of(matrices::generate(n, n, symmetric))));
    for (std::uint32_t row = 0; row < n; ++row)
        for (std::uint32_t col = 0; col < n; ++col) {
            const Qud::Handle M =
                matrices::generate(n, n, [&](auto i, auto j) { return i == row && j == col ? -1.0 : symmetric(i, j); });
            EXPECT_EQ(isSymRealMatrix(*matrix_of(M)), row == col) << row << ", " << col;
        }
}

TEST(Structure, EveryPairOfALargeComplexMatrixCounts)
{
    constexpr std::uint32_t n = 35;
    const auto hermitian = [](auto i, auto j) {
        return Complex(double(i + j), i == j ? 0.0 : i < j ? double(i + n * j) : -double(j + n * i));
    };
    EXPECT_TRUE(isHermitianMatrix(*matrix_of(matrices::generate(n, n, hermitian))));
    for (std::uint32_t row = 0; row < n; ++row)
        for (std::uint32_t col = 0; col < n; ++col) {
            const Qud::Handle M = matrices::generate(n, n, [&](auto i, auto j) {
                return hermitian(i, j) + (i == row && j == col ? Complex(0.0, 0.5) : Complex());
            });
            EXPECT_FALSE(isHermitianMatrix(*matrix_of(M))) << row << ", " << col;
        }
}

} // namespace
