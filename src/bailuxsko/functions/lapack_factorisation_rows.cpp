#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise singular_value_raises[] = {
    {msg::must_be_scalar_matrix, 1},
    {msg::rows_less_than_columns, -1},
    {msg::invalid_dimension, -1},
    {msg::not_converging, -1},
};
constexpr Evl::Raise lu_raises[] = {{msg::must_be_scalar_matrix, 1}, {msg::invalid_dimension, -1}};
constexpr Evl::Raise qr_raises[] = {
    {msg::must_be_scalar_matrix, 1},
    {msg::must_be_integer, 2},
    {msg::invalid_dimension, -1},
};
constexpr Evl::Raise cholesky_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1},     {msg::must_be_integer, 2},
    {msg::must_be_integer, 3},       {msg::invalid_dimension, -1}, {msg::non_positive_definite_matrix, -1},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&IntelMKL::svds>({.name = "svds",
                              .params = "M",
                              .summary = "Singular values, the largest first.",
                              .unit = "none",
                              .raises = singular_value_raises,
                              .example = "svds([3, 0; 0, 4; 0, 0])"}),
    calling<&IntelMKL::svd>({.name = "SVD",
                             .params = "M",
                             .summary = "Singular values S, U and V' in a column, with M = U * diag(S) * V'.",
                             .unit = "none",
                             .raises = singular_value_raises,
                             .example = "SVD([3, 0; 0, 4; 0, 0])"}),
    calling<&IntelMKL::LU>({.name = "LU",
                            .params = "M",
                            .summary = "P, L and U in a column, with P * M = L * U, for a matrix of any shape.",
                            .unit = "none",
                            .raises = lu_raises,
                            .example = "LU([4, 3; 8, 3; 2, 1])"}),
    calling<&IntelMKL::QR>(
        {.name = "QR",
         .params = "M[, pivot]",
         .summary = "P, Q and R in a column, with M * P = Q * R; Q and R with M = Q * R when pivot is 0.",
         .unit = "none",
         .raises = qr_raises,
         .example = "QR([3, 1; 4, 2], 0)"},
        1),
    calling<&IntelMKL::Cholesky>(
        {.name = "Cholesky",
         .params = "M[, pivot[, upper]]",
         .summary = "P and L in a column, with P' * M * P = L * L'; L alone, with M = L * L', when pivot is 0; U with "
                    "U' * U in the place of L when upper is not 0.",
         .unit = "none",
         .raises = cholesky_raises,
         .example = "Cholesky([4, 2; 2, 3], 0)"},
        2),
};

} // namespace

std::span<const Evl::FunctionRow> lapack_factorisations()
{
    return rows;
}

} // namespace Efi::families
