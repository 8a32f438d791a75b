#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/lu.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

constexpr Evl::Raise lu_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1},   {msg::must_be_square, -1},
    {msg::invalid_dimension, -1},    {msg::singular_matrix, -1}, {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    Evl::calling<&Matrix::lu>({.name = "lu",
                               .params = "A",
                               .summary = "P, L and U side by side, with P * A = L * U.",
                               .unit = "none",
                               .raises = lu_raises,
                               .example = "lu([4, 3; 6, 3])"}),
};

} // namespace

std::span<const Evl::FunctionRow> lu()
{
    return rows;
}

} // namespace Efi::families
