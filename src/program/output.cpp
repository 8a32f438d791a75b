#include "program/output.hpp"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

namespace program {

namespace {

constexpr unsigned narrowest_terminal = 20; // what reports less has not been told its size

/// The error number, 0 when all was written.
int write_all(int descriptor, std::string_view text) noexcept
{
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written >= 0)
            text.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR && errno != EAGAIN)
            return errno;
    }
    return 0;
}

} // namespace

void write_output(std::string_view text)
{
    const int failure = write_all(STDOUT_FILENO, text);
    if (failure == EPIPE)
        throw ReaderGone();
    if (failure != 0)
        throw OutputFailed(std::strerror(failure));
}

void write_error(std::string_view text) noexcept
{
    write_all(STDERR_FILENO, text);
}

std::size_t terminal_width(int descriptor, std::size_t otherwise)
{
    winsize size{};
    if (::isatty(descriptor) == 0 || ::ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col < narrowest_terminal)
        return otherwise;
    return size.ws_col;
}

bool wants_colours(int descriptor)
{
    const char* const no_color = std::getenv("NO_COLOR");
    if (no_color != nullptr && *no_color != '\0')
        return false;
    const char* const terminal = std::getenv("TERM");
    return ::isatty(descriptor) != 0 && terminal != nullptr && std::strcmp(terminal, "dumb") != 0;
}

} // namespace program
