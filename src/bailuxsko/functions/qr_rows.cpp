#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/qr.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

constexpr Evl::Raise qr_raises[] = {
    {msg::must_be_scalar_matrix, 1},
    {msg::must_be_real_matrix, 1},
    {msg::floating_point_exception, 0},
};

constexpr Evl::FunctionRow rows[] = {
    Evl::calling<&Matrix::qr>({.name = "qr",
                               .params = "A",
                               .summary = "Orthogonal Q and row-echelon R side by side, with A = Q * R.",
                               .unit = "unit(A) ^ 0.5",
                               .raises = qr_raises,
                               .example = "qr([3, 1; 4, 2])"}),
};

} // namespace

std::span<const Evl::FunctionRow> qr()
{
    return rows;
}

} // namespace Efi::families
