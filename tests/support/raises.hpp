#pragma once

#include "efiutl/throw.hpp"

#include <concepts>
#include <ostream>
#include <string>

namespace support {

/// A message and an index, to be compared with what a native routine or an entry operation raises.
struct Raised {
    std::string message;
    int index = 0;
    std::string detail{}; ///< for people; does not take part in the comparison

    friend bool operator==(const Raised& a, const Raised& b) { return a.message == b.message && a.index == b.index; }
    friend std::ostream& operator<<(std::ostream& out, const Raised& raised)
    {
        return out << '"' << raised.message << "\" (" << raised.index << ')';
    }
};

/// What the call raises; an empty message if it returns.
template <std::invocable Call>
Raised raised_by(Call call)
{
    try {
        call();
    } catch (const Efi::NativeError& error) {
        return {.message = error.what(), .index = error.index()};
    }
    return {};
}

} // namespace support
