#pragma once

#include "efiutl/api.hpp"

#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace Evl::Run {

/// The error that a worksheet's statement ends with: a message, the index of the offending argument
/// (1 the first; 0 the floating-point fault; -1 the call as a whole) and, for people, what was found there.
class BAILUXSKO_API AppException : public std::exception {
public:
    AppException(std::string message, int index, std::string detail = {})
        : m_message(std::move(message)), m_index(index), m_detail(std::move(detail))
    {
    }

    const char* what() const noexcept override { return m_message.c_str(); }
    const std::string& message() const noexcept { return m_message; }
    int index() const noexcept { return m_index; }
    /// Beside the exact message: a sentence part such as "row 2 has unit m, row 3 has unit s"; often empty.
    const std::string& detail() const noexcept { return m_detail; }

    /// Raises the error; does not return.
    [[noreturn]] static void Raise(std::string_view message, int index, std::string detail = {});

private:
    std::string m_message;
    int m_index;
    std::string m_detail;
};

} // namespace Evl::Run
