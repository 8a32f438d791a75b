#include "efiutl/packing.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/context.hpp"
#include "efiutl/throw.hpp"
#include "tests/support/failing_arena.hpp"

#include <cstdint>
#include <initializer_list>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Matrices with traps between their columns. Elements are listed column by column.
class Packing : public testing::Test {
protected:
    static constexpr double trap = 1e300;

    aMatrix* make(std::uint32_t rows, std::uint32_t cols, std::initializer_list<double> re,
                  std::initializer_list<double> im = {})
    {
        aMatrix* const A = aMatrix::mk(ctx.m_arena, rows, cols, array(rows, cols, re),
                                       im.size() != 0 ? array(rows, cols, im) : nullptr);
        A->m_anr = rows + 1;
        return A;
    }

    static std::vector<double> real(const aMatrix* A)
    {
        EXPECT_EQ(A->m_anr, A->m_rows);
        return {A->m_rv, A->m_rv + std::size_t{A->m_rows} * A->m_cols};
    }

    static std::vector<double> imaginary(const aMatrix* A)
    {
        return A->m_iv == nullptr ? std::vector<double>{}
                                  : std::vector<double>{A->m_iv, A->m_iv + std::size_t{A->m_rows} * A->m_cols};
    }

    EfiCallContext ctx;

private:
    double* array(std::uint32_t rows, std::uint32_t cols, std::initializer_list<double> elements)
    {
        double* const to = Efi::doubles(&ctx, (rows + 1) * cols);
        std::fill_n(to, (rows + 1) * cols, trap);
        auto element = elements.begin();
        for (std::uint32_t j = 0; j < cols; ++j)
            for (std::uint32_t i = 0; i < rows; ++i)
                to[i + j * (rows + 1)] = *element++;
        return to;
    }
};

using Values = std::vector<double>;

TEST_F(Packing, ThreeSideBySideInTheGivenOrder)
{
    aMatrix* out = nullptr;
    EXPECT_TRUE(Efi::pack_three_c(&ctx, make(2, 1, {1, 2}), make(2, 2, {3, 4, 5, 6}), make(2, 1, {7, 8}), &out));
    EXPECT_EQ(out->m_rows, 2U);
    EXPECT_EQ(out->m_cols, 4U);
    EXPECT_EQ(real(out), (Values{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(out->m_iv, nullptr);
}

TEST_F(Packing, ComplexIfAnyIs)
{
    aMatrix* out = nullptr;
    EXPECT_TRUE(Efi::pack_three_c(&ctx, make(1, 1, {1}), make(1, 1, {2}, {5}), make(1, 1, {3}), &out));
    EXPECT_EQ(real(out), (Values{1, 2, 3}));
    EXPECT_EQ(imaginary(out), (Values{0, 5, 0}));
}

TEST_F(Packing, TwoSideBySide)
{
    aMatrix* out = nullptr;
    EXPECT_TRUE(Efi::pack_two_r(&ctx, make(2, 2, {1, 2, 3, 4}), make(2, 1, {5, 6}, {7, 8}), &out));
    EXPECT_EQ(out->m_cols, 3U);
    EXPECT_EQ(real(out), (Values{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(imaginary(out), (Values{0, 0, 0, 0, 7, 8}));
}

TEST_F(Packing, TwoStacked)
{
    aMatrix* out = nullptr;
    EXPECT_TRUE(Efi::pack_two_rr(&ctx, make(1, 2, {1, 4}), make(2, 2, {2, 3, 5, 6}), &out));
    EXPECT_EQ(out->m_rows, 3U);
    EXPECT_EQ(out->m_cols, 2U);
    EXPECT_EQ(real(out), (Values{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(out->m_iv, nullptr);
}

TEST_F(Packing, TwoStackedComplex)
{
    aMatrix* out = nullptr;
    EXPECT_TRUE(Efi::pack_two_rr(&ctx, make(1, 2, {1, 4}), make(2, 2, {2, 3, 5, 6}, {7, 8, 9, 10}), &out));
    EXPECT_EQ(imaginary(out), (Values{0, 7, 8, 0, 9, 10}));
}

TEST_F(Packing, ShapesThatDoNotFitAreRefused)
{
    aMatrix* const A = make(2, 1, {1, 2});
    aMatrix* const B = make(1, 2, {1, 2});
    aMatrix* out = A;
    EXPECT_FALSE(Efi::pack_two_r(&ctx, A, B, &out));
    EXPECT_EQ(out, nullptr);
    EXPECT_FALSE(Efi::pack_two_rr(&ctx, A, B, &out));
    EXPECT_FALSE(Efi::pack_three_c(&ctx, A, A, B, &out));
    EXPECT_EQ(out, nullptr);
}

TEST_F(Packing, NeighboursAreNotCopied)
{
    double* const re = Efi::doubles(&ctx, 12);
    double* const im = Efi::doubles(&ctx, 12);
    aMatrix* const parts[] = {aMatrix::mk(ctx.m_arena, 2, 2, re, im), aMatrix::mk(ctx.m_arena, 2, 2, re + 4, im + 4),
                              aMatrix::mk(ctx.m_arena, 2, 2, re + 8, im + 8)};
    aMatrix* out = nullptr;
    EXPECT_TRUE(Efi::pack_three_c(&ctx, parts[0], parts[1], parts[2], &out));
    EXPECT_EQ(out->m_rv, re);
    EXPECT_EQ(out->m_iv, im);
    EXPECT_EQ(out->m_cols, 6U);
    EXPECT_TRUE(Efi::pack_three_c(&ctx, parts[1], parts[0], parts[2], &out));
    EXPECT_NE(out->m_rv, re) << "not in this order";
}

TEST_F(Packing, StackedNeighboursAreNotCopied)
{
    double* const re = Efi::doubles(&ctx, 6);
    aMatrix* const upper = aMatrix::mk(ctx.m_arena, 1, 2, re, nullptr);
    aMatrix* const lower = aMatrix::mk(ctx.m_arena, 2, 2, re + 1, nullptr);
    upper->m_anr = lower->m_anr = 3;
    aMatrix* out = nullptr;
    EXPECT_TRUE(Efi::pack_two_rr(&ctx, upper, lower, &out));
    EXPECT_EQ(out->m_rv, re);
    EXPECT_EQ(out->m_anr, 3U);
    EXPECT_EQ(out->m_rows, 3U);
}

TEST_F(Packing, RunsOutOfMemoryCleanly)
{
    aMatrix* const A = make(2, 1, {1, 2}, {3, 4});
    const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
        EfiCallContext own;
        aMatrix* out = nullptr;
        Efi::pack_three_c(&own, A, A, A, &out);
    });
    EXPECT_EQ(requests, 3U);
}

TEST_F(Packing, AColumnIsCopied)
{
    aMatrix* const M = make(2, 2, {1, 2, 3, 4}, {5, 6, 7, 8});
    aMatrix* const v = make(2, 1, {0, 0}, {0, 0});
    EXPECT_EQ(Efi::MtoVcol(&ctx, M, 1, v), nullptr);
    EXPECT_EQ(Efi::at(v, 0, 0), 3.0);
    EXPECT_EQ(Efi::at(v, 1, 0), 4.0);
    EXPECT_EQ(Efi::at_i(v, 0, 0), 7.0);
    EXPECT_EQ(Efi::at_i(v, 1, 0), 8.0);
    M->m_iv = nullptr;
    EXPECT_EQ(Efi::MtoVcol(&ctx, M, 0, v), nullptr);
    EXPECT_EQ(Efi::at(v, 0, 0), 1.0);
    EXPECT_EQ(Efi::at_i(v, 0, 0), 0.0);
}

TEST_F(Packing, AColumnThatCannotBeCopiedIsNamed)
{
    aMatrix* const M = make(2, 2, {1, 2, 3, 4});
    aMatrix* const v = make(2, 1, {0, 0});
    EXPECT_STREQ(Efi::MtoVcol(&ctx, M, 2, v), "index out of bounds");
    EXPECT_STREQ(Efi::MtoVcol(&ctx, M, -1, v), "index out of bounds");
    EXPECT_STREQ(Efi::MtoVcol(&ctx, M, 0, make(3, 1, {0, 0, 0})), "array size mismatch");
    M->m_rv = nullptr;
    EXPECT_STREQ(Efi::MtoVcol(&ctx, M, 0, v), "null pointer");
}

TEST_F(Packing, AColumnIsZeroedFromARowOn)
{
    aMatrix* const M = make(3, 2, {1, 2, 3, 4, 5, 6}, {1, 2, 3, 4, 5, 6});
    Efi::zero_col(1, 1, M);
    Efi::zero_col(0, 3, M);
    Efi::zero_col(2, 0, M);
    Efi::zero_col(-1, 0, M);
    const double expected[] = {1, 2, 3, 4, 0, 0};
    for (std::uint32_t j = 0; j < 2; ++j)
        for (std::uint32_t i = 0; i < 3; ++i) {
            EXPECT_EQ(Efi::at(M, i, j), expected[i + 3 * j]);
            EXPECT_EQ(Efi::at_i(M, i, j), expected[i + 3 * j]);
        }
}

} // namespace
