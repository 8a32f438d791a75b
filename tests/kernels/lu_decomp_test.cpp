#include "bailuxsko/kernels/lu.hpp"

#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::imaginary;
using support::Matrix;
using support::Raised;
using support::raised_by;
using support::real;

constexpr double eps = std::numeric_limits<double>::epsilon();
constexpr double inf = std::numeric_limits<double>::infinity();

using Factorisation = void (*)(EfiCallContext*, aMatrix*, double*, double*, bool);

struct Decomposition {
    Raised raised;
    std::vector<double> LU, LU_imaginary, pivots;
    double sign = 0.0;
};

Decomposition decompose(Factorisation factorise, Matrix A, bool strict = false)
{
    EfiCallContext ctx;
    Decomposition D;
    D.pivots.assign(A.rows(), -7.0);
    aMatrix record = A.record();
    D.raised = raised_by([&] { factorise(&ctx, &record, D.pivots.data(), &D.sign, strict); });
    D.LU = real(&record);
    D.LU_imaginary = imaginary(&record);
    return D;
}

TEST(LuDecomp, ByHand)
{
    struct Case {
        const char* name;
        Factorisation factorise;
        Matrix A, LU;
        std::vector<double> pivots;
        double sign;
    };
    const Case cases[] = {
        {.name = "no exchange",
         .factorise = native::lu_decomp,
         .A = {{2, 4}, {1, 4}},
         .LU = {{2, 4}, {0.5, 2}},
         .pivots = {0, 1},
         .sign = 1},
        {.name = "one exchange",
         .factorise = native::lu_decomp,
         .A = {{1, 0}, {1, 0.5}},
         .LU = {{1, 0.5}, {1, -0.5}},
         .pivots = {1, 1},
         .sign = -1},
        {.name = "two exchanges",
         .factorise = native::lu_decomp,
         .A = {{0, 2, 0}, {0, 0, 4}, {8, 0, 0}},
         .LU = {{8, 0, 0}, {0, 2, 0}, {0, 0, 4}},
         .pivots = {2, 2, 2},
         .sign = 1},
        {.name = "complex counts from 1",
         .factorise = native::clu_decomp,
         .A = Matrix::complex({{2, 4}, {1, 4}}, {{0, 0}, {0, 0}}),
         .LU = Matrix::complex({{2, 4}, {0.5, 2}}, {{0, 0}, {0, 0}}),
         .pivots = {1, 2},
         .sign = 1},
        {.name = "complex, one exchange",
         .factorise = native::clu_decomp,
         .A = Matrix::complex({{0, 0}, {1, 2}}, {{0, 1}, {1, 0}}),
         .LU = Matrix::complex({{1, 2}, {0, 0}}, {{1, 0}, {0, 1}}),
         .pivots = {2, 2},
         .sign = -1},
    };
    for (const Case& c : cases) {
        const Decomposition D = decompose(c.factorise, c.A);
        EXPECT_EQ(D.raised, Raised{}) << c.name;
        EXPECT_EQ(D.LU, real(c.LU)) << c.name;
        EXPECT_EQ(D.LU_imaginary, imaginary(c.LU)) << c.name;
        EXPECT_EQ(D.pivots, c.pivots) << c.name;
        EXPECT_EQ(D.sign, c.sign) << c.name;
    }
}

TEST(LuDecomp, RefusesAWrongRecord)
{
    double element = 1.0;
    const auto record = [&](std::uint32_t rows, std::uint32_t cols, double* re) {
        return aMatrix{
            .m_anr = rows, .m_tag = aMatrix::tag, .m_rows = rows, .m_cols = cols, .m_rv = re, .m_iv = nullptr};
    };
    struct Case {
        const char* name;
        Factorisation factorise;
        aMatrix A;
        Raised raised;
    };
    const Case cases[] = {
        {.name = "no array",
         .factorise = native::lu_decomp,
         .A = record(1, 1, nullptr),
         .raised = {.message = "null pointer", .index = -1}},
        {.name = "no array goes before no rows",
         .factorise = native::lu_decomp,
         .A = record(0, 1, nullptr),
         .raised = {.message = "null pointer", .index = -1}},
        {.name = "no rows",
         .factorise = native::lu_decomp,
         .A = record(0, 1, &element),
         .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "no columns",
         .factorise = native::lu_decomp,
         .A = record(1, 0, &element),
         .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "tall",
         .factorise = native::lu_decomp,
         .A = record(2, 1, &element),
         .raised = {.message = "must be square", .index = -1}},
        {.name = "wide",
         .factorise = native::lu_decomp,
         .A = record(1, 2, &element),
         .raised = {.message = "must be square", .index = -1}},
        {.name = "complex, no rows",
         .factorise = native::clu_decomp,
         .A = record(0, 1, nullptr),
         .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "complex, no columns",
         .factorise = native::clu_decomp,
         .A = record(1, 0, &element),
         .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "complex, tall",
         .factorise = native::clu_decomp,
         .A = record(2, 1, &element),
         .raised = {.message = "must be square", .index = -1}},
        {.name = "complex, no array",
         .factorise = native::clu_decomp,
         .A = record(1, 1, nullptr),
         .raised = {.message = "unknown error", .index = -1}},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        aMatrix A = c.A;
        double sign = 0.0;
        EXPECT_EQ(raised_by([&] { c.factorise(&ctx, &A, nullptr, &sign, false); }), c.raised) << c.name;
        EXPECT_EQ(sign, 1.0) << c.name << ": set before anything is looked at";
    }
}

TEST(LuDecomp, StrictTest)
{
    struct Case {
        const char* name;
        Factorisation factorise;
        Matrix A;
        bool refused;
    };
    const double below_eps = std::nextafter(eps, 0.0);
    const Case cases[] = {
        {.name = "at the threshold", .factorise = native::lu_decomp, .A = {{1, 1}, {0, eps}}, .refused = false},
        {.name = "below the threshold", .factorise = native::lu_decomp, .A = {{1, 1}, {0, below_eps}}, .refused = true},
        {.name = "a negative element", .factorise = native::lu_decomp, .A = {{1, 1}, {0, -below_eps}}, .refused = true},
        // multiplier 2, growth 1.5 * 2: the second element is 2 eps, between 1.5 eps and 3 eps
        {.name = "multipliers raise the growth",
         .factorise = native::lu_decomp,
         .A = {{1, 1.5}, {2, 3 + 2 * eps}},
         .refused = true},
        {.name = "the first element is never tested",
         .factorise = native::lu_decomp,
         .A = {{1e-20, 1}, {0, 1}},
         .refused = false},
        {.name = "one tiny element alone", .factorise = native::lu_decomp, .A = {{1e-200}}, .refused = false},
        {.name = "an element in the middle",
         .factorise = native::lu_decomp,
         .A = {{1, 0, 0}, {0, 1e-17, 0}, {0, 0, 1}},
         .refused = true},
        {.name = "growth that comes later",
         .factorise = native::lu_decomp,
         .A = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1e-15}},
         .refused = false},
        {.name = "growth of a later step",
         .factorise = native::lu_decomp,
         .A = {{1, 0, 0}, {0, 1, 1e17}, {0, 0, 1}},
         .refused = true},
        {.name = "complex knows no threshold",
         .factorise = native::clu_decomp,
         .A = Matrix::complex({{1, 1}, {0, 1e-100}}, {{0, 0}, {0, 0}}),
         .refused = false},
        {.name = "complex, squares that vanish",
         .factorise = native::clu_decomp,
         .A = Matrix::complex({{1, 1}, {0, 1e-200}}, {{0, 0}, {0, 1e-200}}),
         .refused = true},
        {.name = "complex, the first element too",
         .factorise = native::clu_decomp,
         .A = Matrix::complex({{1e-200}}, {{0}}),
         .refused = true},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(decompose(c.factorise, c.A, true).raised,
                  (c.refused ? Raised{.message = "singular matrix", .index = -1} : Raised{}))
            << c.name;
        EXPECT_EQ(decompose(c.factorise, c.A, false).raised, Raised{}) << c.name << ", not strict";
    }
}

TEST(LuDecomp, NoPivotRecordIsFine)
{
    for (const Factorisation factorise : {Factorisation{native::lu_decomp}, Factorisation{native::clu_decomp}}) {
        EfiCallContext ctx;
        Matrix A = Matrix::complex({{0, 1}, {2, 3}}, {{0, 0}, {0, 0}});
        aMatrix record = A.record();
        double sign = 0.0;
        factorise(&ctx, &record, nullptr, &sign, true);
        EXPECT_EQ(real(&record), (std::vector<double>{2, 0, 3, 1}));
        EXPECT_EQ(sign, -1.0);
    }
}

TEST(LuDecomp, TheRealRoutineLeavesTheImaginaryArrayAlone)
{
    const Decomposition D = decompose(native::lu_decomp, Matrix::complex({{2, 4}, {1, 4}}, {{5, 6}, {7, 8}}));
    EXPECT_EQ(D.LU_imaginary, (std::vector<double>{5, 7, 6, 8}));
}

TEST(LuDecomp, ARealMatrixStaysRealInTheComplexRoutine)
{
    const Decomposition D = decompose(native::clu_decomp, {{-2, 4}, {1, 4}});
    EXPECT_EQ(D.LU, (std::vector<double>{-2, -0.5, 4, 6}));
    EXPECT_TRUE(D.LU_imaginary.empty());
}

TEST(LuDecomp, TheImaginaryArrayComesWithTheFirstPartThatIsNotZero)
{
    // The second row is scaled by 1 / inf: the first is the pivot row, and inf / 1 by Smith's method has a NaN beside
    // it.
    const Decomposition D = decompose(native::clu_decomp, {{1, 0}, {inf, 1}});
    ASSERT_EQ(D.LU_imaginary.size(), 4U);
    EXPECT_EQ(D.LU[1], inf);
    EXPECT_TRUE(std::isnan(D.LU_imaginary[1]));
    EXPECT_EQ(D.LU_imaginary[0], 0.0);
}

Matrix identity(std::uint32_t n)
{
    Matrix I(n, n);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i)
            I.re(i, j) = i == j ? 1.0 : 0.0;
    return I;
}

TEST(LuDecomp, RunsOutOfMemoryCleanly)
{
    for (const Factorisation factorise : {Factorisation{native::lu_decomp}, Factorisation{native::clu_decomp}})
        support::fails_at_every_request<Efi::NativeError>([=] {
            Matrix A = {{1, 0}, {inf, 1}}; // the complex routine asks for an imaginary array
            aMatrix record = A.record();
            EfiCallContext ctx;
            double sign;
            factorise(&ctx, &record, nullptr, &sign, false);
        });
    support::fails_at_every_request<Efi::NativeError>([] {
        Matrix A = identity(100); // large enough to be eliminated block by block
        aMatrix record = A.record();
        EfiCallContext ctx;
        double sign;
        native::lu_decomp(&ctx, &record, nullptr, &sign, false);
    });
}

} // namespace
