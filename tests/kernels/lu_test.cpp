#include "bailuxsko/kernels/lu.hpp"

#include "efiutl/columns.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <algorithm>
#include <array>
#include <complex>
#include <limits>
#include <random>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

namespace {

using Efi::at;
using support::Matrix;
using support::Raised;
using support::raised_by;

constexpr double eps = std::numeric_limits<double>::epsilon();
constexpr double inf = std::numeric_limits<double>::infinity();

std::vector<double> real(const aMatrix* A)
{
    return {A->m_rv, A->m_rv + std::size_t{A->m_rows} * A->m_cols};
}

/// The elements of a matrix column by column, as a packed record holds them.
std::vector<double> real(Matrix A)
{
    const aMatrix record = A.record();
    return real(&record);
}

std::vector<double> imaginary(const aMatrix* A)
{
    return A->m_iv == nullptr ? std::vector<double>{}
                              : std::vector<double>{A->m_iv, A->m_iv + std::size_t{A->m_rows} * A->m_cols};
}

std::vector<double> imaginary(Matrix A)
{
    const aMatrix record = A.record();
    return imaginary(&record);
}

TEST(Lu, ByHand)
{
    struct Case {
        const char* name;
        Matrix A, PLU;
    };
    const Case cases[] = {
        {.name = "one element", .A = {{5}}, .PLU = {{1, 1, 5}}},
        {.name = "the last of equally scaled rows",
         .A = {{1, 0}, {1, 0.5}},
         .PLU = {{0, 1, 1, 0, 1, 0.5}, {1, 0, 1, 1, 0, -0.5}}},
        {.name = "rows are compared by their scale",
         .A = {{10, 1000}, {1, 1}},
         .PLU = {{0, 1, 1, 0, 1, 1}, {1, 0, 10, 1, 0, 990}}},
        {.name = "three exchanges in a ring",
         .A = {{0, 2, 0}, {0, 0, 4}, {8, 0, 0}},
         .PLU = {{0, 0, 1, 1, 0, 0, 8, 0, 0}, {1, 0, 0, 0, 1, 0, 0, 2, 0}, {0, 1, 0, 0, 0, 1, 0, 0, 4}}},
        {.name = "complex: the first of equally scaled rows",
         .A = Matrix::complex({{1, 0}, {1, 0.5}}, {{0, 0}, {0, 0}}),
         .PLU = Matrix::complex({{1, 0, 1, 0, 1, 0}, {0, 1, 1, 1, 0, 0.5}}, {{0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0}})},
        {.name = "complex: L and U",
         .A = Matrix::complex({{1, 0}, {2, 1}}, {{0, 1}, {0, 0}}),
         .PLU = Matrix::complex({{1, 0, 1, 0, 1, 0}, {0, 1, 2, 1, 0, 1}}, {{0, 0, 0, 0, 0, 1}, {0, 0, 0, 0, 0, -2}})},
        {.name = "complex: a quotient by Smith's method",
         .A = Matrix::complex({{1, 0}, {5, 100}}, {{2, 0}, {0, 0}}),
         .PLU = Matrix::complex({{1, 0, 1, 0, 1, 0}, {0, 1, 1, 1, 0, 100}}, {{0, 0, 0, 0, 2, 0}, {0, 0, -2, 0, 0, 0}})},
        {.name = "complex: exchanged rows",
         .A = Matrix::complex({{0, 0}, {1, 2}}, {{0, 1}, {1, 0}}),
         .PLU = Matrix::complex({{0, 1, 1, 0, 1, 2}, {1, 0, 0, 1, 0, 0}}, {{0, 0, 0, 0, 1, 0}, {0, 0, 0, 0, 0, 1}})},
    };
    for (const Case& c : cases) {
        EfiCallContext ctx;
        Matrix A = c.A;
        aMatrix record = A.record();
        const aMatrix* const packed = native::lu(&ctx, &record);
        EXPECT_EQ(packed->m_rows, A.rows()) << c.name;
        EXPECT_EQ(packed->m_cols, 3 * A.rows()) << c.name;
        EXPECT_EQ(real(packed), real(c.PLU)) << c.name;
        EXPECT_EQ(imaginary(packed), imaginary(c.PLU)) << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name << ": the argument is not written";
    }
}

TEST(Lu, RefusesWhatCannotBeFactorised)
{
    struct Case {
        const char* name;
        Matrix A;
        Raised raised;
    };
    const Raised singular{.message = "singular matrix", .index = -1};
    const Case cases[] = {
        {.name = "wide", .A = {{1, 2, 3}, {4, 5, 6}}, .raised = {.message = "must be square", .index = 1}},
        {.name = "tall", .A = {{1, 2}, {3, 4}, {5, 6}}, .raised = {.message = "must be square", .index = -1}},
        {.name = "empty", .A = {}, .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "rows without columns", .A = Matrix(3, 0), .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "columns without rows", .A = Matrix(0, 3), .raised = {.message = "must be square", .index = 1}},
        {.name = "zero", .A = {{0}}, .raised = singular},
        {.name = "negative zero", .A = {{-0.0}}, .raised = singular},
        {.name = "a row of zeros", .A = {{1, 2, 3}, {0, 0, 0}, {4, 5, 7}}, .raised = singular},
        {.name = "singular only after a step", .A = {{1, 2}, {2, 4}}, .raised = singular},
        {.name = "a column of zeros", .A = {{0, 1}, {0, 2}}, .raised = singular},
        {.name = "complex, zero", .A = Matrix::complex({{0}}, {{0}}), .raised = singular},
        {.name = "complex, a row of zeros",
         .A = Matrix::complex({{1, 2}, {0, 0}}, {{3, 4}, {0, 0}}),
         .raised = singular},
        {.name = "complex, singular after a step",
         .A = Matrix::complex({{1, 0}, {0, -1}}, {{0, 1}, {1, 0}}),
         .raised = singular},
    };
    for (const Case& c : cases) {
        Matrix A = c.A;
        aMatrix record = A.record();
        EXPECT_EQ(raised_by([&] {
                      EfiCallContext ctx;
                      native::lu(&ctx, &record);
                  }),
                  c.raised)
            << c.name;
        EXPECT_EQ(A.bits(), c.A.bits()) << c.name;
    }
}

TEST(Lu, ReadsABlockThroughItsLeadingDimension)
{
    Matrix A(2, 2, 5);
    A.re(0, 0) = 2;
    A.re(1, 0) = 1;
    A.re(0, 1) = 4;
    A.re(1, 1) = 4;
    EfiCallContext ctx;
    aMatrix record = A.record();
    EXPECT_EQ(real(native::lu(&ctx, &record)), (std::vector<double>{1, 0, 0, 1, 1, 0.5, 0, 1, 2, 0, 4, 2}));
}

TEST(Lu, AnAbsentRealArrayIsNamed)
{
    double im = 1.0;
    aMatrix A = {.m_anr = 1, .m_tag = aMatrix::tag, .m_rows = 1, .m_cols = 1, .m_rv = nullptr, .m_iv = nullptr};
    EfiCallContext ctx;
    EXPECT_EQ(raised_by([&] { native::lu(&ctx, &A); }), (Raised{.message = "null pointer", .index = -1}));
    A.m_iv = &im;
    EXPECT_EQ(raised_by([&] { native::lu(&ctx, &A); }), (Raised{.message = "unknown error", .index = -1}));
}

TEST(Lu, RunsOutOfMemoryCleanly)
{
    for (const Matrix& source : {Matrix{{1, 2}, {3, 4}}, Matrix::complex({{1, 2}, {3, 4}}, {{5, 6}, {7, 8}})}) {
        Matrix A = source;
        aMatrix record = A.record();
        const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
            EfiCallContext ctx;
            native::lu(&ctx, &record);
        });
        EXPECT_GT(requests, 5U);
        EXPECT_EQ(A.bits(), source.bits());
    }
}

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

/// norm1(P * A - L * U) / (n * eps * norm1(A)), as LAPACK's own tests judge a factorisation.
double residual_lu(const aMatrix* A, const aMatrix* PLU)
{
    using Complex = std::complex<double>;
    const std::size_t n = A->m_rows;
    const auto element = [](const aMatrix* M, std::size_t i, std::size_t j) {
        return Complex(at(M, i, j), Efi::at_i(M, i, j));
    };
    double difference = 0.0;
    double norm = 0.0;
    for (std::size_t j = 0; j < n; ++j) {
        double column_difference = 0.0;
        double column_norm = 0.0;
        for (std::size_t i = 0; i < n; ++i) {
            Complex sum = 0.0;
            for (std::size_t k = 0; k < n; ++k)
                sum += element(PLU, i, k) * element(A, k, j) - element(PLU, i, n + k) * element(PLU, k, 2 * n + j);
            column_difference += std::abs(sum);
            column_norm += std::abs(element(A, i, j));
        }
        difference = std::max(difference, column_difference);
        norm = std::max(norm, column_norm);
    }
    return difference / (static_cast<double>(n) * eps * norm);
}

void expect_one_in_each_row_and_column(const aMatrix* PLU)
{
    const std::size_t n = PLU->m_rows;
    std::vector<int> in_row(n);
    for (std::size_t j = 0; j < n; ++j) {
        int in_column = 0;
        for (std::size_t i = 0; i < n; ++i) {
            RC_ASSERT(at(PLU, i, j) == 0.0 || at(PLU, i, j) == 1.0);
            in_column += at(PLU, i, j) == 1.0;
            in_row[i] += at(PLU, i, j) == 1.0;
        }
        RC_ASSERT(in_column == 1);
    }
    RC_ASSERT(std::all_of(in_row.begin(), in_row.end(), [](int ones) { return ones == 1; }));
}

void expect_triangles(const aMatrix* PLU)
{
    const std::size_t n = PLU->m_rows;
    for (std::size_t j = 0; j < n; ++j) {
        RC_ASSERT(at(PLU, j, n + j) == 1.0);
        RC_ASSERT(Efi::at_i(PLU, j, n + j) == 0.0);
        for (std::size_t i = 0; i < n; ++i) {
            const std::size_t zero_column = i < j ? n + j : 2 * n + j;
            if (i == j)
                continue;
            RC_ASSERT(at(PLU, i, zero_column) == 0.0);
            RC_ASSERT(Efi::at_i(PLU, i, zero_column) == 0.0);
        }
    }
}

/// Ways to draw an element.
namespace gen {

rc::Gen<double> uniform()
{
    return rc::gen::map(rc::gen::inRange(-1'000'000, 1'000'001), [](int x) { return x / 1e6; });
}

rc::Gen<double> small_integer()
{
    return rc::gen::map(rc::gen::inRange(-3, 4), [](int x) { return static_cast<double>(x); });
}

rc::Gen<double> graded()
{
    return rc::gen::apply([](double x, int exponent) { return std::ldexp(x, exponent); }, uniform(),
                          rc::gen::inRange(-40, 41));
}

} // namespace gen

Matrix drawn(const rc::Gen<double>& element, bool with_imaginary)
{
    const std::uint32_t n = *rc::gen::inRange<std::uint32_t>(1, 40);
    Matrix A(n, n, n + *rc::gen::inRange<std::uint32_t>(0, 4));
    if (with_imaginary)
        A.make_complex();
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i) {
            A.re(i, j) = *element;
            if (with_imaginary)
                A.im(i, j) = *element;
        }
    return A;
}

TEST(LuProperty, PTimesAIsLTimesU)
{
    for (const auto& element : {gen::uniform(), gen::small_integer(), gen::graded()})
        for (const bool with_imaginary : {false, true})
            EXPECT_TRUE(rc::check("P * A = L * U", [&] {
                Matrix A = drawn(element, with_imaginary);
                const auto before = A.bits();
                aMatrix record = A.record();
                EfiCallContext ctx;
                aMatrix* PLU = nullptr;
                const Raised raised = raised_by([&] { PLU = native::lu(&ctx, &record); });
                RC_ASSERT(A.bits() == before);
                if (PLU == nullptr) {
                    RC_ASSERT(raised == (Raised{.message = "singular matrix", .index = -1}));
                    return;
                }
                expect_one_in_each_row_and_column(PLU);
                expect_triangles(PLU);
                RC_ASSERT(residual_lu(&record, PLU) < 30.0);
            }));
}

TEST(LuThreads, SharedMatricesGiveTheBitsOfOneThread)
{
    constexpr std::uint32_t n = 90;
    Matrix A(n, n);
    std::mt19937_64 random(7);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i)
            A.re(i, j) = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
    const aMatrix shared = A.record();
    const auto factors = [&] {
        aMatrix own = shared;
        EfiCallContext ctx;
        return real(native::lu(&ctx, &own));
    };
    const std::vector<double> expected = factors();
    std::array<std::thread, 8> threads;
    for (std::thread& thread : threads)
        thread = std::thread([&] {
            for (int round = 0; round < 20; ++round)
                EXPECT_EQ(factors(), expected);
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
