// Entry calls of cholesky, qr and rref: blocks of larger matrices, memory, arguments that stay as they are, threads.
#include "bailuxsko/cholesky.hpp"
#include "bailuxsko/qr.hpp"
#include "bailuxsko/rref.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/values.hpp"

#include <cmath>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::bits;

struct Function {
    const char* name;
    Handle (*call)(const Handle&);
    const char* refusal; ///< of what is no matrix
};
const Function functions[] = {
    {.name = "cholesky", .call = Efi::Matrix::cholesky, .refusal = "must be real matrix"},
    {.name = "qr", .call = Efi::Matrix::qr, .refusal = "must be scalar matrix"},
    {.name = "rref", .call = Efi::Matrix::rref, .refusal = "must be scalar matrix"},
};

/// n by n, positive definite, the same every time.
Handle definite(std::uint32_t n)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(std::size_t{n} * n);
    for (std::size_t j = 0; j < n; ++j)
        for (std::size_t i = 0; i < n; ++i)
            numbers[i + j * n] = std::cos(static_cast<double>(i * j)) + (i == j ? 2.0 * n : 0.0);
    return Qud::MatVal::make(n, n, numbers, nullptr);
}

TEST(FactorisationsEntry, AnArenaThatFailsAtAnyRequestGivesOutOfMemoryAndLeavesNothing)
{
    for (const Function& f : functions)
        for (const std::uint32_t n : {3U, 150U}) {
            const Handle A = definite(n);
            const std::vector<std::uint64_t> before = bits(A);
            const std::vector<std::uint64_t> expected = bits(f.call(A));
            const std::size_t requests = support::fails_at_every_request<Evl::Run::AppException>(
                [&] { EXPECT_EQ(bits(f.call(A)), expected) << f.name; });
            EXPECT_GT(requests, 2U) << f.name;
            EXPECT_EQ(bits(A), before) << f.name << ": the argument is not written to";
        }
}

TEST(FactorisationsEntry, ABlockOfALargerMatrixIsAMatrix)
{
    const Handle whole = definite(60);
    for (const Function& f : functions)
        for (const std::size_t last : {20U, 23U, 57U}) {
            const Handle block = Qud::matrix_of(whole)->SubMatrix(20, last, 20, last);
            EXPECT_EQ(bits(f.call(block)), bits(f.call(Qud::matrix_of(block)->copy()))) << f.name;
        }
}

TEST(FactorisationsEntry, ResultsAreReal)
{
    for (const Function& f : functions)
        EXPECT_FALSE(Qud::matrix_of(f.call(definite(3)))->HasImag()) << f.name;
}

TEST(FactorisationsEntry, AnAbsentArgumentIsRefused)
{
    for (const Function& f : functions)
        try {
            f.call(Handle());
            ADD_FAILURE() << f.name;
        } catch (const Evl::Run::AppException& error) {
            EXPECT_EQ(error.message(), f.refusal) << f.name;
            EXPECT_EQ(error.index(), 1) << f.name;
        }
}

TEST(FactorisationsEntryThreads, EightThreadsOnOneValueGetTheSameBits)
{
    const Handle A = definite(70);
    for (const Function& f : functions) {
        const std::vector<std::uint64_t> expected = bits(f.call(A));
        std::vector<int> same(8, 0);
        std::vector<std::thread> threads;
        for (int& count : same)
            threads.emplace_back([&] {
                for (int repeat = 0; repeat < 10; ++repeat)
                    count += bits(f.call(A)) == expected;
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(same, std::vector<int>(8, 10)) << f.name;
    }
}

} // namespace
