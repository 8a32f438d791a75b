#pragma once

#include "bailuxsko/lapack/guard_zone.hpp"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lapack {

/// An array of zeros for LAPACK from the heap, for a driver that keeps it apart from the call's arena; between guard
/// zones in debug builds.
template <class T>
class HeapArray {
public:
    /// @throws std::bad_alloc
    explicit HeapArray(std::uint64_t count)
        : m_bytes(count * sizeof(T)), m_block(guard_zone::with_zones(m_bytes)),
          m_first(static_cast<T*>(guard_zone::lay(m_block.data(), m_bytes)))
    {
    }

    HeapArray(const HeapArray&) = delete;
    HeapArray& operator=(const HeapArray&) = delete;
    ~HeapArray() { guard_zone::check(m_first, m_bytes); }

    T* get() const noexcept { return m_first; }

private:
    std::size_t m_bytes;
    std::vector<std::byte> m_block;
    T* m_first;
};

} // namespace lapack
