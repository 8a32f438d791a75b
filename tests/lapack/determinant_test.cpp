#include "bailuxsko/lapack/determinant.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

namespace {

using matrices::Complex;
using matrices::Dense;
using Qud::Handle;
using support::host_raised_by;
using support::Raised;

Complex determinant(const Handle& A)
{
    EfiCallContext context;
    const Handle d = lapack::_determinant(&context, *Qud::matrix_of(A));
    const Qud::NumVal* const number = Qud::as_number(d);
    EXPECT_EQ(number->m_dim, Qud::Dim::identity);
    return {number->re(), number->im()};
}

TEST(Determinant, OfSmallMatrices)
{
    EXPECT_EQ(determinant(matrices::real({{-7}})), Complex(-7));
    EXPECT_EQ(determinant(matrices::complex({{{3, -4}}})), Complex(3, -4));
    EXPECT_EQ(determinant(matrices::real({{0, 1}, {1, 0}})), Complex(-1)) << "an exchange changes the sign";
    EXPECT_EQ(determinant(matrices::real({{0, 1, 0}, {0, 0, 1}, {1, 0, 0}})), Complex(1)) << "two exchanges";
    EXPECT_EQ(determinant(matrices::real({{4, 3}, {2, 8}})), Complex(26)); // 4 * 6.5
    EXPECT_EQ(determinant(matrices::complex({{0, {0, 1}}, {1, 0}})), Complex(0, -1));
    EXPECT_EQ(determinant(matrices::complex({{{0, 1}, 0}, {0, {0, 1}}})), Complex(-1));
}

TEST(Determinant, OfASingularMatrixIsExactlyZero)
{
    EXPECT_EQ(determinant(matrices::real({{1, 2}, {2, 4}})), Complex(0));
    EXPECT_EQ(determinant(matrices::real({{0}})), Complex(0));
    EXPECT_EQ(determinant(matrices::complex({{1, {0, 1}}, {{0, 1}, -1}})), Complex(0));
    EXPECT_EQ(determinant(matrices::generate(9, 9, [](auto, auto) { return 1.0; })), Complex(0));
}

TEST(Determinant, OfAProductOfTriangles)
{
    // A = L U with whole numbers, L of unit diagonal: the determinant is the product of U's diagonal.
    for (const std::uint32_t n : {5U, 9U, 17U}) {
        const auto l = [](auto i, auto j) { return i == j ? 1.0 : i > j ? double((i + 2 * j) % 3) - 1.0 : 0.0; };
        const auto u = [](auto i, auto j) { return i == j ? double(i % 3 + 1) : i < j ? double((i * j) % 3) : 0.0; };
        const Dense A = Dense(matrices::generate(n, n, l)) * Dense(matrices::generate(n, n, u));
        double expected = 1.0;
        for (std::uint32_t i = 0; i < n; ++i)
            expected *= i % 3 + 1;
        const Complex real = determinant(matrices::generate(n, n, [&](auto i, auto j) { return A.at(i, j).real(); }));
        EXPECT_NEAR(real.real() / expected, 1.0, 1e-9) << n;
        // i A has i^n times the determinant
        const Complex turned =
            determinant(matrices::generate(n, n, [&](auto i, auto j) { return Complex(0, 1) * A.at(i, j); }));
        const Complex factor[] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
        EXPECT_LT(std::abs(turned / (expected * factor[n % 4]) - 1.0), 1e-9) << n;
    }
}

TEST(Determinant, IsNotScaledAgainstOverflow)
{
    // 1e200 * 1e200 * 1e-200 * 1e-200, from the first element down: infinite on the way
    EXPECT_EQ(
        determinant(matrices::generate(4, 4, [](auto i, auto j) { return i != j  ? 0.0
                                                                         : i < 2 ? 1e200
                                                                                 : 1e-200; })),
        Complex(matrices::inf));
    EXPECT_EQ(
        determinant(matrices::generate(4, 4, [](auto i, auto j) { return i != j  ? 0.0
                                                                         : i < 2 ? 1e-200
                                                                                 : 1e200; })),
        Complex(0.0));
}

TEST(Determinant, OfAViewIsThatOfTheWholeMatrix)
{
    const Handle A = matrices::random_real(20, 20, 3);
    const Handle Z = matrices::random_complex(20, 20, 3);
    EXPECT_EQ(determinant(A), determinant(matrices::as_view(A)));
    EXPECT_EQ(determinant(Z), determinant(matrices::as_view(Z)));
}

TEST(Determinant, TakesNaNAsItIs)
{
    EXPECT_TRUE(std::isnan(determinant(matrices::real({{matrices::NaN, 1}, {1, 2}})).real()));
}

TEST(Determinant, RefusesWhatIsNotSquareOrEmpty)
{
    EXPECT_EQ(host_raised_by([] { determinant(Qud::MatVal::empty()); }), (Raised{"invalid dimension", -1, ""}));
    EXPECT_EQ(host_raised_by([] { determinant(matrices::real({{1, 2}})); }), (Raised{"must be square", -1, ""}));
}

} // namespace
