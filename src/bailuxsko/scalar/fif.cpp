// Feet, inches and fractions of an inch.
#include "bailuxsko/affine.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/scalar/notation.hpp"
#include "bailuxsko/scalar/pattern.hpp"
#include "bailuxsko/scalar/rational.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <fmt/format.h>

namespace Efi::Affine {

namespace {

constexpr double metres_per_inch = 0.0254;
constexpr double metres_per_foot = 0.3048;
constexpr double inches_per_metre = 39.370078740157474;
constexpr double inches_per_foot = 12.0;
constexpr double largest_denominator = 256.0;

/// Tried in this order. A whole number at the end is inches: only feet and a fraction, or a fraction by itself, need
/// patterns of their own.
const std::array<Pattern, 3>& fif_patterns()
{
    static const std::array<Pattern, 3> patterns{
        Pattern(R"re(\s*(?<b>[+-])?((?<f>\d+)')?\s*(?<i>\d+)?((\s+|[-])?(?<n>\d+)/(?<d>\d+))?"?\s*)re"),
        Pattern(R"re(\s*(?<b>[+-])?(?<n>\d+)/(?<d>\d+)"?\s*)re"),
        Pattern(R"re(\s*(?<b>[+-])?(?<f>\d+)'\s*(?<n>\d+)/(?<d>\d+)"?\s*)re")};
    return patterns;
}

/// What a text or three numbers say.
struct Length {
    bool is_negative = false;
    double feet = 0.0;
    double inches = 0.0;
    double numerator = 0.0;
    double denominator = 1.0;
};

Length length_of_text(const std::string& text)
{
    for (const Pattern& pattern : fif_patterns())
        if (const std::optional<Match> match = pattern.covers(text)) {
            Length length;
            parse(*match, "b", length.is_negative);
            parse(*match, "f", length.feet);
            parse(*match, "i", length.inches);
            parse(*match, "n", length.numerator);
            parse(*match, "d", length.denominator);
            return length;
        }
    Evl::Run::AppException::Raise(msg::bad_fif_string, 1);
}

/// Feet, whole inches and a fraction of an inch below 1.
struct FeetAndInches {
    double feet;
    double inches;
    std::int32_t numerator;
    std::int32_t denominator;
};

FeetAndInches feet_and_inches(double metres)
{
    FeetAndInches split{};
    split.feet = std::floor(metres / metres_per_foot);
    const double inches = std::max(0.0, metres * inches_per_metre - split.feet * inches_per_foot);
    split.inches = std::floor(inches);
    AsRational(std::max(0.0, inches - split.inches), split.numerator, split.denominator, largest_denominator);
    if (split.numerator == 1 && split.denominator == 1) {
        split.inches += 1.0;
        split.numerator = 0;
        if (split.inches >= inches_per_foot) {
            split.inches -= inches_per_foot;
            split.feet += 1.0;
        }
    }
    return split;
}

} // namespace

Qud::Handle FIF(const Qud::Handle& feet_or_text, const Qud::Handle& inches, const Qud::Handle& fraction)
{
    return in_host_call([&] {
        static const Qud::Dim unit = Qud::Dim::Parse("V{Length 60000}");
        Length length;
        if (is_text_alone(feet_or_text, inches, fraction)) {
            length = length_of_text(Error::as_string(feet_or_text, msg::must_be_string, -1));
        } else {
            const Three three = as_three_numbers(feet_or_text, inches, fraction);
            length = {.feet = three.first, .inches = three.second, .numerator = three.third};
        }
        const double metres =
            ((length.feet * inches_per_foot + length.inches) + length.numerator / length.denominator) * metres_per_inch;
        return Qud::NumVal::make(length.is_negative ? -metres : metres, 0.0, unit);
    });
}

Qud::Handle FIF_inverse(const Qud::Handle& x)
{
    return in_host_call([&] {
        const double metres = as_real(x);
        if (const double inches = metres * inches_per_metre; !std::isfinite(inches))
            return text_of_not_finite(inches); // also where the metres are finite and their inches are not
        const FeetAndInches split = feet_and_inches(std::fabs(metres));
        std::string text = fmt::format("{}{:.0f}'", metres < 0.0 ? "-" : "", split.feet);
        if (split.numerator == 0)
            text += fmt::format(" {:.0f}\"", split.inches);
        else if (split.inches == 0.0)
            text += fmt::format(" {}/{}\"", split.numerator, split.denominator);
        else
            text += fmt::format(" {:.0f}-{}/{}\"", split.inches, split.numerator, split.denominator);
        return Qud::StrVal::make(std::move(text));
    });
}

} // namespace Efi::Affine
