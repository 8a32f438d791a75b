// What holds for the factors of Q * R of any matrix.
#include "bailuxsko/kernels/qr.hpp"

#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/residuals.hpp"

#include <cstdint>

#include <gtest/gtest.h>

namespace {

using support::judge;
using support::Matrix;
using support::Wide;

/// Every row of R begins to the right of the one above it, or is all zeros.
void expect_row_echelon(const Wide& R, const char* kind)
{
    std::size_t from = 0;
    for (std::size_t i = 0; i < R.rows(); ++i) {
        std::size_t first = 0;
        while (first < R.cols() && R.re(i, first) == 0.0L)
            ++first;
        EXPECT_TRUE(first >= from || first == R.cols()) << kind << ", row " << i;
        from = first == R.cols() ? first : first + 1;
    }
}

TEST(QrProperty, QTimesRIsA)
{
    gen::for_all({gen::real_kinds}, 300, [](const gen::Kind& kind, std::uint32_t n, const Matrix& A) {
        for (const auto& [rows, cols] : {std::pair{n, n}, {n, n - n / 3}, {n - n / 3, n}}) {
            Matrix part = gen::leading(A, rows, cols);
            aMatrix record = part.record();
            const Wide W = Wide::of(&record);
            if (norm1(W) > 1e153L) // squares of the elements are summed
                continue;
            const auto measured = [&](const char* residual) {
                return support::Measured{.function = "qr", .residual = residual, .kind = kind.name, .n = n};
            };
            EfiCallContext ctx;
            const aMatrix* const QR = native::qr(&ctx, &record);
            const Wide Q = Wide::block(QR, 0, 0, rows, rows);
            const Wide R = Wide::block(QR, 0, rows, rows, cols);
            expect_row_echelon(R, kind.name);
            judge(measured("A - Q*R"), support::residual_product(W, Q, R));
            judge(measured("I - Q'*Q"), support::residual_orthogonal(Q));
        }
    });
}

} // namespace
