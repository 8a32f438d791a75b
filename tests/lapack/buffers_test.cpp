#include "bailuxsko/lapack/buffers.hpp"
#include "bailuxsko/lapack/guard_zone.hpp"
#include "tests/lapack/replaced.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>
#include <cstdint>
#include <stdexcept>

namespace {

using lapack::mkl_auto_ptr;
using support::host_raised_by;
using support::Raised;
using Complex16 = std::complex<double>;

const Raised out_of_memory{.message = "out of memory", .index = -1, .detail = ""};
constexpr std::uint64_t two_GiB = std::uint64_t{1} << 31;

/// Requests and releases seen by the provider.
struct Seen {
    static inline int requests = 0;
    static inline int releases = 0;
    static inline std::size_t bytes = 0;
    static inline int alignment = 0;
};

void* watched_malloc(std::size_t bytes, int alignment) noexcept
{
    ++Seen::requests;
    Seen::bytes = bytes;
    Seen::alignment = alignment;
    return lapack::MKL_malloc(bytes, alignment);
}

void watched_free(void* block) noexcept
{
    Seen::releases += block ? 1 : 0;
    lapack::MKL_free(block);
}

class Buffers : public testing::Test {
protected:
    void SetUp() override { Seen::requests = Seen::releases = 0; }

private:
    Replaced<&lapack::Routines::malloc> m_malloc{watched_malloc};
    Replaced<&lapack::Routines::free> m_free{watched_free};
};

template <class T>
void expect_zeros_in_used_memory(std::size_t count)
{
    {
        mkl_auto_ptr<T> before;
        std::fill_n(before.allocate(count), count, T(7));
    }
    mkl_auto_ptr<T> buffer;
    const T* const first = buffer.allocate(count);
    EXPECT_EQ(std::count(first, first + count, T(0)), static_cast<std::ptrdiff_t>(count));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % 16, 0U);
    EXPECT_EQ(buffer.get(), first);
}

TEST_F(Buffers, AreZerosAndAligned)
{
    for (const std::size_t count : {1U, 3U, 1000U, 100000U}) {
        expect_zeros_in_used_memory<double>(count);
        expect_zeros_in_used_memory<Complex16>(count);
        expect_zeros_in_used_memory<int>(count);
    }
}

TEST_F(Buffers, AskTheProviderForTheirSizeAndForSixteenBytes)
{
    mkl_auto_ptr<Complex16> buffer;
    buffer.allocate(5);
    EXPECT_EQ(Seen::bytes, lapack::guard_zone::with_zones(80));
    EXPECT_EQ(Seen::alignment, 16);
}

TEST_F(Buffers, AreFreedAtTheEndOfTheScope)
{
    {
        mkl_auto_ptr<double> buffer;
        buffer.allocate(10);
        EXPECT_EQ(Seen::releases, 0);
    }
    EXPECT_EQ(Seen::requests, 1);
    EXPECT_EQ(Seen::releases, 1);
}

TEST_F(Buffers, AreFreedWhenAnErrorPasses)
{
    try {
        mkl_auto_ptr<double> buffer;
        buffer.allocate(10);
        throw std::runtime_error("passes");
    } catch (const std::runtime_error&) {
    }
    EXPECT_EQ(Seen::releases, 1);
}

TEST_F(Buffers, ASecondRequestFreesTheFirst)
{
    mkl_auto_ptr<double> buffer;
    buffer.allocate(10);
    buffer.allocate(20);
    EXPECT_EQ(Seen::requests, 2);
    EXPECT_EQ(Seen::releases, 1);
}

TEST_F(Buffers, TwoGibibytesAndMoreAreOutOfMemory)
{
    mkl_auto_ptr<double> doubles;
    mkl_auto_ptr<Complex16> complexes;
    mkl_auto_ptr<int> ints;
    for (const std::uint64_t bytes : {two_GiB, 2 * two_GiB, 2 * two_GiB + 64, std::uint64_t{1} << 62}) {
        EXPECT_EQ(host_raised_by([&] { doubles.allocate(bytes / sizeof(double)); }), out_of_memory);
        EXPECT_EQ(host_raised_by([&] { complexes.allocate(bytes / sizeof(Complex16)); }), out_of_memory);
        EXPECT_EQ(host_raised_by([&] { ints.allocate(bytes / sizeof(int)); }), out_of_memory);
    }
    EXPECT_EQ(host_raised_by([&] { doubles.allocate(~std::uint64_t{0}); }), out_of_memory);
    EXPECT_EQ(host_raised_by([&] { lapack::result_numbers(two_GiB / sizeof(double)); }), out_of_memory);
    EXPECT_EQ(Seen::requests, 0);
    EXPECT_EQ(lapack::buffer_bytes(two_GiB / sizeof(double) - 1, sizeof(double)), two_GiB - 8);
}

TEST_F(Buffers, ARefusedRequestIsOutOfMemory)
{
    const Replaced<&lapack::Routines::malloc> refuses([](std::size_t, int) noexcept -> void* { return nullptr; });
    mkl_auto_ptr<double> buffer;
    EXPECT_EQ(host_raised_by([&] { buffer.allocate(1); }), out_of_memory);
    EXPECT_EQ(buffer.get(), nullptr);
}

TEST_F(Buffers, TheProvidersOwnGoWithTheirGuard)
{
    static int calls = 0;
    const Replaced<&lapack::Routines::free_buffers> counted([]() noexcept { ++calls; });
    {
        const lapack::mkl_auto_rel release;
        EXPECT_EQ(calls, 0);
    }
    EXPECT_EQ(calls, 1);
}

} // namespace
