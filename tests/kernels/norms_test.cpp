// Norms and conditions on records: the bits and faults of the plain sums at every instruction level, absent arrays,
// leading dimensions, memory.
#include "bailuxsko/kernels/conditions.hpp"
#include "bailuxsko/kernels/norms.hpp"

#include "tests/kernels/plain/norms.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <bit>
#include <cfenv>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;

using Norm = double (*)(EfiCallContext*, aMatrix*);

/// What the guard lets a worksheet see: a fault, or the bits.
struct Outcome {
    bool fault = false;
    std::uint64_t bits = 0;

    bool operator==(const Outcome&) const = default;
};

template <class Compute>
Outcome outcome(Compute compute)
{
    std::feclearexcept(FE_ALL_EXCEPT);
    const volatile double norm = compute();
    const bool fault = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID) != 0;
    const double seen = std::isnan(norm) ? std::numeric_limits<double>::quiet_NaN() : norm;
    return {.fault = fault, .bits = fault ? 0 : std::bit_cast<std::uint64_t>(seen)};
}

class NormBits : public support::AtLevel {};

TEST_P(NormBits, AreThoseOfThePlainSums)
{
    struct Case {
        const char* name;
        Norm norm;
        double (*plain)(const aMatrix*);
    };
    const Case cases[] = {
        {.name = "norm1", .norm = native::norm1, .plain = plain::norm1},
        {.name = "normi", .norm = native::normi, .plain = plain::normi},
        {.name = "norme", .norm = native::norme, .plain = plain::norme},
    };
    support::Random random(20240701);
    const auto expect_same = [&](const Case& c, const support::Kind& kind, std::uint32_t n, bool complex) {
        Matrix A = support::draw(kind, n, n + n % 3, complex, random);
        aMatrix record = A.record();
        EfiCallContext ctx;
        const Outcome expected = outcome([&] { return c.plain(&record); });
        EXPECT_EQ(outcome([&] { return c.norm(&ctx, &record); }), expected)
            << c.name << ", " << kind.name << ", n = " << n << ", complex " << complex;
    };
    for (const Case& c : cases)
        for (const support::Kind& kind : support::kinds)
            for (const bool complex : {false, true})
                for (const std::uint32_t n :
                     {1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U, 11U, 12U, 15U, 16U, 17U, 31U, 63U, 64U, 65U, 101U})
                    expect_same(c, kind, n, complex);
}

INSTANTIATE_TEST_SUITE_P(Levels, NormBits, support::every_level(), support::level_name);

TEST(Norms, ByHand)
{
    struct Case {
        const char* name;
        Matrix A;
        double norm1, normi, norme;
    };
    const Case cases[] = {
        {.name = "empty", .A = Matrix(0, 0), .norm1 = 0, .normi = 0, .norme = 0},
        {.name = "one element", .A = {{-3}}, .norm1 = 3, .normi = 3, .norme = 3},
        {.name = "columns and rows", .A = {{1, -2}, {3, 4}}, .norm1 = 6, .normi = 7, .norme = std::sqrt(30.0)},
        {.name = "3 + 4i counts 5, squared 25",
         .A = Matrix::complex({{3, 0}, {0, 2}}, {{4, 0}, {0, 0}}),
         .norm1 = 5,
         .normi = 5,
         .norme = std::sqrt(29.0)},
        {.name = "no square overflows in a modulus",
         .A = Matrix::complex({{3e200}}, {{4e200}}),
         .norm1 = 5e200,
         .normi = 5e200,
         .norme = std::numeric_limits<double>::infinity()},
        {.name = "nor underflows",
         .A = Matrix::complex({{3e-200}}, {{-4e-200}}),
         .norm1 = 5e-200,
         .normi = 5e-200,
         .norme = 0},
        {.name = "imaginary only", .A = Matrix::complex({{0}}, {{-7}}), .norm1 = 7, .normi = 7, .norme = 7},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        EXPECT_DOUBLE_EQ(native::norm1(&ctx, &record), c.norm1) << c.name;
        EXPECT_DOUBLE_EQ(native::normi(&ctx, &record), c.normi) << c.name;
        EXPECT_DOUBLE_EQ(native::norme(&ctx, &record), c.norme) << c.name;
    }
}

TEST(Norms, OfRecordsWithoutAnImaginaryOrARealArray)
{
    Matrix A = Matrix::complex({{1, -2}, {3, 4}}, {{5, 12}, {0, 0}});
    const aMatrix whole = A.record();
    EfiCallContext ctx;

    aMatrix real = whole;
    real.m_iv = nullptr;
    EXPECT_EQ(native::complex_norm1(&ctx, &real), 6);
    EXPECT_EQ(native::complex_normi(&ctx, &real), 7);
    EXPECT_EQ(native::complex_norme(&ctx, &real), std::sqrt(30.0));

    aMatrix imaginary = whole;
    imaginary.m_rv = nullptr;
    EXPECT_EQ(native::complex_norme(&ctx, &imaginary), 13);
    EXPECT_EQ(native::norme(&ctx, &imaginary), 13);

    aMatrix neither = real;
    neither.m_rv = nullptr;
    const Raised unknown{"unknown error", -1};
    for (const Norm norm :
         {native::norm1, native::normi, native::norm2, native::cond1, native::condi, native::conde, native::cond2}) {
        EXPECT_EQ(support::raised_by([&] { norm(&ctx, &imaginary); }), unknown);
        EXPECT_EQ(support::raised_by([&] { norm(&ctx, &neither); }), unknown);
    }
    EXPECT_EQ(support::raised_by([&] { native::norme(&ctx, &neither); }), unknown);
}

TEST(Norms, ARealRoutineLooksAtTheRealArrayOnly)
{
    Matrix A = Matrix::complex({{1, -2}, {3, 4}}, {{50, 12}, {70, 10}});
    aMatrix record = A.record();
    EfiCallContext ctx;
    EXPECT_EQ(native::real_norm1(&ctx, &record), 6);
    EXPECT_EQ(native::real_normi(&ctx, &record), 7);
    EXPECT_EQ(native::real_norme(&ctx, &record), std::sqrt(30.0));
}

TEST(Conditions, ByHand)
{
    struct Case {
        const char* name;
        Matrix A;
        double cond1, condi, conde;
    };
    const Case cases[] = {
        {.name = "identity", .A = {{1, 0}, {0, 1}}, .cond1 = 1, .condi = 1, .conde = std::sqrt(2.0) * std::sqrt(2.0)},
        {.name = "inverse 0.5, 0, -0.25; 0, 0, 0.25; 0, 1, 0", // numbers that no rounding touches
         .A = {{2, 2, 0}, {0, 0, 1}, {0, 4, 0}},
         .cond1 = 6,
         .condi = 4,
         .conde = std::sqrt(25.0) * std::sqrt(1.375)},
        {.name = "complex, the inverse -0.5i, 0; 0, 0.25",
         .A = Matrix::complex({{0, 0}, {0, 4}}, {{2, 0}, {0, 0}}),
         .cond1 = 2,
         .condi = 2,
         .conde = std::sqrt(20.0) * std::sqrt(0.3125)},
        {.name = "complex without an imaginary part",
         .A = Matrix::complex({{2, 0}, {0, 4}}, {{0, 0}, {0, 0}}),
         .cond1 = 2,
         .condi = 2,
         .conde = std::sqrt(20.0) * std::sqrt(0.3125)},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        EXPECT_EQ(native::cond1(&ctx, &record), c.cond1) << c.name;
        EXPECT_EQ(native::condi(&ctx, &record), c.condi) << c.name;
        EXPECT_EQ(native::conde(&ctx, &record), c.conde) << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name;
    }
}

TEST(Conditions, RefuseWhatTheStrictInverseRefuses)
{
    const Raised singular{"singular matrix", -1};
    const double rounding = 0.1 + 0.2 - 0.3;
    for (const Matrix& source :
         {Matrix{{1, 2}, {2, 4}}, Matrix{{1, 2}, {0, rounding}}, Matrix::complex({{1, 2}, {2, 4}}, {{0, 0}, {0, 0}})})
        for (const Norm condition : {native::cond1, native::condi, native::conde}) {
            EfiCallContext ctx;
            Matrix A = source;
            aMatrix record = A.record();
            EXPECT_EQ(support::raised_by([&] { condition(&ctx, &record); }), singular);
        }
    EfiCallContext ctx;
    Matrix empty(0, 0);
    double element = 1.0;
    aMatrix record = empty.record();
    record.m_rv = &element;
    EXPECT_EQ(support::raised_by([&] { native::cond1(&ctx, &record); }), (Raised{"invalid dimension", -1}));
    EXPECT_EQ(support::raised_by([&] { native::complex_norm2(&ctx, &record); }), (Raised{"invalid dimension", -1}));
}

TEST(ComplexNorm2, IsTheLargestSingularValue)
{
    struct Case {
        const char* name;
        Matrix A;
        double norm;
    };
    const Case cases[] = {
        {.name = "one element", .A = Matrix::complex({{3}}, {{-4}}), .norm = 5},
        {.name = "diagonal", .A = Matrix::complex({{3, 0}, {0, 0}}, {{0, 0}, {0, -5}}), .norm = 5},
        {.name = "zero", .A = Matrix::complex({{0, 0}, {0, 0}}, {{0, 0}, {0, 0}}), .norm = 0},
        {.name = "without an imaginary array", .A = {{3, 0}, {0, -5}}, .norm = 5},
        {.name = "singular: 1, i; i, -1", .A = Matrix::complex({{1, 0}, {0, -1}}, {{0, 1}, {1, 0}}), .norm = 2},
        {.name = "7 times a unitary matrix",
         .A = Matrix::complex({{4.2, 0}, {0, 4.2}}, {{0, 5.6}, {5.6, 0}}),
         .norm = 7},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        EXPECT_NEAR(native::complex_norm2(&ctx, &record), c.norm, 1e-15 * c.norm) << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name;
    }
}

TEST(Norms, RunOutOfMemoryCleanlyAndDoNotWriteTheirArgument)
{
    support::Random random(11);
    for (const bool complex : {false, true})
        for (const Norm norm : {native::normi, native::norm2, native::complex_norm2, native::cond1, native::condi,
                                native::conde, native::cond2}) {
            Matrix A = support::draw(support::kinds[0], 40, 43, complex, random);
            const auto before = A.bits();
            aMatrix record = A.record();
            const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
                EfiCallContext ctx;
                norm(&ctx, &record);
            });
            EXPECT_GE(requests, 1U);
            EXPECT_EQ(A.bits(), before);
        }
}

} // namespace
