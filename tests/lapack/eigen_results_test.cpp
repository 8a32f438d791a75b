// What the eigenvalue drivers make of LAPACK's results, apart from LAPACK: infinite eigenvalues, packed pairs of
// eigenvectors, complex quotients.
#include "bailuxsko/lapack/eigen_results.hpp"

#include "tests/lapack/matrices.hpp"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Numbers = std::vector<double>;

constexpr double largest = 1.7976931348623157e308;

struct Quotient {
    const char* name;
    double alphar, alphai, beta;
    double real, imaginary;
};

TEST(DivideByBeta, InfiniteEigenvaluesAreTheLargestFiniteNumbers)
{
    const Quotient table[] = {
        {.name = "finite", .alphar = 6, .alphai = -3, .beta = 2, .real = 3, .imaginary = -1.5},
        {.name = "finite, negative beta", .alphar = 6, .alphai = 0, .beta = -2, .real = -3, .imaginary = -0.0},
        {.name = "infinite", .alphar = 2, .alphai = 0, .beta = 0, .real = largest, .imaginary = 0},
        {.name = "negative", .alphar = -2, .alphai = 0, .beta = 0, .real = -largest, .imaginary = 0},
        {.name = "negative zero beta", .alphar = 2, .alphai = 0, .beta = -0.0, .real = largest, .imaginary = 0},
        {.name = "0 / 0", .alphar = 0, .alphai = 0, .beta = 0, .real = 0, .imaginary = 0},
        {.name = "sign of the real part", .alphar = 1, .alphai = -5, .beta = 0, .real = largest, .imaginary = largest},
        {.name = "the other sign", .alphar = -1, .alphai = 5, .beta = 0, .real = -largest, .imaginary = -largest},
        {.name = "real part 0", .alphar = 0, .alphai = 5, .beta = 0, .real = 0, .imaginary = 0},
    };
    for (const Quotient& row : table) {
        Numbers alphar{row.alphar};
        Numbers alphai{row.alphai};
        lapack::divide_by_beta(alphar, alphai, Numbers{row.beta});
        EXPECT_EQ(alphar[0], row.real) << row.name;
        EXPECT_EQ(alphai[0], row.imaginary) << row.name;
    }
}

TEST(UnpackedPairs, ConjugatesStandSideBySide)
{
    const Numbers V{1, 2, 3, /**/ 4, 5, 6, /**/ 7, 8, 9};
    const Qud::Handle Z = lapack::unpacked_pairs(3, V.data(), Numbers{0, 2, -2}.data());
    EXPECT_EQ(matrices::stored(Z), (Numbers{1, 2, 3, 4, 5, 6, 4, 5, 6, 0, 0, 0, 7, 8, 9, -7, -8, -9}));
    const Qud::Handle first = lapack::unpacked_pairs(3, V.data(), Numbers{2, -2, 0}.data());
    EXPECT_EQ(matrices::stored(first), (Numbers{1, 2, 3, 1, 2, 3, 7, 8, 9, 4, 5, 6, -4, -5, -6, 0, 0, 0}));
    const Qud::Handle real = lapack::unpacked_pairs(3, V.data(), Numbers{0, -0.0, 0}.data());
    EXPECT_EQ(matrices::stored(real), (Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

// An adjusted alphai of 0 makes a column real although LAPACK packed a pair: its partner then begins one of its own,
// and in the last column has none.
TEST(UnpackedPairs, ALastColumnWithoutAPartnerIsReal)
{
    const Numbers V{1, 2, /**/ 3, 4};
    const Qud::Handle Z = lapack::unpacked_pairs(2, V.data(), Numbers{0, 5}.data());
    EXPECT_EQ(matrices::stored(Z), (Numbers{1, 2, 3, 4, 0, 0, 0, 0}));
}

TEST(OrderedComplex, ValuesAndVectorsTakeTheSameOrder)
{
    const std::vector<lapack::MKL_Complex16> values{{1, 5}, {3, 6}, {2, 7}};
    const std::vector<lapack::MKL_Complex16> V{{1, 1}, {2, 2}, {3, 3}, {4, 4}, {5, 5}, {6, 6}, {7, 7}, {8, 8}, {9, 9}};
    EXPECT_EQ(matrices::stored(lapack::ordered_complex(3, values.data(), nullptr)), (Numbers{3, 2, 1, 6, 7, 5}));
    EXPECT_EQ(matrices::stored(lapack::ordered_complex(3, values.data(), V.data())),
              (Numbers{4, 5, 6, 7, 8, 9, 1, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 3}));
}

TEST(Quotient, NeitherOverflowsNorUnderflowsOnTheWay)
{
    const auto near = [](lapack::MKL_Complex16 z, lapack::MKL_Complex16 expected) {
        EXPECT_LT(std::abs(z - expected), 4 * matrices::eps);
    };
    near(lapack::quotient({4, 2}, {1, 1}), {3, -1});
    near(lapack::quotient({1e300, 1e300}, {1e300, 1e300}), {1, 0});
    near(lapack::quotient({1e-300, 0}, {1e-300, 1e-300}), {0.5, -0.5});
    near(lapack::quotient({1e-320, 1e-320}, {0, 2e-320}), {0.5, -0.5});
    EXPECT_TRUE(std::isnan(lapack::quotient({1, 1}, {0, 0}).real()) ||
                std::isinf(lapack::quotient({1, 1}, {0, 0}).real()));
}

} // namespace
