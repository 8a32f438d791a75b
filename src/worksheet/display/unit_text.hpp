#pragma once

#include "bailuxhost/dim.hpp"

#include <string>

namespace worksheet::display {

/// A unit as people write it: a derived unit where one fits ("N", "Pa", "ohm"), one of newton, watt, volt and ohm with
/// powers of metre and kelvin ("N/m", "W/(m^2*K)"), otherwise base units as a fraction ("kg/m^3", "s^-1", "m^(1/2)").
/// Every one is a unit expression of the language. "" for no unit.
std::string unit_text(const Qud::Dim& unit);

} // namespace worksheet::display
