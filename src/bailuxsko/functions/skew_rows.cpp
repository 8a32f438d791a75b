#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/skew.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise skew_raises[] = {
    {msg::must_be_uniform_scalar_matrix, Evl::Raise::any_index},
    {msg::unit_mismatch, Evl::Raise::any_index},
    {msg::must_be_scalar_or_matrix, Evl::Raise::any_index},
    {msg::not_enough_sample_points, -1},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::skew>(
        {.name = "skew",
         .params = "x, ...",
         .summary = "The sample skewness of all numbers of the arguments: n / ((n - 1) (n - 2)) times the sum of the "
                    "cubes of the deviations from the mean in standard deviations.",
         .unit = "none",
         .raises = skew_raises,
         .example = "skew([1; 2; 10] * m)"},
        1),
};

} // namespace

std::span<const Evl::FunctionRow> statistics()
{
    return rows;
}

} // namespace Efi::families
