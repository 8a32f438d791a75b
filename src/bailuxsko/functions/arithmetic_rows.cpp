#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise mult_raises[] = {
    {msg::must_be_scalar_or_matrix, 1},      {msg::must_be_scalar_or_matrix, 2},
    {msg::must_be_linear_algebra_matrix, 1}, {msg::must_be_linear_algebra_matrix, 2},
    {msg::array_size_mismatch, -1},          {msg::invalid_dimension, -1},
    {msg::matrix_unit_mismatch, -1},         {msg::floating_point_exception, 0},
};

constexpr Evl::Raise div_raises[] = {
    {msg::must_be_scalar_or_matrix, 1},
    {msg::must_be_scalar_or_matrix, 2},
    {msg::divide_by_zero, 2},
    {msg::array_size_mismatch, -1},
    {msg::must_be_linear_algebra_matrix, 1},
    {msg::invalid_dimension, -1},
    {msg::singular_matrix, -1},
    {msg::singularity, -1},
    {msg::matrix_unit_mismatch, -1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::Raise pwr_raises[] = {
    {msg::must_be_scalar_or_matrix, 1},
    {msg::must_be_scalar_or_matrix, 2},
    {msg::must_be_scalar, 2},
    {msg::must_be_vector, 2},
    {msg::must_be_dimless, 2},
    {msg::divide_by_zero, 2},
    {msg::must_be_square, 1},
    {msg::must_be_integer, 2},
    {msg::must_be_self_multiplicable, 1},
    {msg::must_be_linear_algebra_matrix, 1},
    {msg::domain_error, 1},
    {msg::matrix_too_big, 1},
    {msg::invalid_dimension, -1},
    {msg::singular_matrix, -1},
    {msg::singularity, -1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::Raise sqr_raises[] = {
    {msg::must_be_scalar_or_vector, 1}, {msg::must_be_scalar_or_matrix, 1},      {msg::floating_point_error, -1},
    {msg::must_be_square, 1},           {msg::must_be_linear_algebra_matrix, 1}, {msg::matrix_unit_mismatch, -1},
    {msg::invalid_dimension, -1},       {msg::floating_point_exception, 0},
};

constexpr Evl::Raise kronecker_raises[] = {
    {msg::must_be_matrix, 1},
    {msg::must_be_matrix, 2},
    {msg::must_be_scalar_or_matrix, 1},
    {msg::must_be_scalar_or_matrix, 2},
    {msg::must_be_linear_algebra_matrix, 1},
    {msg::must_be_linear_algebra_matrix, 2},
    {msg::array_size_mismatch, -1},
    {msg::invalid_dimension, -1},
    {msg::matrix_unit_mismatch, -1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::mult>({.name = "mult",
                            .params = "a, b",
                            .summary = "a * b: numbers, a number times every element, or the product of matrices; two "
                                       "columns of equal length have their inner product, the second one conjugated.",
                            .unit = "unit(a) * unit(b)",
                            .raises = mult_raises,
                            .example = "mult([1, 2; 3, 4] * kN, [1; 2] * m)"}),
    calling<&Matrix::div>({.name = "div",
                           .params = "a, b",
                           .summary = "a / b: a times the inverse of a square matrix b, else element by element.",
                           .unit = "unit(a) / unit(b)",
                           .raises = div_raises,
                           .example = "div([6 m; 9 m], 3 s)"}),
    calling<&Matrix::pwr>({.name = "pwr",
                           .params = "x, y",
                           .summary =
                               "x ^ y: numbers, a square matrix to a whole power, a column element by element, a "
                               "number to the power of every element of a column; a function f to the power n "
                               "is the function with the value f(...) ^ n.",
                           .unit = "unit(x) ^ y",
                           .raises = pwr_raises,
                           .example = "pwr([1, 1; 1, 0], 10)"}),
    calling<&Matrix::sqr>({.name = "sqr",
                           .params = "x",
                           .summary = "The square of a number, of every element of a column, or of a square matrix.",
                           .unit = "unit(x) ^ 2",
                           .raises = sqr_raises,
                           .example = "sqr([1 m; 2 m])"}),
    calling<&Matrix::kronecker>({.name = "kronecker",
                                 .params = "a, b",
                                 .summary = "The Kronecker product: block (i, j) is a(i, j) times the whole of b.",
                                 .unit = "unit(a) * unit(b)",
                                 .raises = kronecker_raises,
                                 .example = "kronecker([1, 2], [1; 1])"}),
};

} // namespace

std::span<const Evl::FunctionRow> arithmetic()
{
    return rows;
}

} // namespace Efi::families
