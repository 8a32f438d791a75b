#pragma once

#include "efiutl/api.hpp"

#include <exception>

namespace Efi {

/// What a native routine raises: a fixed text and the index of the offending argument
/// (1 the first argument, 0 the floating-point fault, -1 the call as a whole).
/// It crosses native frames only: the entry frame turns it into the host's error once the call's memory is gone.
class BAILUXSKO_API NativeError final : public std::exception {
public:
    NativeError(const char* message, int index) noexcept : m_message(message), m_index(index) {}
    const char* what() const noexcept override { return m_message; }
    int index() const noexcept { return m_index; }

private:
    const char* m_message; // static storage: raising "out of memory" must not ask for memory
    int m_index;
};

/// Abandons the running call with a message (of static storage) and an argument index.
[[noreturn]] BAILUXSKO_API void Throw(const char* message, int index);

} // namespace Efi
