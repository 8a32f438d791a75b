// augment and stack: sizes first, then one pass that copies columns of whole blocks.
#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"
#include "bailuxsko/construction.hpp"
#include "bailuxsko/frame/call.hpp"
#include "efiutl/messages.hpp"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>

namespace Efi::Matrix {

namespace {

enum class Direction { side_by_side, top_to_bottom };

/// The size of a join: all parts agree `across`, and add up `along`.
struct Extent {
    std::uint64_t across = 0;
    std::uint64_t along = 0;
};

template <Direction direction>
Extent extent_of(const Qud::MatVal& M)
{
    if constexpr (direction == Direction::side_by_side)
        return {.across = M.Rows(), .along = M.Cols()};
    else
        return {.across = M.Cols(), .along = M.Rows()};
}

template <Direction direction>
Extent joined_extent(std::span<const Qud::Handle> values)
{
    using Evl::Run::AppException;
    Extent total;
    int k = 0;
    for (const Qud::Handle& value : values) {
        ++k;
        if (const Qud::MatVal* const M = Qud::matrix_of(value)) {
            const Extent part = extent_of<direction>(*M);
            if (total.across == 0)
                total.across = part.across;
            else if (total.across != part.across)
                AppException::Raise(msg::array_size_mismatch, k);
            total.along += part.along;
        } else if (Qud::as_number(value) || Error::is_string(value)) {
            if (total.across > 1)
                AppException::Raise(msg::argument_dimension_mismatch, k);
            total.across = 1;
            total.along += 1;
        } else {
            AppException::Raise(msg::must_be_string_scalar_or_array, k);
        }
    }
    if (total.along > std::numeric_limits<std::uint32_t>::max())
        throw std::bad_alloc();
    return total;
}

/// Real matrices of plain numbers, all of one unit: their columns can be copied as they are.
bool are_plain(std::span<const Qud::Handle> values)
{
    const Qud::MatVal* const first = Qud::matrix_of(values.front());
    for (const Qud::Handle& value : values) {
        const Qud::MatVal* const M = Qud::matrix_of(value);
        if (!M || M->is_empty() || M->HasImag() || !M->IsUniformScalar() || M->m_dim != first->m_dim)
            return false;
    }
    return !values.empty();
}

Qud::Handle join_plain(std::span<const Qud::Handle> values, std::uint32_t rows, std::uint32_t cols, Direction direction)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(Qud::element_count(rows, cols));
    double* corner = numbers.get();
    for (const Qud::Handle& value : values) {
        const Qud::MatVal& M = *Qud::matrix_of(value);
        for (std::size_t j = 0; j < M.Cols(); ++j)
            std::memcpy(corner + j * rows, &M.m_rarr[M.storage_index(0, j)], M.Rows() * sizeof(double));
        corner += direction == Direction::side_by_side ? std::size_t{rows} * M.Cols() : M.Rows();
    }
    return Qud::MatVal::make(rows, cols, std::move(numbers), nullptr, Qud::matrix_of(values.front())->m_dim);
}

Qud::Handle join_any(std::span<const Qud::Handle> values, std::uint32_t rows, std::uint32_t cols, Direction direction)
{
    Qud::MatBuilder result(rows, cols);
    std::size_t row = 0;
    std::size_t col = 0;
    for (const Qud::Handle& value : values) {
        const Qud::MatVal* const M = Qud::matrix_of(value);
        if (M)
            result.set_block(row, col, *M);
        else
            result.set(row, col, value);
        if (direction == Direction::side_by_side)
            col += M ? M->Cols() : 1;
        else
            row += M ? M->Rows() : 1;
    }
    return result.finish();
}

template <Direction direction>
Qud::Handle joined(std::span<const Qud::Handle> values)
{
    return in_host_call([&] {
        const Extent total = joined_extent<direction>(values);
        const auto across = static_cast<std::uint32_t>(total.across);
        const auto along = static_cast<std::uint32_t>(total.along);
        const std::uint32_t rows = direction == Direction::side_by_side ? across : along;
        const std::uint32_t cols = direction == Direction::side_by_side ? along : across;
        return are_plain(values) ? join_plain(values, rows, cols, direction) : join_any(values, rows, cols, direction);
    });
}

} // namespace

Qud::Handle augment(std::span<const Qud::Handle> values)
{
    return joined<Direction::side_by_side>(values);
}

Qud::Handle stack(std::span<const Qud::Handle> values)
{
    return joined<Direction::top_to_bottom>(values);
}

} // namespace Efi::Matrix
