// What holds for the factors of any matrix, and for calls side by side.
#include "bailuxsko/kernels/lu.hpp"

#include "efiutl/columns.hpp"
#include "tests/support/matrix.hpp"
#include "tests/support/raises.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdint>
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
using support::real;

constexpr double eps = std::numeric_limits<double>::epsilon();

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
