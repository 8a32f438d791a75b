// What holds for the factors of any matrix.
#include "bailuxsko/kernels/lu.hpp"

#include "efiutl/columns.hpp"
#include "tests/support/gallery_kinds.hpp"
#include "tests/support/judge.hpp"
#include "tests/support/raises.hpp"
#include "tests/support/residuals.hpp"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Efi::at;
using support::Matrix;
using support::Raised;
using support::raised_by;
using support::Wide;

void expect_one_in_each_row_and_column(const aMatrix* PLU)
{
    const std::size_t n = PLU->m_rows;
    std::vector<int> in_row(n);
    for (std::size_t j = 0; j < n; ++j) {
        int in_column = 0;
        for (std::size_t i = 0; i < n; ++i) {
            EXPECT_TRUE(at(PLU, i, j) == 0.0 || at(PLU, i, j) == 1.0);
            in_column += at(PLU, i, j) == 1.0;
            in_row[i] += at(PLU, i, j) == 1.0;
        }
        EXPECT_TRUE(in_column == 1);
    }
    EXPECT_TRUE(std::all_of(in_row.begin(), in_row.end(), [](int ones) { return ones == 1; }));
}

void expect_triangles(const aMatrix* PLU)
{
    const std::size_t n = PLU->m_rows;
    for (std::size_t j = 0; j < n; ++j) {
        EXPECT_TRUE(at(PLU, j, n + j) == 1.0);
        EXPECT_TRUE(Efi::at_i(PLU, j, n + j) == 0.0);
        for (std::size_t i = 0; i < n; ++i) {
            const std::size_t zero_column = i < j ? n + j : 2 * n + j;
            if (i == j)
                continue;
            EXPECT_TRUE(at(PLU, i, zero_column) == 0.0);
            EXPECT_TRUE(Efi::at_i(PLU, i, zero_column) == 0.0);
        }
    }
}

TEST(LuProperty, PTimesAIsLTimesU)
{
    for (const bool complex : {false, true}) {
        const auto tables = complex ? gen::Kinds(gen::complex_kinds) : gen::Kinds(gen::real_kinds);
        gen::for_all({tables}, complex ? 129 : 300, [&](const gen::Kind& kind, std::uint32_t n, Matrix A) {
            const auto before = A.bits();
            aMatrix record = A.record();
            EfiCallContext ctx;
            aMatrix* PLU = nullptr;
            const Raised raised = raised_by([&] { PLU = native::lu(&ctx, &record); });
            EXPECT_EQ(A.bits(), before);
            if (PLU == nullptr) {
                EXPECT_TRUE(kind.singular) << kind.name << ", n = " << n;
                EXPECT_EQ(raised, (Raised{.message = "singular matrix", .index = -1}));
                return;
            }
            expect_one_in_each_row_and_column(PLU);
            expect_triangles(PLU);
            const auto factor = [&](std::size_t which) { return Wide::block(PLU, 0, which * n, n, n); };
            support::judge({.function = "lu", .residual = "P*A - L*U", .kind = kind.name, .n = n},
                           support::residual_lu(Wide::of(&record), factor(0), factor(1), factor(2)));
        });
    }
}

} // namespace
