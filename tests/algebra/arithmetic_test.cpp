// What no worksheet can show of * / ^ and the inverse: memory, threads, floating-point flags, arguments left alone.
#include "bailuxsko/arithmetic.hpp"

#include "bailuxhost/options.hpp"
#include "bailuxsko/algebra/inverse.hpp"
#include "bailuxsko/algebra/operations.hpp"
#include "bailuxsko/inverse.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cfenv>
#include <cmath>
#include <memory>
#include <span>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::matrix;
using support::number;
using support::Raised;
using support::scattered;

struct Operation {
    const char* name;
    Handle (*call)(const Handle& square);
};
const Operation operations[] = {
    {.name = "product", .call = [](const Handle& M) { return Efi::Matrix::mult(M, M); }},
    {.name = "number times matrix", .call = [](const Handle& M) { return Efi::Matrix::mult(number(2, 1), M); }},
    {.name = "quotient", .call = [](const Handle& M) { return Efi::Matrix::div(M, M); }},
    {.name = "power", .call = [](const Handle& M) { return Efi::Matrix::pwr(M, number(5)); }},
    {.name = "negative power", .call = [](const Handle& M) { return Efi::Matrix::pwr(M, number(-3)); }},
    {.name = "inverse", .call = [](const Handle& M) { return Efi::Matrix::inv(M); }},
};

TEST(Arithmetic, AnArenaThatFailsAtAnyRequestAndArgumentsLeftAlone)
{
    for (const Operation& operation : operations)
        for (const bool complex : {false, true})
            for (const std::uint32_t n : {3U, 80U}) {
                SCOPED_TRACE(operation.name);
                const Handle M = scattered(n, n, complex);
                const std::vector<std::uint64_t> before = support::bits(M);
                support::fails_at_every_request<Evl::Run::AppException>([&] { operation.call(M); });
                EXPECT_EQ(support::bits(M), before);
            }
}

TEST(ArithmeticThreads, EightThreadsOnOneValueGetTheSameBits)
{
    for (const Operation& operation : operations) {
        const Handle real = scattered(10, 10);
        const Handle complex = scattered(9, 9, true);
        const auto expected_real = support::bits(operation.call(real));
        const auto expected_complex = support::bits(operation.call(complex));
        std::vector<int> same(8, 0);
        std::vector<std::thread> threads;
        for (int& count : same)
            threads.emplace_back([&] {
                for (int repeat = 0; repeat < 20; ++repeat)
                    count += (support::bits(operation.call(real)) == expected_real) +
                             (support::bits(operation.call(complex)) == expected_complex);
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(same, std::vector<int>(8, 40)) << operation.name;
    }
}

TEST(Arithmetic, FlagsThatWereLeftOutsideDoNotReachAGuardedCall)
{
    Efi::Matrix::mult(number(1e300), number(1e300));
    std::feraiseexcept(FE_OVERFLOW | FE_INVALID | FE_DIVBYZERO);
    EXPECT_NO_THROW(Efi::Matrix::mult(matrix({{1, 2}}), matrix({{3}, {4}})));
    std::feraiseexcept(FE_OVERFLOW | FE_INVALID | FE_DIVBYZERO);
    EXPECT_NO_THROW(Efi::Matrix::pwr(matrix({{1, 2}, {3, 4}}), number(-2)));
}

TEST(Arithmetic, OverflowIsAFaultInsideTheGuardAndAValueOutside)
{
    const Raised fault{"floating point exception", 0};
    const Handle small = matrix({{1e200, 1e200}});
    const Handle small_column = matrix({{1e200}, {1e200}});
    EXPECT_EQ(support::host_raised_by([&] { Efi::Matrix::mult(small, small_column); }), fault);
    Qud::FreshNumbers numbers = Qud::fresh_numbers(11);
    std::fill_n(numbers.get(), 11, 1e200);
    const Handle row = Qud::MatVal::make(1, 11, numbers);
    const Handle column = Qud::MatVal::make(11, 1, numbers);
    EXPECT_EQ(Qud::as_number(Efi::Matrix::mult(row, column))->re(), HUGE_VAL);
    EXPECT_EQ(Qud::as_number(Efi::Matrix::mult(number(1e200), number(1e200)))->re(), HUGE_VAL);
    // underflow is nobody's error
    EXPECT_NO_THROW(Efi::Matrix::mult(matrix({{1e-200, 0}}), matrix({{1e-200}, {0}})));
}

TEST(Arithmetic, TheSwitchToBlasIsAtTenRowsAndColumns)
{
    // A complex factor without imaginary parts tells the ways apart: BLAS keeps the imaginary array.
    for (const auto& [rows, cols, by_blas] : {std::tuple{10U, 10U, false}, {11U, 2U, true}, {2U, 11U, true}}) {
        Qud::FreshNumbers zeros = Qud::zero_numbers(121);
        const Handle A = Qud::MatVal::make(rows, cols, zeros, zeros);
        const Handle B = Qud::MatVal::make(cols, 2, zeros);
        EXPECT_EQ(Qud::matrix_of(Efi::Matrix::mult(A, B))->HasImag(), by_blas) << rows << ' ' << cols;
    }
}

TEST(Arithmetic, ProductsOfMatricesThatAreNotPlain)
{
    const Handle plain = matrix({{1, 2}, {3, 4}});
    Qud::MatBuilder builder(1, 2);
    builder.set(0, 0, plain);
    builder.set(0, 1, number(1));
    const Handle nested = builder.finish();
    const auto product = [](const Handle& a, const Handle& b) {
        return support::host_raised_by([&] { Efi::EfiMult::ScalarMatrixMult(*Qud::matrix_of(a), *Qud::matrix_of(b)); });
    };
    EXPECT_EQ(product(nested, plain), (Raised{"may not be nested", 1}));
    EXPECT_EQ(product(plain, nested), (Raised{"may not be nested", 2}));
}

TEST(Arithmetic, ViewsAreReadInPlace)
{
    const Handle whole = scattered(30, 30, true);
    const Handle view = Qud::matrix_of(whole)->SubMatrix(2, 6, 3, 7);
    const Handle copy = Qud::matrix_of(view)->copy();
    for (const Operation& operation : operations)
        EXPECT_EQ(support::bits(operation.call(view)), support::bits(operation.call(copy))) << operation.name;
}

TEST(Arithmetic, PowersOfPowersOfAFunctionEndBeforeTheStackDoes)
{
    const auto first = [](std::span<const Handle> arguments) { return arguments[0]; };
    Handle f = std::make_shared<const Qud::FunVal>("first", 1, 1, first);
    for (std::size_t level = 1; level < Qud::FunVal::max_levels; ++level)
        f = Efi::Matrix::pwr(f, number(1));
    EXPECT_EQ(support::host_raised_by([&] { Efi::Matrix::pwr(f, number(1)); }), (Raised{"nesting too deep", -1}));
    const Handle arguments[] = {number(3)};
    EXPECT_EQ(Qud::as_number(Qud::as_function(f)->call(arguments))->re(), 3);
}

TEST(Arithmetic, AbsentArgumentsAreOfNoKind)
{
    const Handle absent;
    const Raised second{"must be a scalar or a matrix", 2};
    const Raised first{"must be a scalar or a matrix", 1};
    for (const auto operation : {&Efi::Matrix::mult, &Efi::Matrix::div, &Efi::Matrix::pwr}) {
        EXPECT_EQ(support::host_raised_by([&] { operation(absent, absent); }), second);
        EXPECT_EQ(support::host_raised_by([&] { operation(number(1), absent); }), second);
        EXPECT_EQ(support::host_raised_by([&] { operation(absent, number(1)); }), first);
    }
    EXPECT_EQ(support::host_raised_by([&] { Efi::Matrix::inv(absent); }), (Raised{"must be scalar matrix", 1}));
}

} // namespace
