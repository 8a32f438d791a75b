#include "efiutl/complex_division.hpp"

#include "efiutl/records.hpp"

#include <cfenv>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

aComplex quotient(aComplex a, aComplex b)
{
    aComplex q{.m_re = -77.0, .m_im = -77.0};
    Efi::cpxd(a.m_re, a.m_im, b.m_re, b.m_im, q.m_re, q.m_im);
    return q;
}

TEST(ComplexDivision, ByHand)
{
    struct Case {
        const char* name;
        aComplex a, b, q;
    };
    const Case cases[] = {
        {.name = "larger real part", .a = {10, 5}, .b = {2, 1}, .q = {5, 0}},
        {.name = "larger imaginary part", .a = {5, 10}, .b = {1, 2}, .q = {5, 0}},
        {.name = "parts of one size", .a = {2, 4}, .b = {1, 1}, .q = {3, 1}},
        {.name = "by i", .a = {3, 4}, .b = {0, 1}, .q = {4, -3}},
        {.name = "by a negative real", .a = {3, 4}, .b = {-2, 0}, .q = {-1.5, -2}},
        {.name = "no overflow on the way", .a = {1e300, 1e300}, .b = {1e300, 1e300}, .q = {1, 0}},
        {.name = "zero over zero", .a = {0, 0}, .b = {0, 0}, .q = {0, 0}},
        {.name = "zero over a number", .a = {0, 0}, .b = {3, 4}, .q = {0, 0}},
        {.name = "negative zero over zero", .a = {-0.0, -0.0}, .b = {0, 0}, .q = {0, 0}},
    };
    for (const Case& c : cases) {
        const aComplex q = quotient(c.a, c.b);
        EXPECT_EQ(q.m_re, c.q.m_re) << c.name;
        EXPECT_EQ(q.m_im, c.q.m_im) << c.name;
    }
}

TEST(ComplexDivision, AZeroNumeratorRaisesNoFlag)
{
    std::feclearexcept(FE_ALL_EXCEPT);
    quotient({0, 0}, {0, 0});
    EXPECT_EQ(std::fetestexcept(FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW), 0);
}

TEST(ComplexDivision, ANumberOverZeroIsNotFiniteAndRaisesAFlag)
{
    for (const aComplex a : {aComplex{1, 0}, aComplex{0, 1}, aComplex{-1, 2}}) {
        std::feclearexcept(FE_ALL_EXCEPT);
        const aComplex q = quotient(a, {0, 0});
        EXPECT_FALSE(Efi::ISFINITE(q.m_re) && Efi::ISFINITE(q.m_im));
        EXPECT_NE(std::fetestexcept(FE_DIVBYZERO), 0);
    }
}

TEST(ComplexDivision, SafeQuotient)
{
    const double slot = Efi::ptr_nan();
    EXPECT_EQ(Efi::safe_quotient(6.0, 3.0), 2.0);
    EXPECT_EQ(Efi::safe_quotient(0.0, 0.0), 0.0);
    EXPECT_FALSE(std::signbit(Efi::safe_quotient(-0.0, 3.0)));
    EXPECT_EQ(Efi::safe_quotient(0.0, nan), 0.0);
    EXPECT_EQ(Efi::safe_quotient(slot, 3.0), 0.0);
    EXPECT_EQ(Efi::safe_quotient(3.0, slot), 0.0);
    EXPECT_EQ(Efi::safe_quotient(std::bit_cast<double>(0xFFFF'FFFF'0000'0001), 3.0), 0.0); // the upper half decides
    EXPECT_EQ(Efi::safe_quotient(1.0, 0.0), inf);
    EXPECT_EQ(Efi::safe_quotient(-1.0, 0.0), -inf);
    EXPECT_TRUE(std::isnan(Efi::safe_quotient(nan, 3.0)));
}

} // namespace
