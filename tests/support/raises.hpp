#pragma once

#include "efiutl/throw.hpp"

#include <concepts>
#include <ostream>
#include <string>

namespace support {

/// A message and an index, to be compared with what a native routine raises.
struct Raised {
    std::string message;
    int index = 0;

    bool operator==(const Raised&) const = default;
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
