#include "bailuxsko/lapack/driver.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/thread_count.hpp"

#include <algorithm>
#include <limits>
#include <string>

namespace lapack {

namespace {

constexpr std::uint32_t largest_int = std::numeric_limits<int>::max();

} // namespace

DriverScope::DriverScope()
{
    routines().free_buffers();
    const std::uint32_t threads = Efi::MKL_NUM_THREADS.load(std::memory_order_relaxed);
    routines().set_num_threads(static_cast<int>(std::min(threads, largest_int)));
}

int dimension(std::uint64_t n)
{
    if (n > largest_int)
        Evl::Run::AppException::Raise(msg::matrix_too_big, 1);
    return static_cast<int>(n);
}

void refuse_empty(const Qud::MatVal& M)
{
    if (M.is_empty())
        Evl::Run::AppException::Raise(msg::invalid_dimension, -1);
}

void require_equal_rows(const Qud::MatVal& A, const Qud::MatVal& B)
{
    const auto shape = [](const Qud::MatVal& M) {
        return std::to_string(M.Rows()) + " by " + std::to_string(M.Cols());
    };
    if (A.Rows() != B.Rows())
        Evl::Run::AppException::Raise(msg::array_size_mismatch, -1, "A is " + shape(A) + ", B is " + shape(B));
}

void require_converged(int info)
{
    if (info != 0)
        Evl::Run::AppException::Raise(msg::not_converging, -1);
}

} // namespace lapack
