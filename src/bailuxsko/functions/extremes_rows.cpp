#include "bailuxsko/extremes.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise extremes_raises[] = {
    {msg::vector_must_be_uniform_or_strings, Evl::Raise::any_index},
    {msg::unit_mismatch, Evl::Raise::any_index},
    {msg::invalid_dimension, Evl::Raise::any_index},
    {msg::cannot_mix_scalar_and_string, -1},
    {msg::may_not_be_nested, Evl::Raise::any_index},
};

constexpr Evl::FunctionRow rows[] = {
    calling<&Matrix::min>({.name = "min",
                           .params = "a, ...",
                           .summary =
                               "The smallest of numbers and matrices, real and imaginary parts each by itself, or "
                               "of texts and arrays of texts.",
                           .unit = "the arguments' common unit",
                           .raises = extremes_raises,
                           .example = "min(3 m, [1; 5] * m)"}),
    calling<&Matrix::max>({.name = "max",
                           .params = "a, ...",
                           .summary =
                               "The largest of numbers and matrices, real and imaginary parts each by itself, or "
                               "of texts and arrays of texts.",
                           .unit = "the arguments' common unit",
                           .raises = extremes_raises,
                           .example = "max(\"fig\", [\"apple\"; \"pear\"])"}),
};

} // namespace

std::span<const Evl::FunctionRow> extremes()
{
    return rows;
}

} // namespace Efi::families
