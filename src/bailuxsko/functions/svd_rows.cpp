#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/svd.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise svd_raises[] = {
    {msg::must_be_scalar_matrix, 1},    {msg::must_be_real_matrix, 1}, {msg::invalid_dimension, -1},
    {msg::rows_less_than_columns, -1},  {msg::overflow, -1},           {msg::too_many_iterations, -1},
    {msg::floating_point_exception, 0}, {msg::must_be_dimless, 1},
};
constexpr Evl::Raise geninv_raises[] = {
    {msg::must_be_scalar_matrix, 1},   {msg::must_be_real_matrix, 1},
    {msg::rows_less_than_columns, -1}, {msg::overflow, -1},
    {msg::too_many_iterations, -1},    {msg::floating_point_exception, 0},
};
constexpr Evl::Raise rank_raises[] = {
    {msg::must_be_real_matrix, 1},
    {msg::overflow, -1},
    {msg::too_many_iterations, -1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::svd>({.name = "svd",
                           .params = "A",
                           .summary = "U above V, with A = U * diag(w) * V' and singular values w in descending order.",
                           .unit = "none; A must have none",
                           .raises = svd_raises,
                           .example = "svd([3, 0; 0, 4; 0, 0])"}),
    calling<&Matrix::geninv>({.name = "geninv",
                              .params = "A",
                              .summary = "The generalised inverse; singular values up to TOL count as zero.",
                              .unit = "unit(A) ^ -1",
                              .raises = geninv_raises,
                              .example = "geninv([3, 0; 0, 4; 0, 0] * m)"}),
    calling<&Matrix::rank>({.name = "rank",
                            .params = "A",
                            .summary = "The number of singular values that are not negligible beside the largest.",
                            .unit = "none",
                            .raises = rank_raises,
                            .example = "rank([1, 2; 2, 4] * m)"}),
};

} // namespace

std::span<const Evl::FunctionRow> svd()
{
    return rows;
}

} // namespace Efi::families
