#include "bailuxsko/comeval.hpp"
#include "bailuxsko/eigenvec.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cstdint>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::bits;
using support::host_raised_by;
using support::matrix;
using support::number;
using support::Raised;

const Handle& real_matrix()
{
    static const Handle A = matrix({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}});
    return A;
}

const Handle& complex_matrix()
{
    static const Handle A =
        matrix({{4, 1, 2}, {0, 3, 1}, {2, 2, 0}}, Qud::Dim::identity, {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}});
    return A;
}

TEST(ComevalEntry, AnArenaThatFailsAtAnyRequestGivesOutOfMemoryAndLeavesNothing)
{
    for (const Handle& A : {real_matrix(), complex_matrix()}) {
        const std::vector<std::uint64_t> before = bits(A);
        const std::vector<std::uint64_t> expected = bits(Efi::Matrix::comeval(A));
        const std::size_t requests = support::fails_at_every_request<Evl::Run::AppException>(
            [&] { EXPECT_EQ(bits(Efi::Matrix::comeval(A)), expected); });
        EXPECT_GT(requests, 8U) << "the copy's arrays and the routine's own";
        EXPECT_EQ(bits(A), before) << "the argument is not written to";
        EXPECT_EQ(Qud::matrix_of(A)->HasImag(), A == complex_matrix());
    }
}

TEST(ComevalEntry, ABlockOfALargerMatrixIsAMatrix)
{
    const Handle whole = matrix({{9, 9, 9}, {9, 0, -1}, {9, 1, 0}});
    const Handle block = Qud::matrix_of(whole)->SubMatrix(1, 2, 1, 2);
    EXPECT_EQ(bits(Efi::Matrix::comeval(block)), bits(Efi::Matrix::comeval(matrix({{0, -1}, {1, 0}}))));
    EXPECT_EQ(bits(Efi::Matrix::eigenvec(block, number(0, 1))),
              bits(Efi::Matrix::eigenvec(matrix({{0, -1}, {1, 0}}), number(0, 1))));
}

TEST(ComevalEntry, AMatrixWithoutElementsIsRefusedByItsShapeFirst)
{
    const auto empty = [](std::uint32_t rows, std::uint32_t cols) {
        return Qud::MatVal::make(rows, cols, Qud::zero_numbers(0));
    };
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::comeval(empty(0, 3)); }),
              (Raised{.message = "must be square", .index = 1}));
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::comeval(empty(0, 0)); }),
              (Raised{.message = "invalid dimension", .index = -1}));
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::eigenvec(empty(3, 0), number(1)); }),
              (Raised{.message = "must be square", .index = 1}));
}

TEST(ComevalEntry, AnAbsentArgumentIsRefused)
{
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::comeval(Handle()); }),
              (Raised{.message = "must be scalar matrix", .index = 1}));
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::eigenvec(Handle(), number(1)); }),
              (Raised{.message = "must be scalar matrix", .index = 1}));
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::eigenvec(real_matrix(), Handle()); }),
              (Raised{.message = "must be scalar", .index = 2}));
}

TEST(EigenvecEntry, AnArenaThatFailsAtAnyRequestGivesOutOfMemoryAndLeavesNothing)
{
    const Handle z = number(16.707493316124744);
    const std::vector<std::uint64_t> before = bits(real_matrix());
    const std::vector<std::uint64_t> expected = bits(Efi::Matrix::eigenvec(real_matrix(), z));
    const std::size_t requests = support::fails_at_every_request<Evl::Run::AppException>(
        [&] { EXPECT_EQ(bits(Efi::Matrix::eigenvec(real_matrix(), z)), expected); });
    EXPECT_GT(requests, 8U);
    EXPECT_EQ(bits(real_matrix()), before) << "the argument is not written to";
}

TEST(EigenvalueEntryThreads, FourThreadsOnOneValueGetTheSameBits)
{
    const Handle z = number(16.707493316124744);
    const std::vector<std::uint64_t> values = bits(Efi::Matrix::comeval(complex_matrix()));
    const std::vector<std::uint64_t> vector = bits(Efi::Matrix::eigenvec(real_matrix(), z));
    std::vector<int> same(4, 0);
    std::vector<std::thread> threads;
    for (int& count : same)
        threads.emplace_back([&] {
            for (int repeat = 0; repeat < 50; ++repeat)
                count += (bits(Efi::Matrix::comeval(complex_matrix())) == values) +
                         (bits(Efi::Matrix::eigenvec(real_matrix(), z)) == vector);
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(same, std::vector<int>(4, 100));
}

} // namespace
