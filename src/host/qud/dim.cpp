#include "bailuxhost/dim.hpp"

#include "bailuxhost/error.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <numeric>
#include <system_error>

namespace Qud {

// Constant-initialised: units of other files' static objects may be built from them in any order.
constinit const Dim Dim::identity{};
constinit const Dim Dim::mixed_matrix_dim(Dim::Marker::mixed);
constinit const Dim Dim::string_dim(Dim::Marker::string);

namespace {

using Evl::Run::AppException;

struct BaseName {
    std::string_view dimension;
    std::string_view symbol;
};

constexpr std::array<BaseName, Dim::base_count> base_names = {{{"Mass", "kg"},
                                                               {"Length", "m"},
                                                               {"Time", "s"},
                                                               {"Current", "A"},
                                                               {"Temperature", "K"},
                                                               {"Amount", "mol"},
                                                               {"Luminosity", "cd"}}};

/// How far a power may lie from a whole number of 60000ths: a product such as 60000 * (1 / 3.0) is not exact.
constexpr double largest_deviation = 1e-6;

constexpr bool fits_exponent(std::int64_t exponent)
{
    return exponent >= std::numeric_limits<std::int32_t>::min() && exponent <= std::numeric_limits<std::int32_t>::max();
}

std::string name_of(const Dim& u)
{
    return u == Dim::mixed_matrix_dim ? "mixed units" : u == Dim::string_dim ? "texts" : u.text();
}

/// "unit m", "no unit": for people.
std::string unit_in_words(const Dim& u)
{
    if (u == Dim::identity)
        return "no unit";
    return u.is_marker() ? name_of(u) : "unit " + u.text();
}

std::string shortest(double x)
{
    std::array<char, 32> digits{};
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), x);
    return {digits.data(), end.ptr};
}

[[noreturn]] void raise_power(const Dim& u, double exponent_re, double exponent_im)
{
    std::string exponent = shortest(exponent_re);
    if (exponent_im != 0.0) {
        const std::string imaginary = shortest(exponent_im);
        exponent += (imaginary.front() == '-' ? "" : "+") + imaginary + "i";
    }
    AppException::Raise(msg::unit_power_not_representable, -1, u.text() + " to the power " + exponent);
}

/// Adds (sign 1) or subtracts (sign -1) the exponents of two units.
Dim combined(const Dim& u, const Dim& v, std::int64_t sign)
{
    std::array<std::int32_t, Dim::base_count> exponents = u.exponents();
    for (std::size_t b = 0; b < Dim::base_count; ++b) {
        const std::int64_t exponent = exponents[b] + sign * v.exponents()[b];
        if (!fits_exponent(exponent))
            AppException::Raise(msg::unit_power_not_representable, -1,
                                u.text() + (sign > 0 ? " times " : " divided by ") + v.text());
        exponents[b] = static_cast<std::int32_t>(exponent);
    }
    return Dim(exponents);
}

/// Reads the text of a unit piece by piece; blanks may stand between the pieces.
class Reader {
public:
    explicit Reader(std::string_view text) : m_text(text), m_rest(text) {}

    bool takes(std::string_view piece)
    {
        skip_blanks();
        if (!m_rest.starts_with(piece))
            return false;
        m_rest.remove_prefix(piece.size());
        return true;
    }

    std::size_t base()
    {
        for (std::size_t b = 0; b < Dim::base_count; ++b)
            if (takes(base_names[b].dimension))
                return b;
        refuse();
    }

    std::int32_t exponent()
    {
        skip_blanks();
        std::int32_t value = 0;
        const char* const end = m_rest.data() + m_rest.size();
        const std::from_chars_result result = std::from_chars(m_rest.data(), end, value);
        if (result.ec != std::errc())
            refuse();
        m_rest.remove_prefix(static_cast<std::size_t>(result.ptr - m_rest.data()));
        return value;
    }

    bool at_end()
    {
        skip_blanks();
        return m_rest.empty();
    }

    [[noreturn]] void refuse() const
    {
        AppException::Raise(msg::invalid_argument, -1, "no unit is written \"" + std::string(m_text) + "\"");
    }

private:
    void skip_blanks() { m_rest.remove_prefix(std::min(m_rest.find_first_not_of(" \t"), m_rest.size())); }

    std::string_view m_text;
    std::string_view m_rest;
};

} // namespace

Dim Dim::Parse(std::string_view text)
{
    Reader reader(text);
    if (!reader.takes("V") || !reader.takes("{"))
        reader.refuse();
    std::array<std::int32_t, base_count> exponents{};
    std::array<bool, base_count> seen{};
    if (!reader.takes("}")) {
        do {
            const std::size_t b = reader.base();
            if (seen[b])
                reader.refuse();
            seen[b] = true;
            exponents[b] = reader.exponent();
        } while (reader.takes(","));
        if (!reader.takes("}"))
            reader.refuse();
    }
    if (!reader.at_end())
        reader.refuse();
    return Dim(exponents);
}

Dim Dim::Pwr(const Dim& u, double exponent)
{
    return Pwr(u, exponent, 0.0);
}

Dim Dim::Pwr(const Dim& u, double exponent_re, double exponent_im)
{
    if (u == identity || u.is_marker())
        return u;
    if (!std::isfinite(exponent_re) || exponent_im != 0.0)
        raise_power(u, exponent_re, exponent_im);
    Dim result;
    for (std::size_t b = 0; b < base_count; ++b) {
        const double product = u.m_exponents[b] * exponent_re;
        const double nearest = std::round(product);
        // The bounds come first: the nearest whole number of an infinite product is infinite too.
        if (!(nearest >= std::numeric_limits<std::int32_t>::min()) ||
            !(nearest <= std::numeric_limits<std::int32_t>::max()) || std::fabs(product - nearest) > largest_deviation)
            raise_power(u, exponent_re, exponent_im);
        result.m_exponents[b] = static_cast<std::int32_t>(nearest);
    }
    return result;
}

Dim Dim::Mult(const Dim& u, const Dim& v)
{
    if (u.is_marker() || v.is_marker())
        return u.is_marker() ? u : v;
    return v == identity ? u : combined(u, v, 1);
}

Dim Dim::Div(const Dim& u, const Dim& v)
{
    if (u.is_marker() || v.is_marker())
        return u.is_marker() ? u : v;
    return v == identity ? u : combined(u, v, -1);
}

Dim Dim::Eq(const Dim& u, const Dim& v, int index)
{
    if (u != v)
        AppException::Raise(msg::unit_mismatch, index, unit_in_words(u) + " beside " + unit_in_words(v));
    return u;
}

Dim Dim::Id(const Dim& u, int index)
{
    if (u != identity)
        AppException::Raise(msg::must_be_dimless, index, "found " + unit_in_words(u));
    return u;
}

std::string Dim::text() const
{
    std::string text;
    for (std::size_t b = 0; b < base_count; ++b) {
        if (m_exponents[b] == 0)
            continue;
        if (!text.empty())
            text += '*';
        text += base_names[b].symbol;
        // 64 bits: the smallest exponent has no counterpart in 32.
        const std::int64_t divisor = std::gcd(std::int64_t{m_exponents[b]}, std::int64_t{whole});
        const std::int64_t numerator = m_exponents[b] / divisor;
        const std::int64_t denominator = whole / divisor;
        if (numerator == 1 && denominator == 1)
            continue;
        text += '^';
        text += std::to_string(numerator);
        if (denominator != 1) {
            text += '/';
            text += std::to_string(denominator);
        }
    }
    return text;
}

} // namespace Qud
