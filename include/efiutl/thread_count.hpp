#pragma once

#include "efiutl/api.hpp"

#include <atomic>
#include <cstdint>

namespace utl {

/// The processors that this process may run on, at least 1: an affinity mask counts.
BAILUXSKO_API std::uint32_t GetNumberOfProcessors() noexcept;

} // namespace utl

namespace Efi {

/// How many threads every LAPACK driver asks for: one value for the process, shared with the host's other function
/// libraries, at first the number of processors. Relaxed order is enough: the number stands for itself.
BAILUXSKO_API extern std::atomic<std::uint32_t> MKL_NUM_THREADS;

} // namespace Efi
