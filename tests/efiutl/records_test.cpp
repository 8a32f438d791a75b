#include "efiutl/records.hpp"

#include "efiutl/context.hpp"

#include <array>
#include <bit>
#include <cfenv>
#include <cmath>
#include <cstring>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

TEST(Records, AMatrixRecordIs32BytesToTheLetter)
{
    EfiCallContext ctx;
    double re = 0.0;
    double im = 0.0;
    const aMatrix* const A = aMatrix::mk(ctx.m_arena, 0x01020304, 0x05060708, &re, &im);
    std::array<unsigned char, 32> bytes{};
    std::memcpy(bytes.data(), A, bytes.size());
    const std::array<unsigned char, 16> head = {0x04, 0x03, 0x02, 0x01, 0x00, 0x00, 0xF4, 0x7F,
                                                0x04, 0x03, 0x02, 0x01, 0x08, 0x07, 0x06, 0x05};
    EXPECT_EQ(std::memcmp(bytes.data(), head.data(), head.size()), 0);
    double* pointers[2];
    std::memcpy(pointers, bytes.data() + 16, sizeof pointers);
    EXPECT_EQ(pointers[0], &re);
    EXPECT_EQ(pointers[1], &im);
}

TEST(Records, ARecordsHeadReadAsADoubleIsNaN)
{
    EfiCallContext ctx;
    for (const std::uint32_t rows : {0U, 1U, 0xFFFFFFFFU}) {
        const aMatrix* const A = aMatrix::mk(ctx.m_arena, rows, 1, nullptr, nullptr);
        double head;
        std::memcpy(&head, A, sizeof head);
        EXPECT_TRUE(std::isnan(head));
        EXPECT_FALSE(Efi::isPtrNan(head));
    }
}

TEST(Records, TheTagTellsAMatrixFromANumber)
{
    struct Case {
        std::uint64_t head;
        bool is_matrix;
    };
    const Case cases[] = {
        {.head = 0x7FF4'0000'0000'0003, .is_matrix = true},
        {.head = 0x7FF7'FFFF'0000'0000, .is_matrix = true},  // bits below the mask do not count
        {.head = 0xFFF4'0000'0000'0003, .is_matrix = true},  // nor does the sign
        {.head = 0x7FF0'0000'0000'0000, .is_matrix = false}, // infinity
        {.head = 0x7FF8'0000'0000'0000, .is_matrix = false}, // the quiet NaN of the hardware
        {.head = 0xFFFF'FFFF'FFFF'FFFF, .is_matrix = false}, // the pattern of a slot without a number
        {.head = 0x3FF0'0000'0000'0000, .is_matrix = false}, // 1.0
        {.head = 0, .is_matrix = false},
    };
    for (const Case& c : cases) {
        Anyval value{};
        std::memcpy(&value, &c.head, sizeof c.head);
        EXPECT_EQ(Efi::is_matrix(&value), c.is_matrix) << std::hex << c.head;
    }
}

TEST(Records, OnlyAllOnesIsThePointerNaN)
{
    EXPECT_EQ(std::bit_cast<std::uint64_t>(Efi::ptr_nan()), ~std::uint64_t{0});
    EXPECT_TRUE(Efi::isPtrNan(Efi::ptr_nan()));
    EXPECT_FALSE(Efi::isPtrNan(nan));
    EXPECT_FALSE(Efi::isPtrNan(0.0));
    EXPECT_FALSE(Efi::isPtrNan(std::bit_cast<double>(0xFFFF'FFFF'FFFF'FFFE)));
    EXPECT_FALSE(Efi::isPtrNan(std::bit_cast<double>(0xFFFF'FFFE'FFFF'FFFF)));
}

TEST(Records, FiniteMeansNeitherInfinityNorAnyNaN)
{
    for (const double x : {0.0, -0.0, 1.0, -1e308, std::numeric_limits<double>::denorm_min()})
        EXPECT_TRUE(Efi::ISFINITE(x)) << x;
    for (const double x : {inf, -inf, nan, -nan, Efi::ptr_nan(), std::numeric_limits<double>::signaling_NaN()})
        EXPECT_FALSE(Efi::ISFINITE(x)) << x;
}

TEST(Records, LookingAtAPatternRaisesNoFlag)
{
    std::feclearexcept(FE_ALL_EXCEPT);
    EXPECT_FALSE(Efi::ISFINITE(std::numeric_limits<double>::signaling_NaN()));
    EXPECT_FALSE(Efi::isPtrNan(std::numeric_limits<double>::signaling_NaN()));
    EXPECT_EQ(std::fetestexcept(FE_INVALID), 0);
}

TEST(Records, TheSharedZeroIsPositive)
{
    EXPECT_EQ(std::bit_cast<std::uint64_t>(aMatrix::m_zero), 0U);
}

} // namespace
