#include "bailuxsko/lapack/small_systems.hpp"

#include "bailuxsko/lapack/fortran.hpp"
#include "tests/lapack/matrices.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace {

using lapack::dgesv_of_any_size;
using lapack::dgetrf_of_any_size;
using Numbers = std::vector<double>;

struct Factors {
    Numbers A;
    std::vector<int> ipiv;
    int info = -99;

    bool operator==(const Factors&) const = default;
};

using Factorise = decltype(&dgetrf_of_any_size);

/// A is m by n, column by column, with leading dimension ld.
Factors factors_by(Factorise routine, Numbers A, int m, int n, int ld)
{
    Factors F{.A = std::move(A), .ipiv = std::vector<int>(static_cast<std::size_t>(std::min(m, n)))};
    routine(&m, &n, F.A.data(), &ld, F.ipiv.data(), &F.info);
    return F;
}

Numbers random_numbers(std::size_t count, unsigned seed)
{
    const Qud::Handle column = matrices::random_real(static_cast<std::uint32_t>(count), 1, seed);
    const double* const first = Qud::matrix_of(column)->m_rarr;
    return {first, first + count};
}

TEST(SmallSystems, FactorsByHand)
{
    const struct {
        const char* name;
        int m;
        int n;
        Numbers A;
        Factors expected;
    } cases[] = {
        {"one element", 1, 1, {5}, {{5}, {1}, 0}},
        {"the larger row comes first", 2, 2, {1, 4, 2, 16}, {{4, 0.25, 16, -2}, {2, 2}, 0}},
        {"the first of equally large rows", 3, 2, {2, 4, 4, 1, 3, 1}, {{4, 1, 0.5, 3, -2, 0.25}, {2, 3}, 0}},
        {"more columns than rows", 2, 3, {0, 2, 1, 4, 2, 6}, {{2, 0, 4, 1, 6, 2}, {2, 2}, 0}},
        {"no pivot in the first step", 2, 2, {0, 0, 1, 2}, {{0, 0, 1, 2}, {1, 2}, 1}},
        {"no pivot in the last step", 2, 2, {1, 2, 2, 4}, {{2, 0.5, 4, 0}, {2, 2}, 2}},
        {"the first step without a pivot counts", 2, 2, {0, 0, 0, 0}, {{0, 0, 0, 0}, {1, 2}, 1}},
        {"nothing", 0, 0, {}, {{}, {}, 0}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(factors_by(dgetrf_of_any_size, c.A, c.m, c.n, std::max(c.m, 1)), c.expected) << c.name;
}

TEST(SmallSystems, ANumberThatIsNoneStaysWhereItIsThePivot)
{
    const Factors F = factors_by(dgetrf_of_any_size, {std::numeric_limits<double>::quiet_NaN(), 1, 1, 1}, 2, 2, 2);
    EXPECT_EQ(F.ipiv, (std::vector<int>{1, 2}));
    EXPECT_EQ(F.info, 0);
    EXPECT_TRUE(std::isnan(F.A[3]));
}

/// The largest difference of P L U from A, relative to the rounding error that a factorisation may have.
double residual(const Factors& F, Numbers A, std::size_t m, std::size_t n, std::size_t ld)
{
    for (std::size_t k = 0; k < F.ipiv.size(); ++k)
        for (std::size_t j = 0; j < n; ++j)
            std::swap(A[k + j * ld], A[static_cast<std::size_t>(F.ipiv[k]) - 1 + j * ld]);
    double worst = 0.0;
    for (std::size_t j = 0; j < n; ++j)
        for (std::size_t i = 0; i < m; ++i) {
            double sum = i <= j ? F.A[i + j * ld] : 0.0;
            for (std::size_t k = 0; k < std::min({i, j + 1, F.ipiv.size()}); ++k)
                sum += F.A[i + k * ld] * F.A[k + j * ld];
            worst = std::max(worst, std::fabs(sum - A[i + j * ld]));
        }
    return worst / (static_cast<double>(std::max(m, n)) * std::numeric_limits<double>::epsilon());
}

TEST(SmallSystems, FactorsOfAnyShapeAreThoseOfTheProvider)
{
    for (const int m : {1, 2, 3, 4, 5, 8, 15, 31, 32, 33, 40})
        for (const int n : {1, 2, 3, 4, 5, 8, 15, 31, 32, 33, 40}) {
            const int ld = m + n % 3; // what lies between the columns stays
            const Numbers A = random_numbers(static_cast<std::size_t>(ld) * static_cast<std::size_t>(n),
                                             static_cast<unsigned>(m * 100 + n));
            const Factors ours = factors_by(dgetrf_of_any_size, A, m, n, ld);
            const Factors peers = factors_by(lapack::fortran::dgetrf_, A, m, n, ld);
            const std::string shape = std::to_string(m) + " by " + std::to_string(n);
            EXPECT_EQ(ours.ipiv, peers.ipiv) << shape;
            EXPECT_EQ(ours.info, 0) << shape;
            EXPECT_LT(residual(ours, A, static_cast<std::size_t>(m), static_cast<std::size_t>(n),
                               static_cast<std::size_t>(ld)),
                      30.0)
                << shape;
            for (int j = 0; j < n; ++j)
                for (int i = m; i < ld; ++i)
                    EXPECT_EQ(ours.A[static_cast<std::size_t>(i + j * ld)], A[static_cast<std::size_t>(i + j * ld)])
                        << shape;
            const bool is_large = m > lapack::largest_small_system || n > lapack::largest_small_system;
            EXPECT_TRUE(!is_large || ours == peers) << shape << ": the provider's own";
        }
}

TEST(SmallSystems, Solutions)
{
    for (const int n : {1, 2, 3, 4, 7, 10, 31, 32, 33, 50}) {
        const int nrhs = 3;
        const int ldb = n + 1;
        const auto size = static_cast<std::size_t>(n);
        const Numbers A = random_numbers(size * size, static_cast<unsigned>(n));
        const Numbers X = random_numbers(size * nrhs, static_cast<unsigned>(n) + 1);
        Numbers B(static_cast<std::size_t>(ldb) * nrhs, 7.0);
        for (std::size_t j = 0; j < nrhs; ++j)
            for (std::size_t i = 0; i < size; ++i) {
                double sum = 0.0;
                for (std::size_t k = 0; k < size; ++k)
                    sum += A[i + k * size] * X[k + j * size];
                B[i + j * static_cast<std::size_t>(ldb)] = sum;
            }
        Numbers peers = B;
        Numbers a = A;
        Numbers b = A;
        std::vector<int> ipiv(size);
        int info = -99;
        dgesv_of_any_size(&n, &nrhs, a.data(), &n, ipiv.data(), B.data(), &ldb, &info);
        ASSERT_EQ(info, 0) << n;
        lapack::fortran::dgesv_(&n, &nrhs, b.data(), &n, ipiv.data(), peers.data(), &ldb, &info);
        double error = 0.0;
        double error_of_peers = 0.0;
        for (std::size_t j = 0; j < nrhs; ++j) {
            EXPECT_EQ(B[size + j * static_cast<std::size_t>(ldb)], 7.0) << n << ": behind the column";
            for (std::size_t i = 0; i < size; ++i) {
                const double x = X[i + j * size];
                error = std::max(error, std::fabs(B[i + j * static_cast<std::size_t>(ldb)] - x));
                error_of_peers = std::max(error_of_peers, std::fabs(peers[i + j * static_cast<std::size_t>(ldb)] - x));
            }
        }
        EXPECT_LE(error, 30.0 * std::max(error_of_peers, std::numeric_limits<double>::epsilon())) << n;
    }
}

TEST(SmallSystems, ASingularSystemIsNotSolved)
{
    const int n = 3;
    const int one = 1;
    Numbers A{1, 2, 3, 2, 4, 6, 0, 0, 1}; // the second column is twice the first
    Numbers b{1, 2, 3};
    int ipiv[3] = {};
    int info = 0;
    dgesv_of_any_size(&n, &one, A.data(), &n, ipiv, b.data(), &n, &info);
    EXPECT_EQ(info, 2);
    EXPECT_EQ(b, (Numbers{1, 2, 3}));
}

TEST(SmallSystems, SenselessArgumentsAreTheProvidersToJudge)
{
    const struct {
        int n;
        int nrhs;
        int lda;
        int ldb;
        int info;
    } cases[] = {{-1, 1, 2, 2, -1}, {2, -1, 2, 2, -2}, {2, 1, 1, 2, -4}, {2, 1, 2, 1, -7}};
    for (const auto& c : cases) {
        Numbers A{1, 2, 3, 4};
        Numbers b{1, 2};
        int ipiv[2] = {};
        int info = 0;
        dgesv_of_any_size(&c.n, &c.nrhs, A.data(), &c.lda, ipiv, b.data(), &c.ldb, &info);
        EXPECT_EQ(info, c.info);
        EXPECT_EQ(A, (Numbers{1, 2, 3, 4}));
    }
    const int two = 2;
    const int one = 1;
    Numbers A{1, 2, 3, 4};
    int ipiv[2] = {};
    int info = 0;
    dgetrf_of_any_size(&two, &two, A.data(), &one, ipiv, &info);
    EXPECT_EQ(info, -4);
}

} // namespace
