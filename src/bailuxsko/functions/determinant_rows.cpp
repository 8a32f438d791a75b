#include "bailuxsko/determinant.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise abs_raises[] = {
    {msg::must_be_scalar_or_matrix, 1},
    {msg::must_be_square, 1},
    {msg::must_be_scalar_matrix, 1},
    {msg::must_be_linear_algebra_matrix, 1},
};
constexpr Evl::Raise det_f_raises[] = {
    {msg::must_be_matrix, 1},
    {msg::must_be_square, 1},
    {msg::must_be_linear_algebra_matrix, 1},
};
constexpr Evl::Raise abs_f_raises[] = {{msg::must_be_scalar, 1}};
constexpr Evl::Raise norm_f_raises[] = {{msg::must_be_vector, 1}, {msg::must_be_scalar_matrix, 1}};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::det>({.name = "det",
                           .params = "x",
                           .summary = "The determinant of a square matrix; the length of a column; the magnitude of a "
                                      "number. The same as abs.",
                           .unit = "unit(x) ^ n of a determinant, else unit(x)",
                           .raises = abs_raises,
                           .example = "det([1, 2; 3, 4] * m)"}),
    calling<&Matrix::abs>({.name = "abs",
                           .params = "x",
                           .summary = "The magnitude of a number; the length of a column; the determinant of another "
                                      "square matrix.",
                           .unit = "unit(x), of a determinant unit(x) ^ n",
                           .raises = abs_raises,
                           .example = "abs([3; 4] * N)"}),
    calling<&Matrix::det_f>({.name = "det_f",
                             .params = "M",
                             .summary = "The determinant of a square matrix, of a 1-by-1 one its element.",
                             .unit = "unit(M) ^ n",
                             .raises = det_f_raises,
                             .example = "det_f([-3])"}),
    calling<&Matrix::abs_f>({.name = "abs_f",
                             .params = "x",
                             .summary = "The magnitude of a number.",
                             .unit = "unit(x)",
                             .raises = abs_f_raises,
                             .example = "abs_f(3 + 4i)"}),
    calling<&Matrix::norm_f>({.name = "norm_f",
                              .params = "v",
                              .summary = "The length of a column.",
                              .unit = "unit(v)",
                              .raises = norm_f_raises,
                              .example = "norm_f([3; 4] * m)"}),
};

} // namespace

std::span<const Evl::FunctionRow> determinant()
{
    return rows;
}

} // namespace Efi::families
