// In builds with guard zones a routine that writes beyond an array of ours is caught, whoever owns the array.
#include "bailuxsko/lapack/arena_array.hpp"
#include "bailuxsko/lapack/buffers.hpp"
#include "bailuxsko/lapack/inverse.hpp"
#include "efiutl/throw.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/lapack/replaced.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace {

using lapack::arena_bytes;
using lapack::ArenaArray;
using lapack::mkl_auto_ptr;
using lapack::MKL_Complex16;

constexpr std::uint64_t most_doubles = 2305843009213693951; // 2^61 - 1
constexpr std::size_t saturated = ~std::size_t{0};

TEST(ArenaArray, CountsRoomInDoublesAndSaturates)
{
    EXPECT_EQ(arena_bytes<double>(3), 24U);
    EXPECT_EQ(arena_bytes<MKL_Complex16>(3), 48U);
    EXPECT_EQ(arena_bytes<int>(3), 24U);
    EXPECT_EQ(arena_bytes<double>(most_doubles), saturated - 7);
    EXPECT_EQ(arena_bytes<double>(most_doubles + 1), saturated);
    EXPECT_EQ(arena_bytes<int>(most_doubles + 1), saturated);
    EXPECT_EQ(arena_bytes<MKL_Complex16>(most_doubles / 2), saturated - 15);
    EXPECT_EQ(arena_bytes<MKL_Complex16>(most_doubles / 2 + 1), saturated);
    EXPECT_EQ(arena_bytes<MKL_Complex16>(~std::uint64_t{0}), saturated);
    EXPECT_EQ(lapack::guard_zone::with_zones(saturated), saturated);
}

TEST(ArenaArray, ASaturatedCountIsOutOfMemory)
{
    EfiCallContext context;
    for (const std::uint64_t count : {most_doubles, most_doubles + 1, ~std::uint64_t{0}})
        try {
            const ArenaArray<double> array(&context, count);
            ADD_FAILURE() << count;
        } catch (const Efi::NativeError& error) {
            EXPECT_STREQ(error.what(), "out of memory");
            EXPECT_EQ(error.index(), -1);
        }
}

TEST(ArenaArray, IsZerosInUsedMemory)
{
    for (const std::size_t count : {5U, 100000U}) {
        for (const double left_behind : {1.0, 0.0}) {
            EfiCallContext context;
            const ArenaArray<double> array(&context, count);
            EXPECT_EQ(std::count(array.get(), array.get() + count, 0.0), static_cast<std::ptrdiff_t>(count));
            std::fill_n(array.get(), count, left_behind);
        }
    }
}

class GuardZoneDeathTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (lapack::guard_zone::bytes() == 0)
            GTEST_SKIP() << "a build without guard zones";
        GTEST_FLAG_SET(death_test_style, "threadsafe");
    }
};

template <class T>
void write_at(std::ptrdiff_t place)
{
    mkl_auto_ptr<T> buffer;
    buffer.allocate(7)[place] = T(1);
}

TEST_F(GuardZoneDeathTest, OwnedBuffersAreLookedAt)
{
    write_at<double>(0);
    write_at<MKL_Complex16>(6);
    EXPECT_DEATH(write_at<double>(7), "LAPACK wrote beyond an array of 56 bytes");
    EXPECT_DEATH(write_at<double>(-1), "LAPACK wrote before an array of 56 bytes");
    EXPECT_DEATH(write_at<MKL_Complex16>(7), "LAPACK wrote beyond an array of 112 bytes");
    EXPECT_DEATH(write_at<int>(7), "LAPACK wrote beyond an array of 28 bytes");
    EXPECT_DEATH(write_at<int>(-1), "LAPACK wrote before an array of 28 bytes");
}

TEST_F(GuardZoneDeathTest, ASecondRequestLooksAtTheFirstBuffer)
{
    mkl_auto_ptr<double> buffer;
    double* const first = buffer.allocate(7);
    EXPECT_DEATH((first[7] = 1.0, buffer.allocate(3)), "LAPACK wrote beyond an array of 56 bytes");
}

template <class T>
void write_in_arena(std::size_t count, std::ptrdiff_t place)
{
    EfiCallContext context;
    const ArenaArray<T> array(&context, count);
    array.get()[place] = T(1);
}

TEST_F(GuardZoneDeathTest, ArraysOfTheArenaAreLookedAt)
{
    write_in_arena<double>(7, 6);
    EXPECT_DEATH(write_in_arena<double>(7, 7), "LAPACK wrote beyond an array of 56 bytes");
    EXPECT_DEATH(write_in_arena<double>(7, -1), "LAPACK wrote before an array of 56 bytes");
    EXPECT_DEATH(write_in_arena<double>(100000, 100000), "LAPACK wrote beyond an array of 800000 bytes");
    EXPECT_DEATH(write_in_arena<MKL_Complex16>(7, 7), "LAPACK wrote beyond an array of 112 bytes");
}

TEST_F(GuardZoneDeathTest, ResultsAreLookedAt)
{
    const auto write = [](std::ptrdiff_t place) { lapack::result_numbers(5)[place] = 1.0; };
    write(0);
    write(4);
    EXPECT_DEATH(write(5), "LAPACK wrote beyond an array of 40 bytes");
    EXPECT_DEATH(write(-1), "LAPACK wrote before an array of 40 bytes");
}

TEST_F(GuardZoneDeathTest, ARoutineThatWritesOneElementTooManyIsCaught)
{
    const Replaced<&lapack::Routines::dgetrf> writes(
        [](const int* m, const int* n, double* A, const int*, int*, int* info) {
            A[*m * *n] = 1.0;
            *info = 1; // an error passes on its way
        });
    const Qud::Handle A = matrices::random_real(4, 4, 1);
    EXPECT_DEATH(
        {
            EfiCallContext context;
            lapack::dinv(&context, *Qud::matrix_of(A));
        },
        "LAPACK wrote beyond an array of 128 bytes");
}

} // namespace
