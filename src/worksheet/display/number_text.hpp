#pragma once

#include <string>

namespace worksheet::display {

/// A number as people read it, in two parts that line up at the decimal point: "-12" and ".5", "1" and ".5e-9".
struct NumberText {
    std::string head; ///< sign and digits before the point; or "NaN", "inf", "-inf"
    std::string tail; ///< point, digits and exponent; often empty

    std::string text() const { return head + tail; }
};

/// Six significant digits without trailing zeros; whole numbers below 1e9 in full, and no exponent for numbers from
/// 1e-4 to 1e9. A zero has no sign.
NumberText number_text(double x);

} // namespace worksheet::display
