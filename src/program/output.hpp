#pragma once

#include <cstddef>
#include <stdexcept>
#include <string_view>

namespace program {

/// Nobody reads standard output any more (`| head`): there is no reason to go on.
class ReaderGone : public std::exception {};

/// Standard output cannot take the results: a full disk, a closed descriptor.
class OutputFailed : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Writes all of the text to standard output at once, past every buffer.
/// @throws ReaderGone, OutputFailed
void write_output(std::string_view text);

/// Writes all of the text to standard error; what cannot be written is lost.
void write_error(std::string_view text) noexcept;

/// The cells of a line of the terminal behind a descriptor; `otherwise` when there is none.
std::size_t terminal_width(int descriptor, std::size_t otherwise);

/// Whether to colour what goes to a descriptor: a terminal that can, and no NO_COLOR in the environment.
bool wants_colours(int descriptor);

} // namespace program
