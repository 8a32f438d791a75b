#pragma once

#include "efiutl/api.hpp"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Qud {

/// A physical unit: a vector of exponents of the base dimensions, each a whole number of 1/60000ths, so that halves,
/// thirds, quarters and fifths are exact. Beside the units stand two markers for arrays without one unit.
class BAILUXSKO_API Dim {
public:
    static constexpr std::size_t base_count = 7;
    static constexpr std::int32_t whole = 60000; ///< the exponent 1
    /// The order of the exponents, and of the base units in every printed unit.
    enum class Base : std::uint8_t { mass, length, time, current, temperature, amount, luminosity };

    static const Dim identity;         ///< no unit
    static const Dim mixed_matrix_dim; ///< marker: the elements of a matrix have different units or kinds
    static const Dim string_dim;       ///< marker: every element of an array is a text or an array
    // A marker equals itself only and is never a unit: Pwr, Mult and Div hand it on (the first operand's, when both are
    // markers), so that it ends in DimVal::dv, which then leaves the units as they are.

    constexpr Dim() noexcept = default;
    /// One base dimension to the first power.
    constexpr explicit Dim(Base base) noexcept { m_exponents[static_cast<std::size_t>(base)] = whole; }
    constexpr explicit Dim(const std::array<std::int32_t, base_count>& exponents) noexcept : m_exponents(exponents) {}

    /// Reads "V{Length 60000}" or "V{Mass 60000, Length 60000, Time -120000}"; names as in `Base`:
    /// Mass, Length, Time, Current, Temperature, Amount, Luminosity. "V{}" is no unit.
    /// @throws "invalid argument" (-1)
    static Dim Parse(std::string_view text);

    /// u to a real power, each exponent rounded to the nearest 60000th. Without a unit any exponent goes.
    /// @throws "unit power not representable" (-1): more than 1e-6 of a 60000th away, beyond 32 bits, not finite
    static Dim Pwr(const Dim& u, double exponent);
    /// The same for an exponent that may be complex: an imaginary part on a unit is not representable.
    static Dim Pwr(const Dim& u, double exponent_re, double exponent_im);
    /// @throws "unit power not representable" (-1) when an exponent leaves 32 bits
    static Dim Mult(const Dim& u, const Dim& v);
    /// @throws "unit power not representable" (-1) when an exponent leaves 32 bits
    static Dim Div(const Dim& u, const Dim& v);

    /// u when both units are equal. @throws "unit mismatch" (index)
    static Dim Eq(const Dim& u, const Dim& v, int index);
    /// Whether both units (or markers) are equal.
    static bool Eq_b(const Dim& u, const Dim& v) noexcept { return u == v; }
    /// No unit, when u is none. @throws "must be dimless" (index)
    static Dim Id(const Dim& u, int index);

    bool is_marker() const noexcept { return m_marker != Marker::none; }
    const std::array<std::int32_t, base_count>& exponents() const noexcept { return m_exponents; }

    /// The product of the base units: "kg*m*s^-2", "m^1/2", "" for none and for the markers.
    std::string text() const;

    /// All 32 bytes at once; the comparison member by member that a compiler writes is a call.
    friend constexpr bool operator==(const Dim& u, const Dim& v) noexcept
    {
        using Words = std::array<std::uint64_t, 4>;
        const Words a = std::bit_cast<Words>(u);
        const Words b = std::bit_cast<Words>(v);
        return ((a[0] ^ b[0]) | (a[1] ^ b[1]) | (a[2] ^ b[2]) | (a[3] ^ b[3])) == 0;
    }

private:
    enum class Marker : std::int32_t { none, mixed, string };
    constexpr explicit Dim(Marker marker) noexcept : m_marker(marker) {}

    std::array<std::int32_t, base_count> m_exponents{};
    Marker m_marker = Marker::none;
};

} // namespace Qud
