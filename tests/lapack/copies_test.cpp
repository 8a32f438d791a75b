#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "tests/lapack/matrices.hpp"

#include <gtest/gtest.h>

namespace {

using Efi::MKLUtilityFunctions;
using matrices::as_view;
using matrices::Complex;
using Qud::matrix_of;

const Qud::Handle whole = matrices::real({{1, 2, 3}, {4, 5, 6}});
const Qud::Handle whole_complex = matrices::complex({{{1, 10}, {2, 20}, {3, 30}}, {{4, 40}, {5, 50}, {6, 60}}});

TEST(Copies, PackMatvalPutsColumnsBehindEachOther)
{
    for (const Qud::Handle& M : {whole, as_view(whole), whole_complex, as_view(whole_complex)})
        for (const std::size_t ld : {0U, 2U}) {
            std::vector<double> D(6, -1.0);
            MKLUtilityFunctions::packMatval(*matrix_of(M), D.data(), ld);
            EXPECT_EQ(D, (std::vector<double>{1, 4, 2, 5, 3, 6}));
        }
}

TEST(Copies, PackMatvalLeavesTheGapBetweenColumns)
{
    for (const Qud::Handle& M : {whole, as_view(whole)}) {
        std::vector<double> D(9, -1.0);
        MKLUtilityFunctions::packMatval(*matrix_of(M), D.data(), 3);
        EXPECT_EQ(D, (std::vector<double>{1, 4, -1, 2, 5, -1, 3, 6, -1}));
    }
}

TEST(Copies, AShiftedMatrixWithoutGapsIsOneStretch)
{
    const Qud::Handle shifted = matrices::generate(
        2, 2, [](auto i, auto j) { return 10.0 * i + j; }, 0, 7);
    std::vector<double> D(4);
    MKLUtilityFunctions::packMatval(*matrix_of(shifted), D.data(), 0);
    EXPECT_EQ(D, (std::vector<double>{0, 10, 1, 11}));
}

TEST(Copies, Cmat2mklInterleaves)
{
    for (const Qud::Handle& M : {whole_complex, as_view(whole_complex)})
        for (const std::size_t ld : {0U, 2U}) {
            std::vector<Complex> Z(6, {-1, -1});
            MKLUtilityFunctions::cmat2mkl(*matrix_of(M), Z.data(), ld);
            EXPECT_EQ(Z, (std::vector<Complex>{{1, 10}, {4, 40}, {2, 20}, {5, 50}, {3, 30}, {6, 60}}));
        }
}

TEST(Copies, Cmat2mklLeavesTheGapBetweenColumns)
{
    std::vector<Complex> Z(9, {-1, -2});
    MKLUtilityFunctions::cmat2mkl(*matrix_of(whole_complex), Z.data(), 3);
    EXPECT_EQ(
        Z, (std::vector<Complex>{{1, 10}, {4, 40}, {-1, -2}, {2, 20}, {5, 50}, {-1, -2}, {3, 30}, {6, 60}, {-1, -2}}));
}

TEST(Copies, Cmat2mklLeavesTheImaginarySlotsOfARealSource)
{
    for (const Qud::Handle& M : {whole, as_view(whole)})
        for (const std::size_t ld : {0U, 3U}) {
            std::vector<Complex> Z(9, {-1, 7});
            MKLUtilityFunctions::cmat2mkl(*matrix_of(M), Z.data(), ld);
            const std::size_t stride = ld == 0 ? 2 : ld;
            for (std::size_t j = 0; j < 3; ++j)
                for (std::size_t i = 0; i < 2; ++i)
                    EXPECT_EQ(Z[j * stride + i], Complex(matrix_of(M)->real(i, j), 7));
        }
}

TEST(Copies, Mkl2cmatFillsBothArrays)
{
    const std::vector<Complex> Z{{1, 10}, {4, 40}, {-1, -2}, {2, 20}, {5, 50}, {-1, -2}};
    const std::vector<Complex> packed{{1, 10}, {4, 40}, {2, 20}, {5, 50}};
    struct Case {
        const Complex* Z;
        std::size_t ld;
        std::uint32_t anr;
        std::vector<double> re, im;
    };
    const Case cases[] = {
        {.Z = packed.data(), .ld = 0, .anr = 2, .re = {1, 4, 2, 5}, .im = {10, 40, 20, 50}},
        {.Z = packed.data(), .ld = 2, .anr = 2, .re = {1, 4, 2, 5}, .im = {10, 40, 20, 50}},
        {.Z = Z.data(), .ld = 3, .anr = 2, .re = {1, 4, 2, 5}, .im = {10, 40, 20, 50}},
        {.Z = Z.data(), .ld = 3, .anr = 3, .re = {1, 4, 9, 2, 5, 9}, .im = {10, 40, 9, 20, 50, 9}},
        {.Z = packed.data(), .ld = 0, .anr = 3, .re = {1, 4, 9, 2, 5, 9}, .im = {10, 40, 9, 20, 50, 9}},
    };
    for (const Case& c : cases) {
        std::vector<double> re(c.re.size(), 9.0);
        std::vector<double> im(c.im.size(), 9.0);
        MKLUtilityFunctions::mkl2cmat(
            c.Z,
            {.m_anr = c.anr, .m_tag = aMatrix::tag, .m_rows = 2, .m_cols = 2, .m_rv = re.data(), .m_iv = im.data()},
            c.ld);
        EXPECT_EQ(re, c.re);
        EXPECT_EQ(im, c.im);
    }
}

TEST(Copies, AComplexCopyOfARealMatrixHasZeroImaginaryParts)
{
    lapack::mkl_auto_ptr<Complex> used;
    std::fill_n(used.allocate(12), 12, Complex(3, 3));
    const Complex* const Z = lapack::complex_copy(*matrix_of(whole), used, 3);
    EXPECT_EQ(std::vector<Complex>(Z, Z + 9), (std::vector<Complex>{1, 4, 0, 2, 5, 0, 3, 6, 0}));
}

} // namespace
