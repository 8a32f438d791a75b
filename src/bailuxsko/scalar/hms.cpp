// Hours, minutes and seconds.
#include "bailuxsko/affine.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/scalar/notation.hpp"
#include "bailuxsko/scalar/pattern.hpp"
#include "bailuxsko/scalar/rational.hpp"

#include <cmath>
#include <fmt/format.h>

namespace Efi::Affine {

namespace {

const Pattern& hms_pattern()
{
    static const Pattern pattern(R"re(\s*(?<b>[+-])?(?<h>\d+):(?<m>\d{1,2}):(?<s>(\d+(\.\d+)?))\s*)re");
    return pattern;
}

Three time_of_text(const std::string& text, bool& is_negative)
{
    const std::optional<Match> match = hms_pattern().covers(text);
    if (!match)
        Evl::Run::AppException::Raise(msg::bad_hhmmss_string, 1);
    Three time;
    parse(*match, "b", is_negative);
    parse(*match, "h", time.first);
    parse(*match, "m", time.second);
    parse(*match, "s", time.third);
    return time;
}

/// To the nearest thousandth; what has no room for a half stays.
double rounded_to_milliseconds(double seconds)
{
    constexpr double halves_end = 4503599627370495.0; // 2^52 - 1
    double milliseconds = seconds * 1000.0 + 0.5;
    if (milliseconds < 1.0)
        milliseconds = 0.0;
    else if (milliseconds <= halves_end)
        milliseconds = std::floor(milliseconds);
    return milliseconds / 1000.0;
}

} // namespace

Qud::Handle HMS(const Qud::Handle& hours_or_text, const Qud::Handle& minutes, const Qud::Handle& seconds)
{
    return in_host_call([&] {
        static const Qud::Dim unit = Qud::Dim::Parse("V{Time 60000}");
        bool is_negative = false;
        const Three time = is_text_alone(hours_or_text, minutes, seconds)
                               ? time_of_text(Error::as_string(hours_or_text, msg::must_be_string, -1), is_negative)
                               : as_three_numbers(hours_or_text, minutes, seconds);
        const double all = time.first * 3600.0 + time.second * 60.0 + time.third;
        return Qud::NumVal::make(is_negative ? -all : all, 0.0, unit);
    });
}

Qud::Handle HMS_inverse(const Qud::Handle& x)
{
    return in_host_call([&] {
        const double time = as_real(x);
        if (!std::isfinite(time))
            return text_of_not_finite(time);
        double rest = std::fabs(time);
        const double seconds = mod(rest, 60.0);
        rest -= seconds;
        const double minutes = mod(rest / 60.0, 60.0);
        const double hours = (rest - minutes * 60.0) / 3600.0;
        return Qud::StrVal::make(fmt::format("{}{:.0f}:{}:{}", time < 0.0 ? "-" : "", hours, truncated(minutes),
                                             rounded_to_milliseconds(seconds)));
    });
}

} // namespace Efi::Affine
