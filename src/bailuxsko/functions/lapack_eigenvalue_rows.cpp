#include "bailuxsko/eigenvalues.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise eigenvals_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1},       {msg::invalid_dimension, -1},
    {msg::not_converging, -1},       {msg::index_out_of_bounds, -1},
};
constexpr Evl::Raise eigenvecs_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_string, 2},     {msg::invalid_argument, 2},
    {msg::must_be_square, 1},        {msg::invalid_dimension, -1}, {msg::not_converging, -1},
    {msg::index_out_of_bounds, -1},
};
constexpr Evl::Raise genvals_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_scalar_matrix, 2}, {msg::must_be_square, 1},
    {msg::must_be_square, 2},        {msg::array_size_mismatch, -1},  {msg::invalid_dimension, -1},
    {msg::not_converging, -1},       {msg::index_out_of_bounds, -1},
};
constexpr Evl::Raise genvecs_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_scalar_matrix, 2}, {msg::must_be_square, 1},
    {msg::must_be_square, 2},        {msg::array_size_mismatch, -1},  {msg::must_be_string, 3},
    {msg::invalid_argument, 3},      {msg::invalid_dimension, -1},    {msg::not_converging, -1},
    {msg::index_out_of_bounds, -1},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&IntelMKL::eigenvals>({.name = "eigenvals",
                                   .params = "M",
                                   .summary = "Eigenvalues of M as a column, largest real part first; real for a "
                                              "symmetric or Hermitian M.",
                                   .unit = "unit(M)",
                                   .raises = eigenvals_raises,
                                   .example = "eigenvals([120, 50; 50, 45] * MPa)"}),
    calling<&IntelMKL::eigenvecs>(
        {.name = "eigenvecs",
         .params = "M[, side]",
         .summary = "Right (\"R\") or left (\"L\") eigenvectors of M, column i for eigenvalue i of eigenvals.",
         .unit = "none",
         .raises = eigenvecs_raises,
         .example = "eigenvecs([2, 1; 1, 2])"},
        1),
    calling<&IntelMKL::genvals>({.name = "genvals",
                                 .params = "A, B",
                                 .summary = "Generalised eigenvalues, A * x = lambda * B * x, largest real part first; "
                                            "an infinite one is the largest finite number.",
                                 .unit = "none",
                                 .raises = genvals_raises,
                                 .example = "genvals([2, -1; -1, 1], [1, 0; 0, 2])"}),
    calling<&IntelMKL::genvecs>(
        {.name = "genvecs",
         .params = "A, B[, side]",
         .summary = "Right (\"R\") or left (\"L\") generalised eigenvectors, column i for eigenvalue i of genvals.",
         .unit = "none",
         .raises = genvecs_raises,
         .example = "genvecs([2, -1; -1, 1], [1, 0; 0, 2])"},
        1),
};

} // namespace

std::span<const Evl::FunctionRow> lapack_eigenvalues()
{
    return rows;
}

} // namespace Efi::families
