#pragma once

#include "efiutl/api.hpp"

#include <cstddef>

namespace Efi {

/// Makes every arena that this thread constructs from now on fail at its k-th request (counted from 1) with
/// "out of memory", until the guard goes. Requests are carve, mk, allocate_array, allocate_uncleared, NewBuf and each
/// of the requests that cp consists of. An arena looks once, when it is made, so that a request costs one decrement.
class BAILUXSKO_API FailArenaAt {
public:
    explicit FailArenaAt(std::size_t k) noexcept;
    ~FailArenaAt();
    FailArenaAt(const FailArenaAt&) = delete;
    FailArenaAt& operator=(const FailArenaAt&) = delete;

private:
    std::size_t m_before;
};

/// What the calling thread's arenas hold at the moment: both are 0 when no call is running.
struct LiveArenas {
    long m_arenas; ///< arenas alive
    long m_blocks; ///< blocks beyond the arenas' own first ones

    bool operator==(const LiveArenas&) const = default;
};
BAILUXSKO_API LiveArenas live_arenas() noexcept;

} // namespace Efi
