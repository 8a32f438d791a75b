// What holds for the Cholesky factor of any positive definite matrix.
#include "bailuxsko/kernels/cholesky.hpp"

#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/residuals.hpp"

#include <cstdint>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Wide;

TEST(CholeskyProperty, LTimesItsTransposeIsA)
{
    gen::for_all({gen::positive_definite_kinds}, 300, [](const gen::Kind& kind, std::uint32_t, Matrix A) {
        aMatrix record = A.record();
        const Wide W = Wide::of(&record);
        EfiCallContext ctx;
        const Wide L = Wide::of(native::cholesky(&ctx, &record));
        for (std::uint32_t j = 0; j < A.cols(); ++j) {
            EXPECT_GT(L.re(j, j), 0.0L) << kind.name;
            for (std::uint32_t i = 0; i < j; ++i)
                EXPECT_EQ(L.re(i, j), 0.0L) << kind.name;
        }
        support::judge({.function = "cholesky", .residual = "A - L*L'", .kind = kind.name, .n = A.cols()},
                       support::residual_llt(W, L));
    });
}

} // namespace
