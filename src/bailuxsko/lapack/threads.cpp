#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/lock.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "efiutl/thread_count.hpp"

#include <limits>

namespace Efi::IntelMKL {

namespace {

/// @throws "must be positive integer" (1), for a count beyond 32-bit integers too
int as_thread_count(const Qud::Handle& value)
{
    const Qud::DimVal* const dimensioned = Qud::as_dimensioned(value);
    const std::optional<double> count = dimensioned ? dimensioned->isInt() : std::nullopt;
    if (!count || *count <= 0.0 || *count > std::numeric_limits<int>::max())
        Evl::Run::AppException::Raise(msg::must_be_positive_integer, 1);
    return static_cast<int>(*count);
}

} // namespace

Qud::Handle getMaxThreads()
{
    return in_host_call([] { return Qud::NumVal::make(lapack::MKL_Get_Max_Threads()); });
}

Qud::Handle setNumThreads(const Qud::Handle& count)
{
    return in_host_call([&] {
        const lapack::Lock lock(lapack::g_MKL_mutex);
        const std::uint32_t previous = MKL_NUM_THREADS.load(std::memory_order_relaxed);
        const int threads = as_thread_count(count);
        MKL_NUM_THREADS.store(static_cast<std::uint32_t>(threads), std::memory_order_relaxed);
        lapack::routines().set_num_threads(threads);
        return Qud::NumVal::make(previous);
    });
}

} // namespace Efi::IntelMKL
