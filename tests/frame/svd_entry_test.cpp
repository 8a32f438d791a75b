#include "bailuxsko/svd.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cfenv>
#include <cstdint>
#include <limits>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::bits;
using support::host_raised_by;
using support::Raised;
using support::scattered;

double rank_of(const Handle& A)
{
    return static_cast<const Qud::NumVal&>(*Efi::Matrix::rank(A)).re();
}

constexpr Qud::Tol tol{.value = 1e-10};

TEST(SvdEntry, AnArenaThatFailsAtAnyRequestGivesOutOfMemoryAndLeavesNothing)
{
    for (const std::uint32_t n : {3U, 60U}) {
        const Handle A = scattered(n + 2, n);
        const std::vector<std::uint64_t> before = bits(A);
        const std::vector<std::uint64_t> expected[] = {bits(Efi::Matrix::svd(A)), bits(Efi::Matrix::geninv(tol, A))};
        const std::size_t requests[] = {
            support::fails_at_every_request<Evl::Run::AppException>(
                [&] { EXPECT_EQ(bits(Efi::Matrix::svd(A)), expected[0]); }),
            support::fails_at_every_request<Evl::Run::AppException>(
                [&] { EXPECT_EQ(bits(Efi::Matrix::geninv(tol, A)), expected[1]); }),
            support::fails_at_every_request<Evl::Run::AppException>([&] { EXPECT_EQ(rank_of(A), n); }),
        };
        for (const std::size_t count : requests)
            EXPECT_GT(count, 4U) << "a call makes several requests";
        EXPECT_EQ(bits(A), before) << "the argument is not written to";
    }
}

TEST(SvdEntryThreads, EightThreadsOnOneValueGetTheSameBits)
{
    const Handle A = scattered(50, 40);
    const std::vector<std::uint64_t> expected = bits(Efi::Matrix::svd(A));
    const std::vector<std::uint64_t> expected_inverse = bits(Efi::Matrix::geninv(tol, A));
    std::vector<int> same(8, 0);
    std::vector<std::thread> threads;
    for (int& count : same)
        threads.emplace_back([&] {
            for (int repeat = 0; repeat < 10; ++repeat)
                count +=
                    (bits(Efi::Matrix::svd(A)) == expected) + (bits(Efi::Matrix::geninv(tol, A)) == expected_inverse);
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(same, std::vector<int>(8, 20));
}

TEST(SvdEntry, ABlockOfALargerMatrixIsReadInPlace)
{
    const Handle block = Qud::matrix_of(scattered(12, 9))->SubMatrix(2, 9, 3, 7);
    const Handle copy = Qud::matrix_of(block)->copy();
    EXPECT_EQ(bits(Efi::Matrix::svd(block)), bits(Efi::Matrix::svd(copy)));
    EXPECT_EQ(bits(Efi::Matrix::geninv(tol, block)), bits(Efi::Matrix::geninv(tol, copy)));
    EXPECT_EQ(rank_of(block), 5.0);
    EXPECT_EQ(rank_of(copy), 5.0);
}

TEST(SvdEntry, AnAbsentArgumentIsRefused)
{
    const Raised scalar_matrix{.message = "must be scalar matrix", .index = 1};
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::svd(Handle()); }), scalar_matrix);
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::geninv(tol, Handle()); }), scalar_matrix);
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::rank(Handle()); }),
              (Raised{.message = "must be real matrix", .index = 1}));
}

TEST(SvdEntry, FlagsAndMasksOfTheCallerStayAsTheyWere)
{
    const Qud::Tol no_number{.value = std::numeric_limits<double>::quiet_NaN()};
    std::feclearexcept(FE_ALL_EXCEPT);
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::geninv(no_number, scattered(3, 2)); }),
              (Raised{.message = "floating point exception", .index = 0}));
    EXPECT_EQ(std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID), 0);
}

} // namespace
