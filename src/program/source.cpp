#include "program/source.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
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

} // namespace program
