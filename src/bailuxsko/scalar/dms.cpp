// Degrees, minutes and seconds of an arc.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/affine.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/scalar/notation.hpp"

#include <cmath>

namespace Efi::Affine {

namespace {

constexpr double radians_per_second = 4.84813681109536e-06;
constexpr double seconds_per_turn = 1296000.0;
constexpr double turn = 6.283185307179586;

/// @throws "must be real vector" (1), "must be dimless" (1), "must be a 3 element vector" (1)
Three elements(const Qud::MatVal& column)
{
    column.assertRealVector(1);
    Qud::Dim::Id(column.m_dim, 1);
    if (column.Rows() < 1 || column.Rows() > 3)
        Evl::Run::AppException::Raise(msg::must_be_three_element_vector, 1);
    const auto element = [&](std::size_t i) { return i < column.Rows() ? column.real(i, 0) : 0.0; };
    return {.first = element(0), .second = element(1), .third = element(2)};
}

} // namespace

Qud::Handle DMS(const Qud::Handle& degrees_or_vector, const Qud::Handle& minutes, const Qud::Handle& seconds)
{
    return in_host_call([&] {
        const Qud::MatVal* const column = minutes || seconds ? nullptr : Error::is_vector(degrees_or_vector);
        const Three angle = column ? elements(*column) : as_three_numbers(degrees_or_vector, minutes, seconds);
        return Qud::NumVal::make((angle.first * 60.0 * 60.0 + angle.second * 60.0 + angle.third) * radians_per_second);
    });
}

Qud::Handle DMS_inverse(const Qud::Handle& x)
{
    return in_host_call([&] {
        const double radians = Error::as_dimless_real(x, 1);
        if (std::isnan(radians))
            return text_of_not_finite(radians);
        const double sign = radians < 0.0 ? -1.0 : 1.0;
        double rest = mod(std::fabs(radians) / turn * seconds_per_turn, seconds_per_turn);
        const double seconds = mod(rest, 60.0);
        rest -= seconds;
        const double minutes = mod(rest, 3600.0) / 60.0;
        const double degrees = (rest - minutes * 60.0) / 60.0 / 60.0;
        Qud::FreshNumbers column = Qud::fresh_numbers(3);
        column[0] = degrees * sign;
        column[1] = minutes * sign;
        column[2] = seconds * sign;
        return Qud::MatVal::make(3, 1, std::move(column));
    });
}

} // namespace Efi::Affine
