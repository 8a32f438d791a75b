#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/sorting.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise sort_raises[] = {{msg::must_be_vector, 1}, {msg::vector_must_be_uniform_or_strings, 1}};

constexpr Evl::Raise csort_raises[] = {
    {msg::must_be_matrix, 1},
    {msg::must_be_integer, 2},
    {msg::must_be_dimless, 2},
    {msg::index_out_of_bounds, 2},
    {msg::col_must_be_uniform_or_strings, 1},
};

constexpr Evl::Raise rsort_raises[] = {
    {msg::must_be_matrix, 1},
    {msg::must_be_integer, 2},
    {msg::must_be_dimless, 2},
    {msg::index_out_of_bounds, 2},
    {msg::row_must_be_uniform_or_strings, 1},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::sort>(
        {.name = "sort",
         .params = "v",
         .summary = "The column v in ascending order: numbers of one unit by their real part, or texts.",
         .unit = "unit(v)",
         .raises = sort_raises,
         .example = "sort([3; 1; 2] * m)"}),
    calling<&Matrix::csort>({.name = "csort",
                             .params = "M, j",
                             .summary = "The rows of M in ascending order of column j, counted from the worksheet's "
                                        "origin.",
                             .unit = "each element keeps its unit",
                             .raises = csort_raises,
                             .example = "csort([3, \"c\"; 1, \"a\"; 2, \"b\"], 0)"}),
    calling<&Matrix::rsort>({.name = "rsort",
                             .params = "M, i",
                             .summary = "The columns of M in ascending order of row i, counted from the worksheet's "
                                        "origin.",
                             .unit = "each element keeps its unit",
                             .raises = rsort_raises,
                             .example = "rsort([3, 1, 2; 30, 10, 20], 0)"}),
};

} // namespace

std::span<const Evl::FunctionRow> sorting()
{
    return rows;
}

} // namespace Efi::families
