#pragma once

#include "bailuxhost/error.hpp"

#include <concepts>
#include <ostream>
#include <string>

namespace support {

/// A message and an index, to be compared with what an entry operation or a LAPACK driver raises.
struct HostRaised {
    std::string message;
    int index = 0;
    std::string detail; ///< for people; does not take part in the comparison

    friend bool operator==(const HostRaised& a, const HostRaised& b)
    {
        return a.message == b.message && a.index == b.index;
    }
    friend std::ostream& operator<<(std::ostream& out, const HostRaised& raised)
    {
        return out << '"' << raised.message << "\" (" << raised.index << ')';
    }
};

/// What the call raises as the host's error; an empty message if it returns.
template <std::invocable Call>
HostRaised host_raised_by(Call call)
{
    try {
        call();
    } catch (const Evl::Run::AppException& error) {
        return {.message = error.message(), .index = error.index(), .detail = error.detail()};
    }
    return {};
}

} // namespace support
