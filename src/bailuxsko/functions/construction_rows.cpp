#include "bailuxsko/construction.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise matrix_raises[] = {
    {msg::must_be_positive_integer, 1},
    {msg::must_be_positive_integer, 2},
    {msg::matrix_too_big, 1},
    {msg::matrix_too_big, 2},
    {msg::must_be_function_of_two_variables, 3},
    {msg::must_be_string_scalar_or_array, 3},
};

constexpr Evl::Raise submatrix_raises[] = {
    {msg::must_be_matrix, 1},    {msg::must_be_integer, 2},   {msg::must_be_integer, 3},
    {msg::must_be_integer, 4},   {msg::must_be_integer, 5},   {msg::invalid_dimension, 2},
    {msg::invalid_dimension, 3}, {msg::invalid_dimension, 4}, {msg::invalid_dimension, 5},
};

constexpr Evl::Raise join_raises[] = {
    {msg::array_size_mismatch, Evl::Raise::any_index},
    {msg::argument_dimension_mismatch, Evl::Raise::any_index},
    {msg::must_be_string_scalar_or_array, Evl::Raise::any_index},
};

constexpr Evl::Raise diag_raises[] = {{msg::must_be_square, 1}, {msg::must_be_vector_or_matrix, 1}};
constexpr Evl::Raise reverse_raises[] = {{msg::must_be_matrix, 1}};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::matrix>({.name = "matrix",
                              .params = "m, n, f",
                              .summary = "The m by n matrix of f(i, j), called column by column, i and j from 0.",
                              .unit = "each element keeps its unit",
                              .raises = matrix_raises,
                              .example = "matrix(2, 3, mult)"}),
    calling<&Matrix::submatrix>(
        {.name = "submatrix",
         .params = "M, ir, jr, ic, jc",
         .summary = "Rows ir to jr and columns ic to jc of M; bounds in falling order flip the block.",
         .unit = "each element keeps its unit",
         .raises = submatrix_raises,
         .example = "submatrix([1, 2, 3; 4, 5, 6], 1, 0, 1, 2)"}),
    calling<&Matrix::augment>({.name = "augment",
                               .params = "a, ...",
                               .summary = "The arguments side by side; a number or text is one column of one row.",
                               .unit = "each element keeps its unit",
                               .raises = join_raises,
                               .example = "augment([1; 2], [3 m, 4; 5 m, 6])"}),
    calling<&Matrix::stack>({.name = "stack",
                             .params = "a, ...",
                             .summary = "The arguments from top to bottom; a number or text is one row of one column.",
                             .unit = "each element keeps its unit",
                             .raises = join_raises,
                             .example = "stack(1, \"two\", [3; 4])"}),
    calling<&Matrix::diag>({.name = "diag",
                            .params = "x",
                            .summary = "The matrix with the column x on its diagonal, or the column of the diagonal of "
                                       "another square matrix.",
                            .unit = "each element keeps its unit; the zeros have the unit of a column that has one",
                            .raises = diag_raises,
                            .example = "diag([1; 2; 3] * m)"}),
    calling<&Matrix::reverse>({.name = "reverse",
                               .params = "M",
                               .summary = "M with the order of its rows reversed; a row as it is.",
                               .unit = "each element keeps its unit",
                               .raises = reverse_raises,
                               .example = "reverse([1, 2; 3, 4; 5, 6])"}),
};

} // namespace

std::span<const Evl::FunctionRow> construction()
{
    return rows;
}

} // namespace Efi::families
