#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace lapack {

/// The bytes of `count` elements. They are kept within a signed 32-bit count: this limit is part of the contract.
/// @throws "out of memory" (-1) for 2 GiB and more
BAILUXSKO_API std::size_t buffer_bytes(std::uint64_t count, std::size_t element_bytes);

/// Room for a real result that a routine fills in place, content undefined: the solved array is the result's array.
/// Guard zones, where there are any, are looked at when it goes.
/// @throws "out of memory" (-1)
BAILUXSKO_API Qud::FreshNumbers result_numbers(std::uint64_t count);

namespace detail {
BAILUXSKO_API void* take_buffer(std::size_t bytes); ///< @throws "out of memory" (-1)
BAILUXSKO_API void give_buffer(void* buffer, std::size_t bytes) noexcept;
} // namespace detail

/// Owns one LAPACK buffer, aligned to 16 bytes at least, between guard zones in debug builds, and frees it on every
/// exit. T is double, MKL_Complex16 or int.
template <class T>
class mkl_auto_ptr {
public:
    mkl_auto_ptr() noexcept = default;
    mkl_auto_ptr(const mkl_auto_ptr&) = delete;
    mkl_auto_ptr& operator=(const mkl_auto_ptr&) = delete;
    ~mkl_auto_ptr() { detail::give_buffer(m_buffer, m_bytes); }

    /// `count` elements of zeros. @throws "out of memory" (-1), also for 2 GiB and more
    T* allocate(std::uint64_t count)
    {
        T* const buffer = allocate_uncleared(count);
        std::memset(static_cast<void*>(buffer), 0, buffer_bytes(count, sizeof(T)));
        return buffer;
    }

    /// The same without the zeros, for a buffer that is written before it is read.
    T* allocate_uncleared(std::uint64_t count)
    {
        const std::size_t bytes = buffer_bytes(count, sizeof(T));
        detail::give_buffer(std::exchange(m_buffer, nullptr), m_bytes);
        m_buffer = static_cast<T*>(detail::take_buffer(bytes));
        m_bytes = bytes;
        return m_buffer;
    }

    T* get() const noexcept { return m_buffer; }

private:
    T* m_buffer = nullptr;
    std::size_t m_bytes = 0;
};

/// Releases the provider's internal buffers when the scope ends.
class BAILUXSKO_API mkl_auto_rel {
public:
    mkl_auto_rel() noexcept = default;
    mkl_auto_rel(const mkl_auto_rel&) = delete;
    mkl_auto_rel& operator=(const mkl_auto_rel&) = delete;
    ~mkl_auto_rel();
};

} // namespace lapack
