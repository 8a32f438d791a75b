#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/construction.hpp"
#include "bailuxsko/frame/call.hpp"
#include "efiutl/messages.hpp"

#include <cstddef>
#include <cstdint>

namespace Efi::Matrix {

namespace {

/// A whole number counted from 0, of whatever size.
double as_offset(const Qud::Handle& value, Qud::Origin origin, int index)
{
    return Error::as_integer(value, index) - origin.value;
}

std::size_t within(double offset, std::uint32_t count, int index)
{
    if (!(offset >= 0.0 && offset < count))
        Evl::Run::AppException::Raise(msg::invalid_dimension, index);
    return static_cast<std::size_t>(offset);
}

/// Rows or columns from `first` to `last`, counting down when the first is the larger.
struct Range {
    std::size_t first;
    std::size_t last;

    bool is_ascending() const { return first <= last; }
    std::size_t count() const { return (is_ascending() ? last - first : first - last) + 1; }
    std::size_t operator[](std::size_t k) const { return is_ascending() ? first + k : first - k; }
};

Qud::Handle flipped(const Qud::MatVal& M, const Range& rows, const Range& cols)
{
    Qud::GrowableColumn elements;
    elements.reserve(rows.count() * cols.count());
    for (std::size_t j = 0; j < cols.count(); ++j)
        for (std::size_t i = 0; i < rows.count(); ++i)
            elements.PushRaw(M, rows[i], cols[j]);
    return elements.reshape(static_cast<std::uint32_t>(rows.count()), static_cast<std::uint32_t>(cols.count()));
}

} // namespace

Qud::Handle submatrix(Qud::Origin origin, const Qud::Handle& M, const Qud::Handle& ir, const Qud::Handle& jr,
                      const Qud::Handle& ic, const Qud::Handle& jc)
{
    return in_host_call([&] {
        const Qud::MatVal& source = Error::as_matrix(M, msg::must_be_matrix, 1);
        const double first_row = as_offset(ir, origin, 2);
        const double last_row = as_offset(jr, origin, 3);
        const double first_col = as_offset(ic, origin, 4);
        const double last_col = as_offset(jc, origin, 5);
        const Range rows{.first = within(first_row, source.Rows(), 2), .last = within(last_row, source.Rows(), 3)};
        const Range cols{.first = within(first_col, source.Cols(), 4), .last = within(last_col, source.Cols(), 5)};
        if (rows.is_ascending() && cols.is_ascending())
            return source.SubMatrix(rows.first, rows.last, cols.first, cols.last);
        return flipped(source, rows, cols);
    });
}

} // namespace Efi::Matrix
