#include "bailuxsko/kernels/inverse_iteration.hpp"

#include "bailuxsko/kernels/inverse_iteration_lu.hpp"
#include "efiutl/arena_testing.hpp"
#include "tests/kernels/plain/inverse_iteration.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <bit>
#include <cfenv>
#include <climits>
#include <cmath>
#include <complex>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Matrix;
using support::Raised;
using support::raised_by;

using Complex = std::complex<double>;

/// A matrix in rows, with the tables that the routines take.
class Rows {
public:
    explicit Rows(Matrix A) : m_n(A.rows()), m_re(std::size_t{m_n} * m_n), m_im(m_re.size())
    {
        for (std::size_t i = 0; i < m_n; ++i)
            for (std::size_t j = 0; j < m_n; ++j) {
                m_re[i * m_n + j] = A.re(i, j);
                m_im[i * m_n + j] = A.is_complex() ? A.im(i, j) : 0.0;
            }
        for (std::size_t i = 0; i < m_n; ++i) {
            re.push_back(m_re.data() + i * m_n);
            im.push_back(m_im.data() + i * m_n);
        }
        exchanged.resize(m_n, -7);
    }
    std::uint32_t n() const { return m_n; }

    std::vector<double*> re;
    std::vector<double*> im;
    std::vector<int> exchanged;

private:
    std::uint32_t m_n;
    std::vector<double> m_re;
    std::vector<double> m_im;
};

std::vector<Complex> eigenvec(Matrix A, Complex z)
{
    EfiCallContext ctx;
    aMatrix record = A.record();
    aComplex number{.m_re = z.real(), .m_im = z.imag()};
    const aMatrix* const v = native::eigenvec(&ctx, &record, &number);
    std::vector<Complex> all;
    for (std::size_t i = 0; i < v->m_rows; ++i)
        all.emplace_back(v->m_rv[i], v->m_iv[i]);
    return all;
}

TEST(GetRand, GivesTheSequenceOfTwoCongruentialSteps)
{
    // By an independent program in Python, with whole numbers of any size.
    const double expected[] = {0.001268419437110424, 0.1933230198919773, 0.5850060991942883,
                               0.35030810348689556,  0.8228377252817154, 0.17412899527698755};
    const int seeds[] = {-937167229, -410750699, 1030492215, 1924036713, -544181717, 1844513277};
    int seed = 1;
    for (std::size_t k = 0; k < 6; ++k) {
        EXPECT_EQ(native::get_rand(&seed), expected[k]) << k;
        EXPECT_EQ(seed, seeds[k]) << k;
    }
    double last = 0.0;
    for (int k = 6; k < 1000; ++k) {
        last = native::get_rand(&seed);
        EXPECT_LT(last, 1.0);
        EXPECT_EQ(std::fmod(last * native::QUIL_RAND_LIMIT, 2.0), 0.0) << "the last bit is always 0";
    }
    EXPECT_EQ(last, 0.4662965927273035);
    EXPECT_EQ(seed, 1303032465);
    seed = INT_MAX;
    EXPECT_EQ(native::get_rand(&seed), 0.0010958118364214897);
    EXPECT_EQ(seed, -198498703);
    seed = -5;
    EXPECT_EQ(native::get_rand(&seed), 0.0006895596161484718);
    EXPECT_EQ(seed, -868645299);
}

TEST(Lludcmp, TakesTheLastOfEquallyScaledRows)
{
    struct Case {
        const char* name;
        Matrix A;
        std::vector<int> exchanged;
        double parity;
    };
    const Case cases[] = {
        {.name = "one element", .A = {{5}}, .exchanged = {0}, .parity = 1},
        {.name = "both scale to 1", .A = {{1, 0}, {1, 0.5}}, .exchanged = {1, 1}, .parity = -1},
        {.name = "by their share of the largest element", .A = {{10, 1000}, {1, 1}}, .exchanged = {1, 1}, .parity = -1},
        {.name = "modulus, not part: 3 + 4i beats 4.5",
         .A = Matrix::complex({{3, 5}, {4.5, 5}}, {{4, 0}, {0, 0}}),
         .exchanged = {0, 1},
         .parity = 1},
        {.name = "two exchanges", .A = {{0, 2, 0}, {0, 0, 4}, {8, 0, 0}}, .exchanged = {2, 2, 2}, .parity = 1},
    };
    for (const Case& c : cases) {
        Rows A(c.A);
        EfiCallContext ctx;
        double parity = 0.0;
        EXPECT_EQ(native::Lludcmp(&ctx, A.re.data(), A.im.data(), A.n(), A.exchanged.data(), &parity), 0) << c.name;
        EXPECT_EQ(A.exchanged, c.exchanged) << c.name;
        EXPECT_EQ(parity, c.parity) << c.name;
    }
}

TEST(Lludcmp, AnswersWithACode)
{
    double parity = 0.0;
    {
        Rows A(Matrix{{1, 2}, {0, 0}});
        EfiCallContext ctx;
        EXPECT_EQ(native::Lludcmp(&ctx, A.re.data(), A.im.data(), 2, A.exchanged.data(), &parity), 1);
    }
    {
        Rows A(Matrix{{1, 2}, {2, 4}});
        EfiCallContext ctx;
        EXPECT_EQ(native::Lludcmp(&ctx, A.re.data(), A.im.data(), 2, A.exchanged.data(), &parity), 0);
        EXPECT_EQ(A.re[1][1], 1e-20) << "a pivot of zero becomes a tiny one";
        EXPECT_EQ(A.im[1][1], 0.0);
    }
    {
        Rows A(Matrix{{1, 2}, {3, 4}});
        const Efi::FailArenaAt first(1);
        EfiCallContext ctx;
        EXPECT_EQ(native::Lludcmp(&ctx, A.re.data(), A.im.data(), 2, A.exchanged.data(), &parity), 10);
    }
}

TEST(Llubksb, RefusesADiagonalElementOfZero)
{
    Rows A(Matrix{{1, 2}, {0, 0}});
    const int exchanged[] = {0, 1};
    double re[] = {1, 1};
    double im[] = {0, 0};
    EXPECT_EQ(native::Llubksb(A.re.data(), A.im.data(), 2, exchanged, re, im), 2);
}

/// More than 7777 unknowns whose matrix is 1 on the diagonal and, in its last row, in column 7777: all rows but the
/// last are windows of one array.
struct Large {
    static constexpr std::uint32_t n = 7780;

    std::vector<double> m_window = std::vector<double>(2 * n);
    std::vector<double> m_zeros = std::vector<double>(n);
    std::vector<double> m_last = std::vector<double>(n);
    std::vector<double*> m_re;
    std::vector<double*> m_im;
    std::vector<int> m_exchanged;

    Large()
    {
        m_window[n] = 1.0;
        for (std::uint32_t i = 0; i < n; ++i) {
            m_re.push_back(m_window.data() + n - i);
            m_im.push_back(m_zeros.data());
            m_exchanged.push_back(static_cast<int>(i));
        }
        m_last[7777] = 1.0;
        m_last[n - 1] = 1.0;
        m_re[n - 1] = m_last.data();
    }
    std::vector<double> solution(std::vector<double> b)
    {
        std::vector<double> imaginary(n);
        EXPECT_EQ(native::Llubksb(m_re.data(), m_im.data(), n, m_exchanged.data(), b.data(), imaginary.data()), 0);
        return b;
    }
};

TEST(Llubksb, TheMarkerForNoneYetIsANumberLikeAnyOther)
{
    Large A;
    std::vector<double> b(Large::n);
    b[7776] = 1.0; // the first one that is not zero
    b[7777] = 5.0;
    EXPECT_EQ(A.solution(b)[Large::n - 1], -5.0);
    b[7776] = 0.0; // now it is number 7777, which passes for none
    EXPECT_EQ(A.solution(b)[Large::n - 1], 0.0);
    b[7778] = 1.0; // and the next one counts as the first
    EXPECT_EQ(A.solution(b)[Large::n - 1], 0.0);
}

int code_of(const Matrix& A, Complex z, std::size_t failing_request = 0)
{
    Rows rows(A);
    std::vector<double> re(rows.n());
    std::vector<double> im(rows.n());
    const Efi::FailArenaAt failure(failing_request);
    EfiCallContext ctx;
    return native::invit(&ctx, rows.re.data(), rows.im.data(), z.real(), z.imag(), rows.n(), rows.exchanged.data(),
                         re.data(), im.data());
}

TEST(Invit, AnswersWithACode)
{
    struct Case {
        const char* name;
        Matrix A;
        Complex z;
        int code;
    };
    const Case cases[] = {
        {.name = "an eigenvalue", .A = {{2, 1}, {1, 2}}, .z = 3, .code = 0},
        {.name = "a row of zeros but for the small number on the diagonal", .A = {{0, 0}, {1, 1}}, .z = 0, .code = 0},
        {.name = "a row of zeros with it", .A = {{0, 0}, {1, 1}}, .z = 1e-12, .code = 1},
        {.name = "far from every eigenvalue", .A = {{2, 1}, {1, 2}}, .z = 50, .code = 2},
        // (0.009999999999 - 0) + 1e-12 is the double 0.01, and 1 / 0.01 is 100 exactly.
        {.name = "growth of exactly 100", .A = {{0.009999999999}}, .z = 0, .code = 0},
        {.name = "growth just below 100", .A = {{0.009999999999000002}}, .z = 0, .code = 2},
    };
    for (const Case& c : cases)
        EXPECT_EQ(code_of(c.A, c.z), c.code) << c.name;
    for (const std::size_t request : {1U, 2U, 3U})
        EXPECT_EQ(code_of({{2, 1}, {1, 2}}, 3, request), 10) << request;
}

TEST(Invit, CountsStartVectorsAndRefinements)
{
    const auto counted = [](const Matrix& A, Complex z) {
        const std::uint32_t starts = native::local_counter;
        const std::uint32_t refinements = native::led;
        code_of(A, z);
        return std::pair(native::local_counter - starts, native::led - refinements);
    };
    // A vector of length 1 is compared with a solution that has grown: the change is never small.
    EXPECT_EQ(counted({{2, 1}, {1, 2}}, 3), std::pair(1U, 10U));
    EXPECT_EQ(counted({{2, 1}, {1, 2}}, 50), std::pair(5U, 0U)) << "the fifth start vector is tried, never accepted";
    EXPECT_EQ(counted({{0, 0}, {1, 1}}, 1e-12), std::pair(0U, 0U));
}

TEST(Eigenvec, Raises)
{
    struct Case {
        const char* name;
        Matrix A;
        Complex z;
        Raised raised;
    };
    const Case cases[] = {
        {.name = "wide", .A = {{1, 2, 3}, {4, 5, 6}}, .z = 1, .raised = {.message = "must be square", .index = 1}},
        {.name = "no rows", .A = Matrix(0, 2), .z = 1, .raised = {.message = "must be square", .index = 1}},
        {.name = "empty", .A = {}, .z = 1, .raised = {.message = "invalid dimension", .index = -1}},
        {.name = "code 1", .A = {{0, 0}, {1, 1}}, .z = 1e-12, .raised = {.message = "singularity", .index = -1}},
        {.name = "code 2", .A = {{2, 1}, {1, 2}}, .z = 50, .raised = {.message = "not converging", .index = -1}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(raised_by([&] { eigenvec(c.A, c.z); }), c.raised) << c.name;
    aMatrix A = {.m_anr = 1, .m_tag = aMatrix::tag, .m_rows = 1, .m_cols = 1, .m_rv = nullptr, .m_iv = nullptr};
    EfiCallContext ctx;
    aComplex z{};
    EXPECT_EQ(raised_by([&] { native::eigenvec(&ctx, &A, &z); }), (Raised{.message = "unknown error", .index = -1}));
}

TEST(Eigenvec, RunsOutOfMemoryCleanlyAndDoesNotWriteItsArgument)
{
    for (const Matrix& source : {Matrix{{2, 1}, {1, 2}}, Matrix::complex({{2, 0}, {0, 2}}, {{0, 1}, {-1, 0}})}) {
        Matrix A = source;
        aMatrix record = A.record();
        aComplex z{.m_re = 3.0, .m_im = 0.0};
        const std::size_t requests = support::fails_at_every_request<Efi::NativeError>([&] {
            EfiCallContext ctx;
            native::eigenvec(&ctx, &record, &z);
        });
        EXPECT_GT(requests, 8U);
        EXPECT_EQ(A.bits(), source.bits());
    }
}

TEST(Eigenvec, WalksThroughTheLeadingDimension)
{
    Matrix A(2, 2, 5);
    A.re(0, 0) = A.re(1, 1) = 2;
    A.re(0, 1) = A.re(1, 0) = 1;
    EXPECT_EQ(eigenvec(A, 3), eigenvec({{2, 1}, {1, 2}}, 3));
}

TEST(Eigenvec, FindsTheVectorsOfRandomMatrices)
{
    support::Random random(11);
    for (const std::uint32_t n : {1U, 2U, 3U, 5U, 10U, 50U}) {
        // A triangle has its eigenvalues on the diagonal; the vector is looked at through A * v - z * v.
        Matrix A = support::draw(support::kinds[0], n, n, true, random);
        for (std::uint32_t j = 0; j < n; ++j)
            for (std::uint32_t i = 0; i < n; ++i)
                if (i > j)
                    A.re(i, j) = A.im(i, j) = 0.0;
                else if (i == j)
                    A.re(i, j) += 3.0 * j;
        const Complex z(A.re(n / 2, n / 2), A.im(n / 2, n / 2));
        const std::vector<Complex> v = eigenvec(A, z);
        double norm = 0.0;
        for (std::size_t i = 0; i < n; ++i) {
            Complex sum = 0.0;
            for (std::size_t j = 0; j < n; ++j)
                sum += Complex(A.re(i, j), A.im(i, j)) * v[j];
            EXPECT_LT(std::abs(sum - z * v[i]), 1e-11) << n;
            norm += std::norm(v[i]);
        }
        EXPECT_NEAR(norm, 1.0, 1e-14) << n;
    }
}

TEST(EigenvecThreads, EqualArgumentsGiveEqualBits)
{
    const std::vector<Complex> expected = eigenvec({{2, 1}, {1, 2}}, 3);
    const std::uint32_t before = native::local_counter;
    std::vector<int> same(4, 0);
    std::vector<std::thread> threads;
    for (int& count : same)
        threads.emplace_back([&] {
            for (int repeat = 0; repeat < 50; ++repeat)
                count += eigenvec({{2, 1}, {1, 2}}, 3) == expected;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(same, std::vector<int>(4, 50));
    EXPECT_EQ(native::local_counter - before, 200U) << "no count is lost";
}

/// All NaNs count as one: which of two an operation hands on is up to the compiler.
std::uint64_t bits(double x)
{
    return std::isnan(x) ? 0x7FF8000000000000U : std::bit_cast<std::uint64_t>(x);
}

/// Factors, exchanges and the solution of a system, and the faults on the way.
std::vector<std::uint64_t> outcome(const Matrix& A, bool is_plain)
{
    Rows rows(A);
    const std::uint32_t n = rows.n();
    std::vector<double> b_re(n);
    std::vector<double> b_im(n);
    int seed = 1;
    for (std::size_t i = n / 3; i < n; ++i) {
        b_re[i] = native::get_rand(&seed);
        b_im[i] = native::get_rand(&seed);
    }
    double parity = 0.0;
    EfiCallContext ctx;
    std::feclearexcept(FE_ALL_EXCEPT);
    const int code = is_plain
                         ? plain::Lludcmp(rows.re.data(), rows.im.data(), n, rows.exchanged.data(), &parity)
                         : native::Lludcmp(&ctx, rows.re.data(), rows.im.data(), n, rows.exchanged.data(), &parity);
    std::vector<std::uint64_t> all{static_cast<std::uint64_t>(code)};
    if (code == 0) {
        const int solved = (is_plain ? plain::Llubksb : native::Llubksb)(
            rows.re.data(), rows.im.data(), n, rows.exchanged.data(), b_re.data(), b_im.data());
        all.push_back(static_cast<std::uint64_t>(solved));
        all.push_back(bits(parity));
        for (std::size_t i = 0; i < n; ++i) {
            all.push_back(static_cast<std::uint64_t>(rows.exchanged[i]));
            all.push_back(bits(b_re[i]));
            all.push_back(bits(b_im[i]));
            for (std::size_t j = 0; j < n; ++j) {
                all.push_back(bits(rows.re[i][j]));
                all.push_back(bits(rows.im[i][j]));
            }
        }
    }
    all.push_back(static_cast<std::uint64_t>(std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID)));
    return all;
}

class InverseIterationBits : public support::AtLevel {};

TEST_P(InverseIterationBits, AreThoseOfCroutsMethod)
{
    support::Random random(13);
    const auto expect_same = [&](const support::Kind& kind, std::uint32_t n, bool with_imaginary) {
        const Matrix A = support::draw(kind, n, n, with_imaginary, random);
        EXPECT_TRUE(outcome(A, false) == outcome(A, true)) << kind.name << ", n = " << n;
    };
    for (const support::Kind& kind : support::kinds)
        for (const bool with_imaginary : {false, true}) {
            for (std::uint32_t n = 1; n <= 20; ++n)
                expect_same(kind, n, with_imaginary);
            for (const std::uint32_t n : {31U, 32U, 33U, 47U, 48U, 49U, 63U, 64U, 65U, 66U, 67U, 95U, 96U, 97U})
                expect_same(kind, n, with_imaginary);
        }
    for (const std::uint32_t n : {127U, 128U, 129U, 161U, 200U, 225U})
        expect_same(support::kinds[0], n, true);
}

INSTANTIATE_TEST_SUITE_P(Levels, InverseIterationBits, support::every_level(), support::level_name);

} // namespace
