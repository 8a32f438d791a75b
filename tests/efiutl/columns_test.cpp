#include "efiutl/columns.hpp"

#include <array>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

/// A 2 by 2 block with leading dimension 3.
struct Block {
    std::array<double, 6> re = {1, 2, 99, 3, 4, 99};
    std::array<double, 6> im = {5, 6, 99, 7, 8, 99};
    aMatrix record = {
        .m_anr = 3, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 2, .m_rv = re.data(), .m_iv = im.data()};
};

TEST(Columns, ElementsStepByTheLeadingDimension)
{
    Block block;
    aMatrix* const A = &block.record;
    EXPECT_EQ(Efi::at(A, 1, 1), 4.0);
    EXPECT_EQ(Efi::at_i(A, 0, 1), 7.0);
    EXPECT_EQ(Efi::column(A, 1), block.re.data() + 3);
    EXPECT_EQ(Efi::column_i(A, 1), block.im.data() + 3);
    Efi::at(A, 0, 1) = 30.0;
    EXPECT_EQ(block.re[3], 30.0);
}

TEST(Columns, AnAbsentImaginaryArrayReadsAsZero)
{
    Block block;
    block.record.m_iv = nullptr;
    const aMatrix* const A = &block.record;
    EXPECT_EQ(Efi::at_i(A, 1, 1), 0.0);
}

TEST(Columns, TheFirstImaginaryPartThatIsNotZeroMakesTheArray)
{
    EfiCallContext ctx;
    Block block;
    aMatrix* const A = &block.record;
    A->m_iv = nullptr;
    Efi::store_i(&ctx, A, 0, 0, 0.0);
    Efi::store_i(&ctx, A, 0, 0, -0.0);
    EXPECT_EQ(A->m_iv, nullptr);
    Efi::store_i(&ctx, A, 1, 1, std::numeric_limits<double>::quiet_NaN());
    ASSERT_NE(A->m_iv, nullptr);
    EXPECT_TRUE(std::isnan(Efi::at_i(A, 1, 1)));
    EXPECT_EQ(Efi::at_i(A, 0, 0), 0.0);
    Efi::store_i(&ctx, A, 0, 0, -0.0);
    EXPECT_TRUE(std::signbit(Efi::at_i(A, 0, 0))) << "stored now that there is an array";
}

} // namespace
