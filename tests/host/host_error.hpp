#pragma once

#include "bailuxhost/error.hpp"

#include <concepts>
#include <ostream>
#include <string>

namespace host {

/// A message and an index, to be compared with what the host raises.
struct HostError {
    std::string message;
    int index = 0;

    bool operator==(const HostError&) const = default;
    friend std::ostream& operator<<(std::ostream& out, const HostError& error)
    {
        return out << '"' << error.message << "\" (" << error.index << ')';
    }
};

/// What the call raises; an empty message if it returns.
template <std::invocable Call>
HostError error_of(Call call)
{
    try {
        call();
    } catch (const Evl::Run::AppException& error) {
        return {.message = error.message(), .index = error.index()};
    }
    return {};
}

/// What the error of the call says to people; empty if it returns.
template <std::invocable Call>
std::string detail_of(Call call)
{
    try {
        call();
    } catch (const Evl::Run::AppException& error) {
        return error.detail();
    }
    return {};
}

} // namespace host
