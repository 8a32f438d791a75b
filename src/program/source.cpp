#include "program/source.hpp"

#include "worksheet/session.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace program {

namespace {

constexpr std::size_t chunk = std::size_t{1} << 16U;

/// A file that is open for reading, closed at the end unless it is standard input.
class OpenFile {
public:
    explicit OpenFile(const std::string& name)
        : m_descriptor(name == "-" ? STDIN_FILENO : ::open(name.c_str(), O_RDONLY | O_CLOEXEC))
    {
    }
    ~OpenFile()
    {
        if (m_descriptor > STDIN_FILENO)
            ::close(m_descriptor);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int descriptor() const { return m_descriptor; }
    std::size_t size() const
    {
        struct stat about {};
        return ::fstat(m_descriptor, &about) == 0 && about.st_size > 0 ? static_cast<std::size_t>(about.st_size) : 0;
    }

private:
    int m_descriptor;
};

/// Whether standard input has something to read at once, be it its end.
bool more_is_waiting()
{
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    return ::poll(&input, 1, 0) > 0;
}

} // namespace

std::optional<std::string> read_source(const std::string& file, std::string& failure)
{
    const OpenFile source(file);
    std::string text;
    if (source.descriptor() >= 0) {
        std::size_t filled = 0;
        text.resize(source.size() + chunk);
        for (;;) {
            const ssize_t count = ::read(source.descriptor(), text.data() + filled, text.size() - filled);
            if (count == 0) {
                text.resize(filled);
                return text;
            }
            if (count < 0 && errno != EINTR)
                break;
            filled += count < 0 ? 0 : static_cast<std::size_t>(count);
            if (text.size() - filled < chunk)
                text.resize(2 * text.size());
        }
    }
    failure = std::strerror(errno);
    return std::nullopt;
}

bool read_standard_input(const std::function<void(std::string_view)>& piece, std::string& failure)
{
    std::string text;           // what has come and is not handed over yet
    std::size_t unfinished = 0; // so much of it, looked through, ends inside a bracket
    std::string bytes(chunk, '\0');
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            failure = std::strerror(errno);
            return false;
        }
        if (count == 0) {
            if (!text.empty())
                piece(text);
            return true;
        }
        text.append(bytes, 0, static_cast<std::size_t>(count));
        const std::string_view lines = std::string_view(text).substr(0, text.rfind('\n') + 1);
        // A bracket over many megabytes is not looked through for each chunk, but whoever waits for an answer gets it.
        if (lines.empty() || (lines.size() < 2 * unfinished && more_is_waiting()))
            continue;
        unfinished = worksheet::is_unfinished(lines) ? lines.size() : 0;
        if (unfinished > 0)
            continue;
        piece(lines);
        text.erase(0, lines.size());
    }
}

} // namespace program
