#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "efiutl/messages.hpp"
#include "worksheet/builtins/csv_reader.hpp"
#include "worksheet/builtins/families.hpp"
#include "worksheet/syntax/number_text.hpp"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace worksheet {

namespace {

using Evl::Run::AppException;

struct Close {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

const std::string& as_file_name(const Qud::Handle& value, int index)
{
    const Qud::StrVal* const text = Qud::as_text(value);
    if (text == nullptr)
        AppException::Raise(msg::must_be_string, index);
    return text->text();
}

std::string path_of(const Evl::Settings& host, const std::string& name)
{
    return name.starts_with('/') ? name : std::string(host.folder) + '/' + name;
}

[[noreturn]] void raise_cannot_read(const std::string& name, std::string reason)
{
    AppException::Raise(msg::cannot_read_file + name, 1, std::move(reason));
}

struct Content {
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
};

/// The whole file, or what a pipe gives until its end. Devices, which may never end, are refused.
Content read_file(const std::string& path, const std::string& name)
{
    const File file(name.find('\0') == std::string::npos ? std::fopen(path.c_str(), "rbe") : nullptr);
    struct stat status = {};
    if (file == nullptr || fstat(fileno(file.get()), &status) != 0)
        raise_cannot_read(name, std::strerror(errno));
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
        raise_cannot_read(name, "it is no file");
    std::setvbuf(file.get(), nullptr, _IONBF, 0);

    std::size_t room = static_cast<std::size_t>(status.st_size) + 1;
    Content content{.bytes = std::make_unique_for_overwrite<char[]>(room)};
    for (;;) {
        const std::size_t read = std::fread(content.bytes.get() + content.size, 1, room - content.size, file.get());
        content.size += read;
        if (content.size < room)
            break;
        auto larger = std::make_unique_for_overwrite<char[]>(2 * room);
        std::memcpy(larger.get(), content.bytes.get(), content.size);
        content.bytes = std::move(larger);
        room *= 2;
    }
    if (std::ferror(file.get()) != 0)
        raise_cannot_read(name, std::strerror(errno));
    return content;
}

Qud::Handle read_csv(const Evl::Settings& host, const Qud::Handle& file)
{
    const std::string& name = as_file_name(file, 1);
    const Content content = read_file(path_of(host, name), name);
    try {
        return matrix_from_csv({content.bytes.get(), content.size});
    } catch (const NotUtf8& fault) {
        raise_cannot_read(name, fmt::format("line {} of {} is not UTF-8", fault.line, name));
    }
}

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// Quotes also keep a text's own byte-order mark from being skipped as the file's.
void append_csv_text(std::string& out, const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos && !text.starts_with(byte_order_mark)) {
        out += text;
        return;
    }
    out += '"';
    for (const char c : text)
        out.append(c == '"' ? 2 : 1, c);
    out += '"';
}

/// The matrix row by row, to be written piece by piece.
void append_csv_row(std::string& out, const Qud::MatVal& M, std::size_t i)
{
    for (std::size_t j = 0; j < M.Cols(); ++j) {
        if (j > 0)
            out += ',';
        if (const Qud::Handle* const entry = M.entry(i, j))
            append_csv_text(out, Qud::as_text(*entry)->text());
        else
            append_number(out, M.real(i, j));
    }
    out += '\n';
}

const Qud::MatVal& as_table(const Qud::Handle& value)
{
    const Qud::MatVal* const M = Qud::matrix_of(value);
    if (M == nullptr)
        AppException::Raise(msg::must_be_matrix, 1);
    if (M->HasImag())
        AppException::Raise(msg::must_be_real_matrix, 1);
    for (std::size_t j = 0; M->has_entries() && j < M->Cols(); ++j)
        for (std::size_t i = 0; i < M->Rows(); ++i)
            if (const Qud::Handle* const entry = M->entry(i, j); entry != nullptr && Qud::as_text(*entry) == nullptr)
                AppException::Raise(msg::may_not_be_nested, 1);
    return *M;
}

Qud::Handle write_csv(const Evl::Settings& host, const Qud::Handle& matrix, const Qud::Handle& file)
{
    constexpr std::size_t piece = 1 << 20;
    const Qud::MatVal& M = as_table(matrix);
    const std::string& name = as_file_name(file, 2);
    const auto raise = [&name] { AppException::Raise(msg::cannot_write_file + name, 2, std::strerror(errno)); };
    File out(name.find('\0') == std::string::npos ? std::fopen(path_of(host, name).c_str(), "wbe") : nullptr);
    if (out == nullptr)
        raise();
    std::string text;
    for (std::size_t i = 0; i < M.Rows(); ++i) {
        append_csv_row(text, M, i);
        if (text.size() < piece && i + 1 < M.Rows())
            continue;
        if (std::fwrite(text.data(), 1, text.size(), out.get()) != text.size())
            raise();
        text.clear();
    }
    if (std::fclose(out.release()) != 0)
        raise();
    return Qud::NumVal::make(M.Rows());
}

constexpr std::array read_raises{Evl::Raise{msg::must_be_string, 1}, Evl::Raise{msg::cannot_read_file, 1}};
constexpr std::array write_raises{
    Evl::Raise{msg::must_be_matrix, 1}, Evl::Raise{msg::must_be_real_matrix, 1}, Evl::Raise{msg::may_not_be_nested, 1},
    Evl::Raise{msg::must_be_string, 2}, Evl::Raise{msg::cannot_write_file, 2},
};

constexpr std::array rows{
    Evl::calling<&read_csv>({
        .name = "read_csv",
        .params = "file",
        .summary = "The cells of a CSV file as a matrix of numbers and texts; short rows are filled with empty texts.",
        .unit = "none",
        .raises = read_raises,
        .example = "read_csv(\"points.csv\")",
        .family = "Files",
    }),
    Evl::calling<&write_csv>({
        .name = "write_csv",
        .params = "M, file",
        .summary = "Writes M as a CSV file, in SI numbers that read back to the same bits; gives the number of rows.",
        .unit = "none",
        .raises = write_raises,
        .example = "write_csv([\"x\", \"y\"; 1, 2.5], \"/dev/null\")",
        .family = "Files",
    }),
};

} // namespace

std::span<const Evl::FunctionRow> csv_functions()
{
    return rows;
}

} // namespace worksheet
