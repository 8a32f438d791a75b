#include "bailuxsko/scalar/notation.hpp"

#include "bailuxsko/affine.hpp"
#include "bailuxsko/frame/error_checks.hpp"
#include "efiutl/messages.hpp"

#include <cmath>

namespace Efi::Affine {

Three as_three_numbers(const Qud::Handle& x, const Qud::Handle& y, const Qud::Handle& z)
{
    Three three{.first = Error::as_dimless_real(x, 1)};
    if (y)
        three.second = Error::as_dimless_real(y, 2);
    if (z)
        three.third = Error::as_dimless_real(z, 3);
    return three;
}

bool is_text_alone(const Qud::Handle& x, const Qud::Handle& y, const Qud::Handle& z) noexcept
{
    return Error::is_string(x) && !y && !z;
}

double as_real(const Qud::Handle& x)
{
    return Qud::DimVal::asReal(x, msg::must_be_real, 1);
}

Qud::Handle text_of_not_finite(double x)
{
    if (std::isnan(x))
        return Qud::StrVal::make("NaN");
    return Qud::StrVal::make(x < 0.0 ? "-inf" : "inf");
}

double mod(double a, double b) noexcept
{
    const double rest = a - std::floor(a / b) * b;
    return rest < 0.0 ? 0.0 : rest;
}

} // namespace Efi::Affine
