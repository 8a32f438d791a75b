// The reduced row echelon form of matrices whose rows are mixtures of a known one's.
#include "bailuxsko/kernels/rref.hpp"

#include "bailuxsko/kernels/rank.hpp"
#include "tests/support/gallery.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/residuals.hpp"

#include <cstdint>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Wide;

/// In reduced row echelon form with `rank` pivots; every third column has none.
Matrix echelon(std::uint32_t m, std::uint32_t n, std::uint32_t rank, gen::Random& random)
{
    Matrix R = gen::from(m, n, [](std::size_t, std::size_t) { return 0.0; });
    std::uint32_t row = 0;
    for (std::uint32_t j = 0; j < n; ++j) {
        if (row < rank && j % 3 != 2) {
            R.re(row++, j) = 1.0;
            continue;
        }
        for (std::uint32_t i = 0; i < row; ++i)
            R.re(i, j) = gen::uniform(random);
    }
    return R;
}

TEST(RrefProperty, FindsTheFormThatRowsAreMixedFrom)
{
    for (const std::uint32_t n : gen::sizes)
        for (const std::uint32_t m : {n, n + 2, n - n / 3})
            for (const std::uint32_t rank : {m, m / 2, 1U}) {
                const std::uint32_t columns_for_pivots = n - n / 3;
                gen::Random random(n + m);
                Matrix expected = echelon(m, n, std::min(rank, columns_for_pivots), random);
                Matrix A = gen::rows_mixed(expected, random);
                aMatrix record = A.record();
                const aMatrix form = expected.record();
                EfiCallContext ctx;
                const Wide R = Wide::of(native::rref(&ctx, &record));
                const Wide E = Wide::of(&form);
                support::judge({.function = "rref",
                                .residual = "R - known form",
                                .kind = rank == m ? "random" : "rank-deficient",
                                .n = n},
                               support::ratio(norm1(R - E), std::max(m, n), norm1(E)));
                EXPECT_EQ(native::rank(&ctx, &record), std::min({rank, columns_for_pivots, m})) << m << " by " << n;
            }
}

} // namespace
