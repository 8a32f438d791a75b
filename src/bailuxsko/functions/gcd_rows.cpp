#include "bailuxsko/functions/families.hpp"
#include "bailuxsko/gcd.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise gcd_raises[] = {
    {msg::must_be_integer, Evl::Raise::any_index},
    {msg::must_be_real_matrix, Evl::Raise::any_index},
    {msg::significance_lost, Evl::Raise::any_index},
    {msg::must_be_dimless, Evl::Raise::any_index},
};

constexpr Evl::Raise lcm_raises[] = {
    {msg::must_be_integer, Evl::Raise::any_index},
    {msg::must_be_real_matrix, Evl::Raise::any_index},
    {msg::significance_lost, Evl::Raise::any_index},
    {msg::must_be_dimless, Evl::Raise::any_index},
    {msg::significance_lost, -1},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::gcd>({.name = "gcd",
                           .params = "a, ...",
                           .summary = "The greatest common divisor of all numbers of the arguments, signs aside.",
                           .unit = "none",
                           .raises = gcd_raises,
                           .example = "gcd(84, [36; -60])"}),
    calling<&Matrix::lcm>({.name = "lcm",
                           .params = "a, ...",
                           .summary = "The least common multiple of all numbers of the arguments, signs aside.",
                           .unit = "none",
                           .raises = lcm_raises,
                           .example = "lcm([4, 6; 10, 15])"}),
};

} // namespace

std::span<const Evl::FunctionRow> divisors()
{
    return rows;
}

} // namespace Efi::families
