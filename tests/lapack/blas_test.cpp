#include "bailuxsko/blas.hpp"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Efi::MKLBLAS;
using Efi::MKLLAPACK;
using Numbers = std::vector<double>;

constexpr int row_major = 101;
constexpr int column_major = 102;
constexpr int as_it_is = 111;
constexpr int transposed = 112;

TEST(Blas, Vectors)
{
    const Numbers x{1, 2, 3, 4};
    EXPECT_EQ(MKLBLAS::ddot(4, x.data(), 1, x.data(), 1), 30.0);
    EXPECT_EQ(MKLBLAS::ddot(2, x.data(), 2, x.data() + 1, 2), 1 * 2 + 3 * 4);

    Numbers y(4);
    MKLBLAS::dcopy(2, x.data(), 2, y.data(), 3);
    EXPECT_EQ(y, (Numbers{1, 0, 0, 3}));
    MKLBLAS::dcopy2(2, x.data(), 2, y.data(), 1);
    EXPECT_EQ(y, (Numbers{1, 3, 4, 3}));
    MKLBLAS::daxpy(4, 2.0, x.data(), 1, y.data(), 1);
    EXPECT_EQ(y, (Numbers{3, 7, 10, 11}));
    MKLBLAS::dscal(2, -1.0, y.data(), 2);
    EXPECT_EQ(y, (Numbers{-3, 7, -10, 11}));
}

TEST(Blas, MatrixTimesVector)
{
    const Numbers a{1, 2, 3, 4, 5, 6};
    const Numbers x{1, 10, 100};
    Numbers y{1, 1, 1};
    MKLBLAS::dgemv(column_major, as_it_is, 2, 3, 1.0, a.data(), 2, x.data(), 1, 2.0, y.data(), 1);
    EXPECT_EQ(y, (Numbers{533, 644, 1}));
    MKLBLAS::dgemv(column_major, transposed, 2, 3, 1.0, a.data(), 2, x.data(), 1, 0.0, y.data(), 1);
    EXPECT_EQ(y, (Numbers{21, 43, 65}));
    MKLBLAS::dgemv(row_major, as_it_is, 2, 3, 1.0, a.data(), 3, x.data(), 1, 0.0, y.data(), 2);
    EXPECT_EQ(y, (Numbers{321, 43, 654}));
}

TEST(Blas, MatrixTimesMatrix)
{
    const Numbers a{1, 2, 3, 4};
    const Numbers b{1, 0, 1, 1};
    Numbers c{1, 1, 1, 1};
    MKLBLAS::dgemm(column_major, as_it_is, transposed, 2, 2, 2, 1.0, a.data(), 2, b.data(), 2, 1.0, c.data(), 2);
    EXPECT_EQ(c, (Numbers{5, 7, 4, 5})); // [1, 3; 2, 4] * [1, 0; 1, 1] + 1
}

TEST(Blas, SolveTakesNAsBothLeadingDimensions)
{
    Numbers a{2, 0, 0, 4};
    Numbers b{2, 8, 4, 4};
    int ipiv[2] = {};
    int info = 7;
    MKLLAPACK::dgesv(2, 2, a.data(), 99, ipiv, b.data(), 1, info);
    EXPECT_EQ(info, 0);
    EXPECT_EQ(b, (Numbers{1, 2, 2, 1}));
    Numbers singular{1, 1, 1, 1};
    MKLLAPACK::dgesv(2, 1, singular.data(), 2, ipiv, b.data(), 2, info);
    EXPECT_EQ(info, 2);
}

} // namespace
