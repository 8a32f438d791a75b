#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/norms.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise norm_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1}, {msg::floating_point_exception, 0}};
constexpr Evl::Raise norm2_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1},
    {msg::invalid_dimension, -1},    {msg::overflow, -1},
    {msg::too_many_iterations, -1},  {msg::floating_point_exception, 0},
};
constexpr Evl::Raise cond_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1},           {msg::invalid_dimension, -1},
    {msg::singular_matrix, -1},      {msg::floating_point_exception, 0},
};

constexpr Evl::Raise cond2_raises[] = {
    {msg::must_be_scalar_matrix, 1},    {msg::must_be_square, 1}, {msg::invalid_dimension, -1},
    {msg::singular_matrix, -1},         {msg::overflow, -1},      {msg::too_many_iterations, -1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::norm1>({.name = "norm1",
                             .params = "M",
                             .summary = "The largest sum of a column's magnitudes, of a square matrix.",
                             .unit = "unit(M)",
                             .raises = norm_raises,
                             .example = "norm1([1, -2; 3, 4] * m)"}),
    calling<&Matrix::normi>({.name = "normi",
                             .params = "M",
                             .summary = "The largest sum of a row's magnitudes, of a square matrix.",
                             .unit = "unit(M)",
                             .raises = norm_raises,
                             .example = "normi([1, -2; 3, 4] * m)"}),
    calling<&Matrix::norme>({.name = "norme",
                             .params = "M",
                             .summary = "The Euclidean norm of a square matrix: the root of the sum of all squares.",
                             .unit = "unit(M)",
                             .raises = norm_raises,
                             .example = "norme([1, -2; 3, 4] * m)"}),
    calling<&Matrix::norm2>({.name = "norm2",
                             .params = "M",
                             .summary = "The spectral norm of a square matrix: its largest singular value.",
                             .unit = "unit(M)",
                             .raises = norm2_raises,
                             .example = "norm2([1, -2; 3, 4] * m)"}),
    calling<&Matrix::cond1>({.name = "cond1",
                             .params = "M",
                             .summary = "The condition of a matrix: norm1 of its strict inverse times its norm1.",
                             .unit = "none",
                             .raises = cond_raises,
                             .example = "cond1([1, 2; 3, 4])"}),
    calling<&Matrix::condi>({.name = "condi",
                             .params = "M",
                             .summary = "The condition of a matrix: normi of its strict inverse times its normi.",
                             .unit = "none",
                             .raises = cond_raises,
                             .example = "condi([1, 2; 3, 4])"}),
    calling<&Matrix::conde>({.name = "conde",
                             .params = "M",
                             .summary = "The condition of a matrix: norme of its strict inverse times its norme.",
                             .unit = "none",
                             .raises = cond_raises,
                             .example = "conde([1, 2; 3, 4])"}),
    calling<&Matrix::cond2>({.name = "cond2",
                             .params = "M",
                             .summary = "The condition of a matrix: its largest singular value over the smallest.",
                             .unit = "none",
                             .raises = cond2_raises,
                             .example = "cond2([1, 2; 3, 4])"}),
};

} // namespace

std::span<const Evl::FunctionRow> norms()
{
    return rows;
}

} // namespace Efi::families
