#include "bailuxsko/comeval.hpp"
#include "bailuxsko/eigenvec.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise comeval_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_square, 1},           {msg::invalid_dimension, -1},
    {msg::too_many_iterations, -1},  {msg::floating_point_exception, 0},
};
constexpr Evl::Raise eigenvec_raises[] = {
    {msg::must_be_scalar_matrix, 1}, {msg::must_be_scalar, 2},           {msg::unit_mismatch, 2},
    {msg::must_be_square, 1},        {msg::invalid_dimension, -1},       {msg::singularity, -1},
    {msg::not_converging, -1},       {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::comeval>({.name = "comeval",
                               .params = "A",
                               .summary = "All eigenvalues of a square matrix by the library's own code, not sorted.",
                               .unit = "unit(A)",
                               .raises = comeval_raises,
                               .example = "comeval([0, -1; 1, 0] * s^-1)"}),
    calling<&Matrix::eigenvec>({.name = "eigenvec",
                                .params = "A, z",
                                .summary = "An eigenvector of length 1 to the eigenvalue z, by inverse iteration.",
                                .unit = "none",
                                .raises = eigenvec_raises,
                                .example = "eigenvec([2, 1; 1, 2] * N/m, 3 N/m)"}),
};

} // namespace

std::span<const Evl::FunctionRow> eigenvalues()
{
    return rows;
}

} // namespace Efi::families
