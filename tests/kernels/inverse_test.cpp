// The inverse: the bits and faults of the plain loops at every instruction level, refusals on records, memory.
#include "bailuxsko/kernels/inverse.hpp"

#include "tests/kernels/plain/inverse.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <bit>
#include <cfenv>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::draw;
using support::Kind;
using support::kinds;
using support::Matrix;
using support::Raised;
using support::Random;
using support::uniform;

/// What the guard lets a worksheet see: an error, a fault, or the bits.
struct Outcome {
    Raised raised;
    bool fault = false;
    std::vector<std::uint64_t> re, im;

    bool operator==(const Outcome&) const = default;
};

using Inverse = void (*)(EfiCallContext*, aMatrix*, aMatrix**, bool);

Outcome outcome(Inverse inverse, Matrix A, bool strict)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    aMatrix* X = nullptr;
    std::feclearexcept(FE_ALL_EXCEPT);
    const Raised raised = support::raised_by([&] { inverse(&ctx, &record, &X, strict); });
    const bool fault = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID) != 0;
    if (!raised.message.empty() || fault)
        return {.raised = raised, .fault = raised.message.empty(), .re = {}, .im = {}};
    Outcome result;
    const auto push = [](std::vector<std::uint64_t>& to, double x) { to.push_back(std::bit_cast<std::uint64_t>(x)); };
    for (std::size_t k = 0; k < std::size_t{A.rows()} * A.rows(); ++k) {
        push(result.re, X->m_rv[k]);
        // without an imaginary array every imaginary part is a zero of either sign
        push(result.im, X->m_iv != nullptr && X->m_iv[k] != 0.0 ? X->m_iv[k] : 0.0);
    }
    return result;
}

class InverseBits : public support::AtLevel {
protected:
    static void expect_plain(Inverse fast, Inverse plain, bool with_imaginary, std::uint32_t largest)
    {
        Random random(20240611);
        for (const Kind& kind : kinds) {
            const auto expect_same = [&](std::uint32_t n, std::uint32_t gap, bool strict) {
                const Matrix A = draw(kind, n, n + gap, with_imaginary, random);
                const bool same = outcome(fast, A, strict) == outcome(plain, A, strict);
                EXPECT_TRUE(same) << kind.name << ", n = " << n << ", strict " << strict;
            };
            for (std::uint32_t n = 1; n <= 20; ++n)
                for (const std::uint32_t gap : {0U, 3U})
                    for (const bool strict : {false, true})
                        expect_same(n, gap, strict);
            for (const std::uint32_t n :
                 {31U, 32U, 33U, 40U, 63U, 64U, 65U, 66U, 71U, 72U, 73U, 127U, 128U, 129U, 150U})
                if (n <= largest)
                    expect_same(n, n % 2, n % 3 == 0);
        }
    }
};

/// More rows than a product takes at once, in one block of rows or two.
TEST_P(InverseBits, OfManyRowsIsThePlainLoops)
{
    Random random(20241122);
    for (const std::uint32_t n : {225U, 321U}) {
        const Matrix A = draw(kinds[0], n, n + 1, n == 225, random);
        const bool same = A.is_complex()
                              ? outcome(native::complex_inverse, A, true) == outcome(plain::complex_inverse, A, true)
                              : outcome(native::real_inverse, A, true) == outcome(plain::real_inverse, A, true);
        EXPECT_TRUE(same) << "n = " << n;
    }
}

TEST_P(InverseBits, RealIsThePlainLoops)
{
    expect_plain(native::real_inverse, plain::real_inverse, false, 150);
}

TEST_P(InverseBits, ComplexIsThePlainLoops)
{
    expect_plain(native::complex_inverse, plain::complex_inverse, true, 129);
}

INSTANTIATE_TEST_SUITE_P(Levels, InverseBits, support::every_level(), support::level_name);

aMatrix* inverse_of(EfiCallContext* ctx, Matrix& A, bool strict)
{
    aMatrix record = A.record();
    return native::inv2(ctx, &record, strict);
}

TEST(Inverse, RecordsThatAreRefused)
{
    EfiCallContext ctx;
    aMatrix* X = nullptr;
    Matrix wide(2, 3);
    Matrix empty(0, 0);
    aMatrix wide_record = wide.record();
    aMatrix empty_record = empty.record();
    double element = 1.0;
    empty_record.m_rv = &element;
    aMatrix absent = Matrix({{1, 2}, {3, 4}}).record();
    absent.m_rv = nullptr;
    aMatrix* const none = nullptr;
    const auto raised = [&](Inverse inverse, aMatrix record) {
        return support::raised_by([&] { inverse(&ctx, &record, &X, true); });
    };
    for (const Inverse inverse : {Inverse{native::real_inverse}, Inverse{native::complex_inverse}}) {
        EXPECT_EQ(raised(inverse, absent), (Raised{"unknown error", -1}));
        EXPECT_EQ(raised(inverse, empty_record), (Raised{"invalid dimension", -1}));
        EXPECT_EQ(raised(inverse, wide_record), (Raised{"must be square", -1}));
    }
    EXPECT_EQ(support::raised_by([&] { native::inv2(&ctx, &wide_record, true); }), (Raised{"must be square", -1}));
    EXPECT_EQ(X, none);
}

TEST(Inverse, OfAComplexMatrixIsComplexOnlyWhereItHasToBe)
{
    EfiCallContext ctx;
    Matrix real = Matrix::complex({{2, 0}, {0, 4}}, {{0, 0}, {0, 0}});
    EXPECT_EQ(inverse_of(&ctx, real, true)->m_iv, nullptr);
    Matrix complex = Matrix::complex({{2, 0}, {0, 0}}, {{0, 0}, {0, 4}});
    const aMatrix* const X = inverse_of(&ctx, complex, true);
    EXPECT_EQ(support::real(X), (std::vector<double>{0.5, 0, 0, 0}));
    EXPECT_EQ(support::imaginary(X), (std::vector<double>{0, 0, 0, -0.25}));
}

TEST(Inverse, StrictRefusesWhatTheOtherInverts)
{
    EfiCallContext ctx;
    const double next = std::nextafter(9.0, 10.0);
    Matrix A = {{1, 2, 3}, {4, 5, 6}, {7, 8, next}};
    EXPECT_NE(inverse_of(&ctx, A, false), nullptr);
    EXPECT_EQ(support::raised_by([&] { inverse_of(&ctx, A, true); }), (Raised{"singular matrix", -1}));
}

TEST(Inverse, ArenaThatFailsAtAnyRequestAndTheArgumentIsNotWritten)
{
    Random random(7);
    for (const bool complex : {false, true})
        for (const std::uint32_t n : {3U, 130U}) {
            Matrix A = draw(kinds[0], n, n + 1, complex, random);
            const std::vector<std::uint64_t> before = A.bits();
            const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
                EfiCallContext ctx;
                inverse_of(&ctx, A, true);
            });
            EXPECT_GT(requests, 4U);
            EXPECT_EQ(A.bits(), before);
        }
}

TEST(Inverse, ResidualsOfGradedAndHilbertMatrices)
{
    constexpr double eps = 2.220446049250313e-16;
    for (const std::uint32_t n : {2U, 5U, 8U, 100U}) {
        Matrix A(n, n);
        Random random(n);
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < n; ++i)
                A.re(i, j) = n < 10 ? 1.0 / (i + j + 1) : uniform(random) + (i == j ? 10.0 : 0.0);
        EfiCallContext ctx;
        const aMatrix* const X = inverse_of(&ctx, A, false);
        double norm_A = 0;
        double norm_X = 0;
        double residual = 0;
        for (std::uint32_t j = 0; j < n; ++j) {
            double column_A = 0;
            double column_X = 0;
            double column_R = 0;
            for (std::uint32_t i = 0; i < n; ++i) {
                double r = i == j ? -1.0 : 0.0;
                for (std::uint32_t k = 0; k < n; ++k)
                    r += A.re(i, k) * Efi::at(X, k, j);
                column_A += std::fabs(A.re(i, j));
                column_X += std::fabs(Efi::at(X, i, j));
                column_R += std::fabs(r);
            }
            norm_A = std::fmax(norm_A, column_A);
            norm_X = std::fmax(norm_X, column_X);
            residual = std::fmax(residual, column_R);
        }
        EXPECT_LT(residual / (n * eps * norm_A * norm_X), 30) << n;
    }
}

} // namespace
