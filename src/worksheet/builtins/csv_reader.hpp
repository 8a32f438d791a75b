#pragma once

#include "bailuxhost/value.hpp"

#include <cstddef>
#include <exception>
#include <string_view>

namespace worksheet {

/// A text in a CSV file that is not UTF-8.
struct NotUtf8 final : std::exception {
    explicit NotUtf8(std::size_t where) noexcept : line(where) {}
    const char* what() const noexcept override { return "not UTF-8"; }
    std::size_t line; ///< from 1
};

/// The cells of a CSV file: a cell that is a number becomes one, quoted or not, any other a text; short rows are filled
/// with empty texts, no rows are the 0-by-0 matrix. Lines end with LF or CR LF; a byte-order mark is skipped; a quoted
/// cell that is not closed runs to the end.
/// @throws NotUtf8, std::bad_alloc
/// @see RFC 4180
Qud::Handle matrix_from_csv(std::string_view content);

} // namespace worksheet
