// Infinities and NaN go to the factorisations as they are, and never to the singular values: every call answers. The
// test runs under CTest's time limit.
#include "bailuxsko/intel_mkl.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using matrices::Complex;
using matrices::inf;
using matrices::NaN;
using matrices::random_real;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

namespace IntelMKL = Efi::IntelMKL;

const Handle zero = Qud::NumVal::make(0.0);
const Handle one = Qud::NumVal::make(1.0);

struct Shape {
    std::uint32_t m;
    std::uint32_t n;
};

/// What every call on M answers: a value or one of the two messages that its numbers can bring about.
void expect_answers(const Handle& M)
{
    const Raised nothing;
    EXPECT_EQ(host_raised_by([&] { IntelMKL::LU(M); }), nothing);
    EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(M); }), nothing);
    EXPECT_EQ(host_raised_by([&] { IntelMKL::QR(M, zero); }), nothing);
    if (matrix_of(M)->Rows() >= matrix_of(M)->Cols()) {
        EXPECT_EQ(host_raised_by([&] { IntelMKL::svds(M); }), (Raised{"not converging", -1}));
        EXPECT_EQ(host_raised_by([&] { IntelMKL::svd(M); }), (Raised{"not converging", -1}));
    }
    if (matrix_of(M)->is_square())
        for (const Handle& pivot : {zero, one})
            for (const Handle& upper : {zero, one}) {
                const Raised raised = host_raised_by([&] { IntelMKL::Cholesky(M, pivot, upper); });
                EXPECT_TRUE(raised == nothing || raised == (Raised{"non-positive definite matrix", -1})) << raised;
            }
}

TEST(NotFinite, IsAnsweredInEveryPosition)
{
    for (const Shape& s : {Shape{1, 1}, {2, 2}, {3, 2}, {2, 3}, {4, 4}, {9, 3}})
        for (std::uint32_t place = 0; place < s.m * s.n; ++place)
            for (const double odd : {NaN, inf, -inf}) {
                const Handle ordinary = random_real(s.m, s.n, 1);
                const auto at = [&](auto i, auto j) {
                    return i + j * s.m == place ? odd : matrix_of(ordinary)->real(i, j) + (i == j ? 5.0 : 0.0);
                };
                expect_answers(matrices::generate(s.m, s.n, at));
                expect_answers(matrices::generate(s.m, s.n, [&](auto i, auto j) { return Complex(at(i, j), 0.5); }));
                expect_answers(matrices::generate(s.m, s.n, [&](auto i, auto j) { return Complex(0.5, at(i, j)); }));
            }
}

TEST(NotFinite, IsAnsweredWhereColumnsAreWorkedOnInBlocks)
{
    for (const Shape& s : {Shape{40, 40}, {100, 70}, {70, 100}})
        for (const double odd : {NaN, inf})
            for (const std::uint32_t step : {1U, 7U, 1000U}) {
                const auto at = [&](auto i, auto j) {
                    return (i + 3 * j) % step == 0 ? odd : std::sin(double(i * s.n + j));
                };
                expect_answers(matrices::generate(s.m, s.n, at));
                expect_answers(
                    matrices::generate(s.m, s.n, [&](auto i, auto j) { return Complex(at(i, j), at(j, i)); }));
            }
}

TEST(NotFinite, ModuliBeyondTheLargestNumberAreAnswered)
{
    const double large = 1.5e308;
    for (const std::uint32_t n : {1U, 2U, 30U}) {
        const Handle Z =
            matrices::generate(n, n, [&](auto i, auto j) { return Complex(large, i < j ? large : -large); });
        for (const auto operation :
             {IntelMKL::svds, IntelMKL::svd, IntelMKL::LU, +[](const Handle& A) { return IntelMKL::QR(A); },
              +[](const Handle& A) { return IntelMKL::QR(A, zero); }})
            EXPECT_EQ(host_raised_by([&] { operation(Z); }), Raised{});
    }
}

} // namespace
