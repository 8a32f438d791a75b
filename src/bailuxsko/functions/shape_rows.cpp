#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/shape.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise needs_matrix[] = {{msg::must_be_matrix, 1}};
constexpr Evl::Raise needs_vector[] = {{msg::must_be_vector, 1}};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::rows>({.name = "rows",
                            .params = "M",
                            .summary = "Number of rows of M; 0 when M is not a matrix.",
                            .unit = "none",
                            .example = "rows([1, 2, 3; 4, 5, 6])"}),
    calling<&Matrix::cols>({.name = "cols",
                            .params = "M",
                            .summary = "Number of columns of M; 0 when M is not a matrix.",
                            .unit = "none",
                            .example = "cols([1, 2, 3; 4, 5, 6])"}),
    calling<&Matrix::length>({.name = "length",
                              .params = "v",
                              .summary = "Number of elements of the column v.",
                              .unit = "none",
                              .raises = needs_vector,
                              .example = "length([3; 1; 2])"}),
    calling<&Matrix::last>(
        {.name = "last",
         .params = "v",
         .summary = "Index of the last element of the column v, counted from the worksheet's origin.",
         .unit = "none",
         .raises = needs_vector,
         .example = "last([3; 1; 2])"}),
    calling<&Matrix::transpose>({.name = "transpose",
                                 .params = "M",
                                 .summary = "M with rows and columns exchanged; also written M'.",
                                 .unit = "each element keeps its unit",
                                 .raises = needs_matrix,
                                 .example = "transpose([1, 2; 3, 4] * m)"}),
    calling<&Matrix::cpMatrix>({.name = "cpMatrix",
                                .params = "M",
                                .summary = "A copy of M.",
                                .unit = "each element keeps its unit",
                                .raises = needs_matrix,
                                .example = "cpMatrix([1, 2; 3, 4] * m)"}),
};

} // namespace

std::span<const Evl::FunctionRow> shape()
{
    return rows;
}

} // namespace Efi::families
