#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise lsolve_raises[] = {
    {msg::must_be_matrix, 1},
    {msg::must_be_matrix, 2},
    {msg::array_size_mismatch, -1},
    {msg::invalid_dimension, -1},
    {msg::not_converging, -1},
    {msg::must_be_linear_algebra_matrix, 1},
    {msg::must_be_linear_algebra_matrix, 2},
    {msg::matrix_unit_mismatch, -1},
};
constexpr Evl::Raise set_raises[] = {{msg::must_be_positive_integer, 1}};

constexpr Evl::FunctionRow rows[] = {
    calling<&IntelMKL::lsolve>({.name = "lsolve",
                                .params = "A, B",
                                .summary = "X with A * X = B; the least-squares solution when A is not square.",
                                .unit = "unit(B) / unit(A)",
                                .raises = lsolve_raises,
                                .example = "lsolve([4, 0; 0, 2] * kN/mm, [8; 6] * kN)"}),
    calling<&IntelMKL::getMaxThreads>({.name = "getMaxThreads",
                                       .params = "",
                                       .summary = "Number of threads that LAPACK works on.",
                                       .unit = "none",
                                       .example = "getMaxThreads() >= 1"}),
    calling<&IntelMKL::setNumThreads>(
        {.name = "setNumThreads",
         .params = "n",
         .summary = "Lets LAPACK work on n threads from now on; gives the number until now.",
         .unit = "none",
         .raises = set_raises,
         .example = "setNumThreads(getMaxThreads()) >= 1"},
        1),
};

} // namespace

std::span<const Evl::FunctionRow> linear_systems()
{
    return rows;
}

} // namespace Efi::families
