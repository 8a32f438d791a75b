#include "bailuxsko/lu.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/values.hpp"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

using Qud::Handle;
using support::bits;
using support::scattered;

TEST(LuEntry, AnArenaThatFailsAtAnyRequestGivesOutOfMemoryAndLeavesNothing)
{
    for (const bool complex : {false, true}) {
        for (const std::uint32_t n : {3U, 200U}) {
            const Handle A = scattered(n, n, complex);
            const std::vector<std::uint64_t> before = bits(A);
            const std::vector<std::uint64_t> expected = bits(Efi::Matrix::lu(A));
            const std::size_t requests = support::fails_at_every_request<Evl::Run::AppException>(
                [&] { EXPECT_EQ(bits(Efi::Matrix::lu(A)), expected); });
            EXPECT_GT(requests, 4U) << "a call makes several requests";
            EXPECT_EQ(bits(A), before) << "the argument is not written to";
        }
    }
}

TEST(LuEntryThreads, EightThreadsOnOneValueGetTheSameBits)
{
    const Handle real = scattered(70, 70);
    const Handle complex = scattered(40, 40, true);
    const std::vector<std::uint64_t> expected_real = bits(Efi::Matrix::lu(real));
    const std::vector<std::uint64_t> expected_complex = bits(Efi::Matrix::lu(complex));
    std::vector<int> same(8, 0);
    std::vector<std::thread> threads;
    for (int& count : same) {
        threads.emplace_back([&] {
            for (int repeat = 0; repeat < 20; ++repeat)
                count += (bits(Efi::Matrix::lu(real)) == expected_real) +
                         (bits(Efi::Matrix::lu(complex)) == expected_complex);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(same, std::vector<int>(8, 40));
}

TEST(LuEntry, ABlockOfALargerMatrixIsFactorisedInPlaceOfItsCopy)
{
    const Handle whole = scattered(9, 9);
    const Handle block = Qud::matrix_of(whole)->SubMatrix(2, 6, 3, 7);
    EXPECT_EQ(bits(Efi::Matrix::lu(block)), bits(Efi::Matrix::lu(Qud::matrix_of(block)->copy())));
}

TEST(LuEntry, AnAbsentArgumentIsRefused)
{
    try {
        Efi::Matrix::lu(Handle());
        FAIL();
    } catch (const Evl::Run::AppException& error) {
        EXPECT_EQ(error.message(), "must be scalar matrix");
        EXPECT_EQ(error.index(), 1);
    }
}

} // namespace
