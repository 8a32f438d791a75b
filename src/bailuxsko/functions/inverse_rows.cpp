#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/inverse.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise inv_raises[] = {
    {msg::must_be_scalar_matrix, 1},    {msg::must_be_square, 1},   {msg::must_be_linear_algebra_matrix, 1},
    {msg::invalid_dimension, -1},       {msg::singular_matrix, -1}, {msg::singularity, -1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::inv>({.name = "inv",
                           .params = "M",
                           .summary = "The inverse of a square matrix, of one unit or with a unit per row and column.",
                           .unit = "unit(M) ^ -1",
                           .raises = inv_raises,
                           .example = "inv([2, 1; 1, 1] * m)"}),
};

} // namespace

std::span<const Evl::FunctionRow> inverse()
{
    return rows;
}

} // namespace Efi::families
