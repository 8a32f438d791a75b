#pragma once

#include "efiutl/api.hpp"

#include <cstddef>

/// The service functions that drivers expect of the LAPACK provider, mapped onto the one that is linked: OpenBLAS, or
/// reference LAPACK, which has no threads and only remembers how many were asked for.
namespace lapack {

/// The thread count last set; at load the number of processors.
BAILUXSKO_API int MKL_Get_Max_Threads() noexcept;

/// Lets the provider work on `count` threads from the next call on; a count below 1 changes nothing. Any count is
/// remembered, but the provider is told at most `most_provider_threads()`, the number of processors: OpenBLAS's threads
/// wait busily for each other, and more of them than processors turn milliseconds into seconds.
BAILUXSKO_API void MKL_Set_Num_Threads(int count) noexcept;
BAILUXSKO_API int most_provider_threads() noexcept;

/// Whether the provider may take fewer threads than asked for. Neither provider adjusts by itself, so both answers are
/// the same.
BAILUXSKO_API void MKL_Set_Dynamic(int on) noexcept;

/// Releases the provider's internal buffers. OpenBLAS keeps one per thread for good and offers no way to give them
/// back.
BAILUXSKO_API void MKL_Free_Buffers() noexcept;

/// `bytes` bytes of whatever content, aligned to `alignment` (a power of two) and to a cache line; null when they
/// cannot be had. 16 bytes beyond may be read, as OpenBLAS's complex matrix-vector product does. Large blocks are the
/// calling thread's kept ones.
BAILUXSKO_API void* MKL_malloc(std::size_t bytes, int alignment) noexcept;
BAILUXSKO_API void MKL_free(void* block) noexcept;

} // namespace lapack
