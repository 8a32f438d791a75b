#include "bailuxsko/cholesky.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

constexpr Evl::Raise cholesky_raises[] = {
    {msg::must_be_real_matrix, 1},
    {msg::must_be_square, 1},
    {msg::non_positive_definite_matrix, -1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    Evl::calling<&Matrix::cholesky>(
        {.name = "cholesky",
         .params = "M",
         .summary = "Lower triangular L with M = L * L', read from the upper triangle of M.",
         .unit = "unit(M) ^ 0.5",
         .raises = cholesky_raises,
         .example = "cholesky([4, 2; 2, 3] * m^2)"}),
};

} // namespace

std::span<const Evl::FunctionRow> cholesky()
{
    return rows;
}

} // namespace Efi::families
