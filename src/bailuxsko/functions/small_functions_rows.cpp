#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/small_functions.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise identity_raises[] = {{msg::must_be_positive_integer, 1}, {msg::matrix_too_big, 1}};
constexpr Evl::Raise crossprod_raises[] = {
    {msg::must_be_three_element_vector, 1}, {msg::must_be_three_element_vector, 2},
    {msg::must_be_of_uniform_dimension, 1}, {msg::must_be_of_uniform_dimension, 2},
    {msg::floating_point_exception, 0},
};
constexpr Evl::Raise tr_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1}, {msg::floating_point_exception, 0}};
constexpr Evl::Raise sigmasum_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_vector, 1}, {msg::floating_point_exception, 0}};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::identity>({.name = "identity",
                                .params = "n",
                                .summary = "The n by n identity matrix, n at most 4096.",
                                .unit = "none",
                                .raises = identity_raises,
                                .example = "identity(3)"}),
    calling<&Matrix::crossprod>({.name = "crossprod",
                                 .params = "a, b",
                                 .summary = "The cross product of two columns of 3 elements.",
                                 .unit = "unit(a) * unit(b)",
                                 .raises = crossprod_raises,
                                 .example = "crossprod([1; 0; 0] * m, [0; 2; 0] * N)"}),
    calling<&Matrix::tr>({.name = "tr",
                          .params = "M",
                          .summary = "The trace of a square matrix: the sum of its diagonal.",
                          .unit = "unit(M)",
                          .raises = tr_raises,
                          .example = "tr([1, 2; 3, 4] * m)"}),
    calling<&Matrix::sigmasum>({.name = "sigmasum",
                                .params = "v",
                                .summary = "The sum of the elements of one column or one row.",
                                .unit = "unit(v)",
                                .raises = sigmasum_raises,
                                .example = "sigmasum([1; 2; 3] * s)"}),
};

} // namespace

std::span<const Evl::FunctionRow> small_functions()
{
    return rows;
}

} // namespace Efi::families
