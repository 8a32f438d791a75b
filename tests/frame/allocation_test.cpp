// Counts what an entry call asks of the heap. The program has a malloc of its own for that, so it is a program apart
// and is not built under sanitizers, which bring theirs.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/lu.hpp"
#include "bailuxsko/shape.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

namespace {

constinit thread_local long requests = 0;

} // namespace

extern "C" void* __libc_malloc(std::size_t bytes);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t bytes);

extern "C" void* malloc(std::size_t bytes)
{
    ++requests;
    return __libc_malloc(bytes);
}

extern "C" int posix_memalign(void** block, std::size_t alignment, std::size_t bytes)
{
    ++requests;
    *block = __libc_memalign(alignment, bytes);
    return *block ? 0 : 12;
}

namespace {

using Qud::Handle;

template <class Operation>
long requests_of(Operation operation)
{
    operation(); // what is made once and stays
    const long before = requests;
    operation();
    return requests - before;
}

Handle small_matrix(bool complex)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(9);
    const double values[] = {2, 1, 0, 1, 3, 1, 0, 1, 4};
    std::copy(values, values + 9, numbers.get());
    return Qud::MatVal::make(3, 3, numbers, complex ? Qud::zero_numbers(9) : nullptr);
}

TEST(Allocation, TheCountIsSeen)
{
    EXPECT_EQ(requests_of([] { Qud::NumVal::make(1.0); }), 1);
}

TEST(Allocation, AShapeQueryAllocatesItsResultOnly)
{
    const Handle M = small_matrix(false);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::rows(M); }), 1);
}

TEST(Allocation, ASmallFactorisationAllocatesItsResultOnly)
{
    const Handle real = small_matrix(false);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(real); }), 2) << "the value and its array";
    const Handle complex = small_matrix(true);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(complex); }), 3) << "the value and its two arrays";
}

TEST(Allocation, LargeCallsReuseWhatTheLastOneGaveBack)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(90000);
    for (std::size_t k = 0; k < 90000; ++k)
        numbers[k] = k % 301 == 0 ? 4.0 : 1.0 / static_cast<double>(k + 1);
    const Handle M = Qud::MatVal::make(300, 300, numbers);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(M); }), 1) << "only the small value itself is new";
}

} // namespace
