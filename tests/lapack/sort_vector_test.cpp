// The order of eigenvalues: the permutation of the stated heap sort for every pattern of ties and NaN, and what is
// rearranged by it.
#include "bailuxsko/lapack/sort_vector.hpp"

#include "tests/lapack/matrices.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/plain_heap_sort.hpp"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using matrices::NaN;
using Permutation = std::vector<std::uint32_t>;

/// Every sequence of n values out of the given ones.
template <class Look>
void for_all_sequences(std::size_t n, const std::vector<double>& of, Look look)
{
    std::vector<std::size_t> digits(n, 0);
    for (;;) {
        std::vector<double> values;
        for (const std::size_t digit : digits)
            values.push_back(of[digit]);
        look(values);
        std::size_t place = 0;
        while (place < n && ++digits[place] == of.size())
            digits[place++] = 0;
        if (place == n)
            return;
    }
}

TEST(SortVector, IsTheStatedProcedureForEveryPatternOfTies)
{
    for (std::size_t n = 2; n <= 6; ++n)
        for_all_sequences(n, {1.0, 2.0, 3.0, 4.0, 5.0, 6.0}, [](const std::vector<double>& values) {
            EXPECT_EQ(lapack::sortVector(values), support::plain_heap_sort(values, support::descends));
        });
}

TEST(SortVector, NaNIsLessInBothTests)
{
    for (std::size_t n = 2; n <= 5; ++n)
        for_all_sequences(n, {1.0, 2.0, NaN, -0.0, 0.0}, [](const std::vector<double>& values) {
            EXPECT_EQ(lapack::sortVector(values), support::plain_heap_sort(values, support::descends));
        });
    // By hand. Building the heap: 1 is not sifted below the NaN. Then p = (1, 0).
    EXPECT_EQ(lapack::sortVector(std::vector{1.0, NaN}), (Permutation{1, 0}));
}

TEST(SortVector, LargestFirst)
{
    EXPECT_EQ(lapack::sortVector(std::vector{3.0, 1.0, 2.0}), (Permutation{0, 2, 1}));
    EXPECT_EQ(lapack::sortVector(std::vector{-1.0, 5.0}), (Permutation{1, 0}));
    for_all_sequences(6, {1.0, 2.0, 3.0}, [](const std::vector<double>& values) {
        const Permutation p = lapack::sortVector(values);
        for (std::size_t i = 1; i < p.size(); ++i)
            EXPECT_GE(values[p[i - 1]], values[p[i]]);
        Permutation sorted = p;
        std::sort(sorted.begin(), sorted.end());
        EXPECT_EQ(sorted, (Permutation{0, 1, 2, 3, 4, 5}));
    });
}

TEST(SortVector, FewerThanTwoValuesAreRefused)
{
    const support::Raised out_of_bounds{"index out of bounds", -1};
    const double one = 7.0;
    EXPECT_EQ(support::host_raised_by([&] { lapack::sortVector({&one, 1}); }), out_of_bounds);
    EXPECT_EQ(support::host_raised_by([] { lapack::sortVector({}); }), out_of_bounds);
}

TEST(Rearrange, RowsOfAColumnAndColumnsOfAMatrix)
{
    const Permutation p{2, 0, 1};
    const Qud::Handle v = lapack::rearrangeVRows(*Qud::matrix_of(matrices::real({{1}, {2}, {3}})), p);
    EXPECT_EQ(matrices::stored(v), (std::vector<double>{3, 1, 2}));
    EXPECT_FALSE(Qud::matrix_of(v)->HasImag());
    const Qud::Handle z = lapack::rearrangeVRows(*Qud::matrix_of(matrices::complex({{{1, 4}}, {{2, 5}}, {{3, 6}}})), p);
    EXPECT_EQ(matrices::stored(z), (std::vector<double>{3, 1, 2, 6, 4, 5}));
    const Qud::Handle M = lapack::rearrangeMColumns(*Qud::matrix_of(matrices::real({{1, 2, 3}, {4, 5, 6}})), p);
    EXPECT_EQ(matrices::stored(M), (std::vector<double>{3, 6, 1, 4, 2, 5}));
    EXPECT_EQ(Qud::matrix_of(M)->Rows(), 2U);
    const Qud::Handle Z = lapack::rearrangeMColumns(*Qud::matrix_of(matrices::complex({{{1, 7}, {2, 8}, {3, 9}}})), p);
    EXPECT_EQ(matrices::stored(Z), (std::vector<double>{3, 1, 2, 9, 7, 8}));
}

} // namespace
