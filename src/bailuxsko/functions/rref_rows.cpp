#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/rref.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

constexpr Evl::Raise rref_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_real_matrix, 1},      {msg::invalid_dimension, -1},
    {msg::must_be_dimless, 1},       {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    Evl::calling<&Matrix::rref>({.name = "rref",
                                 .params = "A",
                                 .summary = "The reduced row echelon form.",
                                 .unit = "none",
                                 .raises = rref_raises,
                                 .example = "rref([1, 2, 3; 4, 5, 6])"}),
};

} // namespace

std::span<const Evl::FunctionRow> rref()
{
    return rows;
}

} // namespace Efi::families
