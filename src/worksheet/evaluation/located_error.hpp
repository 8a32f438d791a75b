#pragma once

#include "bailuxhost/error.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace worksheet {

/// What the evaluator makes of an error: it knows the worksheet function that raised it and, once it has left the
/// bodies of users' functions, the place in the statement.
class LocatedError final : public Evl::Run::AppException {
public:
    LocatedError(std::string message, int index, std::string function)
        : AppException(std::move(message), index), m_function(std::move(function))
    {
    }

    const std::string& function() const noexcept { return m_function; }

    bool is_placed() const noexcept { return m_is_placed; }
    void place(std::uint32_t offset) noexcept
    {
        m_offset = m_caret = offset;
        m_is_placed = true;
    }
    std::uint32_t offset() const noexcept { return m_offset; }

    // for people
    void point_at(std::uint32_t caret) noexcept { m_caret = caret; }
    std::uint32_t caret() const noexcept { return m_caret; }
    void say_found(std::string found) { m_found = std::move(found); }
    const std::string& found() const noexcept { return m_found; }
    void suggest(std::vector<std::string> names) { m_near_names = std::move(names); }
    const std::vector<std::string>& near_names() const noexcept { return m_near_names; }

private:
    std::string m_function;
    std::uint32_t m_offset = 0;
    std::uint32_t m_caret = 0;
    bool m_is_placed = false;
    std::string m_found;
    std::vector<std::string> m_near_names;
};

} // namespace worksheet
