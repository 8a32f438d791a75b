// Counts what an entry call asks of the heap, and refuses it. The program has a malloc of its own for that, so it is a
// program apart and is not built under sanitizers, which bring theirs.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/lu.hpp"
#include "bailuxsko/shape.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>

namespace {

constinit thread_local long requests = 0;
constinit thread_local long refused_request = 0; // the one that fails, counted down; 0: none

bool is_refused()
{
    ++requests;
    return refused_request > 0 && --refused_request == 0;
}

} // namespace

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names for what is replaced here
extern "C" void* __libc_malloc(std::size_t bytes);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t bytes);
// NOLINTEND(bugprone-reserved-identifier)

extern "C" void* malloc(std::size_t bytes)
{
    return is_refused() ? nullptr : __libc_malloc(bytes);
}

extern "C" int posix_memalign(void** block, std::size_t alignment, std::size_t bytes)
{
    *block = is_refused() ? nullptr : __libc_memalign(alignment, bytes);
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

/// n by n with 4 on the diagonal and 1 beside it.
Handle matrix(std::uint32_t n, bool complex)
{
    const std::size_t count = std::size_t{n} * n;
    Qud::FreshNumbers numbers = Qud::zero_numbers(count);
    for (std::size_t i = 0; i < n; ++i) {
        numbers[i * (n + 1)] = 4.0;
        if (i > 0)
            numbers[i * (n + 1) - 1] = 1.0;
    }
    return Qud::MatVal::make(n, n, numbers, complex ? Qud::zero_numbers(count) : nullptr);
}

Handle small_matrix(bool complex)
{
    return matrix(3, complex);
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
    // P, L and U of 3 by 3 fit into the value, those of 6 by 6 do not.
    const Handle real = small_matrix(false);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(real); }), 1) << "the value with its numbers";
    const Handle complex = small_matrix(true);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(complex); }), 1) << "the value with its numbers";
    const Handle larger = matrix(6, false);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(larger); }), 2) << "the value and its array";
    const Handle larger_complex = matrix(6, true);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(larger_complex); }), 3) << "the value and its two arrays";
}

TEST(Allocation, LargeCallsReuseWhatTheLastOneGaveBack)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(90000);
    for (std::size_t k = 0; k < 90000; ++k)
        numbers[k] = k % 301 == 0 ? 4.0 : 1.0 / static_cast<double>(k + 1);
    const Handle M = Qud::MatVal::make(300, 300, numbers);
    EXPECT_EQ(requests_of([&] { Efi::Matrix::lu(M); }), 2) << "the small value itself, and who owns its array";
}

/// The operation with its first request to the heap refused, then its second, and so on, until it gets all it asks for.
/// Each refusal must end in "out of memory", or in what the operation raises anyway.
template <class Operation>
void expect_out_of_memory(Operation operation, const std::string& raised_anyway)
{
    constexpr long endless = 1000;
    for (long k = 1; k < endless; ++k) {
        std::string message;
        bool got_all = false;
        const auto stop_refusing = [&got_all] { got_all = std::exchange(refused_request, 0) > 0; };
        refused_request = k;
        try {
            operation();
            stop_refusing();
        } catch (const Evl::Run::AppException& error) {
            stop_refusing();
            message = error.message();
        }
        if (got_all) {
            EXPECT_EQ(message, raised_anyway);
            return;
        }
        EXPECT_TRUE(message == "out of memory" || message == raised_anyway) << k << ": " << message;
    }
    ADD_FAILURE() << "the operation never ends";
}

TEST(Allocation, EveryRefusalIsAnError)
{
    const Handle M = small_matrix(true);
    expect_out_of_memory([&] { Efi::Matrix::lu(M); }, "");
    expect_out_of_memory([&] { Efi::Matrix::rows(M); }, "");
    expect_out_of_memory([&] { Efi::Matrix::transpose(M); }, "");
    expect_out_of_memory([&] { Efi::Matrix::cpMatrix(M); }, "");
}

TEST(Allocation, AnErrorWhoseMessageFindsNoRoomIsOutOfMemory)
{
    // Long messages do not fit into a string without the heap.
    const Handle M = small_matrix(false);
    const Handle empty = Qud::MatVal::empty();
    const auto fails = [](EfiCallContext*, double) -> double { Efi::Throw("non-positive definite matrix", -1); };
    double (*const worker)(EfiCallContext*, double) = fails;
    expect_out_of_memory([&] { Efi::in_call([&](Efi::Call& call) { return call.guarded(worker, 1.0); }); },
                         "non-positive definite matrix");
    expect_out_of_memory([&] { Efi::in_host_call([]() -> Handle { Efi::Throw("non-positive definite matrix", -1); }); },
                         "non-positive definite matrix");
    expect_out_of_memory([&] { Efi::Matrix::lu(empty); }, "invalid dimension");
    expect_out_of_memory([&] { Efi::Matrix::length(M); }, "must be vector");
}

} // namespace
