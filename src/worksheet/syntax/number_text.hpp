#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Numbers as text, in worksheets, CSV files and JSON: correctly rounded, whatever the environment's language.
namespace worksheet {

struct ReadNumber {
    double value = 0.0;
    std::size_t length = 0; ///< characters read; 0 when no number begins there
};

/// The number without sign that begins the text: digits, a fraction, and an exponent where digits follow it; "5." and
/// ".5" are numbers. What is too large is inf, what is too small 0; denormals are read.
ReadNumber read_number(std::string_view text) noexcept;

/// Appends the shortest text that reads back to the same bits: "0.1", "1e+20", "-0", "NaN", "inf", "-inf".
void append_number(std::string& out, double value);

} // namespace worksheet
