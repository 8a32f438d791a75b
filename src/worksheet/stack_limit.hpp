#pragma once

#include <cstdint>

namespace worksheet {

/// How deep parser and evaluator may go on the stack of the running thread, with room left for the functions it calls.
class StackLimit {
public:
    /// Measures from the caller's frame on. Asks the system for the stack's bounds only when it has grown.
    StackLimit() noexcept;

    /// Whether the stack is used up as far as it may be.
    bool is_reached() noexcept
    {
        const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
        return here < m_floor && is_below_true_floor(here);
    }

private:
    bool is_below_true_floor(std::uintptr_t here) noexcept;

    std::uintptr_t m_floor; ///< stacks grow downwards
    bool m_is_true = false; ///< whether m_floor comes from the system
};

} // namespace worksheet
