#include "bailuxsko/affine.hpp"
#include "bailuxsko/functions/families.hpp"
#include "efiutl/messages.hpp"

namespace Efi::families {

namespace {

using Evl::calling;

constexpr Evl::Raise fif_raises[] = {
    {msg::bad_fif_string, 1}, {msg::must_be_real, 1}, {msg::must_be_real, 2}, {msg::must_be_real, 3}};

constexpr Evl::Raise hms_raises[] = {
    {msg::bad_hhmmss_string, 1}, {msg::must_be_real, 1}, {msg::must_be_real, 2}, {msg::must_be_real, 3}};

constexpr Evl::Raise dms_raises[] = {{msg::must_be_real, 1},    {msg::must_be_real, 2},
                                     {msg::must_be_real, 3},    {msg::must_be_real_vector, 1},
                                     {msg::must_be_dimless, 1}, {msg::must_be_three_element_vector, 1}};

constexpr Evl::Raise needs_real[] = {{msg::must_be_real, 1}};

constexpr Evl::FunctionRow rows[] = {
    calling<&Affine::FIF>({.name = "FIF",
                           .params = "feet[, inches[, fraction]]",
                           .summary = "The length of a text of feet, inches and fractions of an inch, or of numbers.",
                           .unit = "m",
                           .raises = fif_raises,
                           .example = "FIF(\"5' 3-1/2\\\"\")"},
                          2),
    calling<&Affine::FIF_inverse>(
        {.name = "FIF_inverse",
         .params = "x",
         .summary = "The text of a length in feet, inches and fractions of an inch down to 1/256.",
         .unit = "none: a text",
         .raises = needs_real,
         .example = "FIF_inverse(1.6129 m)"}),
    calling<&Affine::DMS>({.name = "DMS",
                           .params = "degrees[, minutes[, seconds]]",
                           .summary = "The angle of degrees, minutes and seconds, numbers or a column of up to three.",
                           .unit = "none: radians",
                           .raises = dms_raises,
                           .example = "DMS(60, 30) -> deg"},
                          2),
    calling<&Affine::DMS_inverse>(
        {.name = "DMS_inverse",
         .params = "x",
         .summary = "The column of degrees, minutes and seconds of an angle, within one turn.",
         .unit = "none",
         .raises = needs_real,
         .example = "DMS_inverse(30.26 deg)"}),
    calling<&Affine::HMS>({.name = "HMS",
                           .params = "hours[, minutes[, seconds]]",
                           .summary = "The time of a text such as 12:05:30.25, or of hours, minutes and seconds.",
                           .unit = "s",
                           .raises = hms_raises,
                           .example = "HMS(\"1:01:01.25\")"},
                          2),
    calling<&Affine::HMS_inverse>({.name = "HMS_inverse",
                                   .params = "x",
                                   .summary = "The text of a time in hours, minutes and seconds, to the millisecond.",
                                   .unit = "none: a text",
                                   .raises = needs_real,
                                   .example = "HMS_inverse(3661.25 s)"}),
};

} // namespace

std::span<const Evl::FunctionRow> notations()
{
    return rows;
}

} // namespace Efi::families
