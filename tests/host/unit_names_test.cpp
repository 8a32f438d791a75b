#include "bailuxhost/unit_names.hpp"

#include "tests/host/generated.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <set>
#include <string>

namespace {

using Qud::Dim;
using Qud::find_unit;
using Qud::unit_names;

Dim unit(const char* name)
{
    return find_unit(name).value().dim;
}

double factor(std::string_view name)
{
    return find_unit(name).value().factor;
}

Dim per(const Dim& u, const Dim& v)
{
    return Dim::Div(u, v);
}

Dim times(const Dim& u, const Dim& v)
{
    return Dim::Mult(u, v);
}

TEST(UnitNames, UnitsFollowFromTheirDefinitions)
{
    const Dim none;
    const Dim kg{Dim::Base::mass};
    const Dim m{Dim::Base::length};
    const Dim s{Dim::Base::time};
    const Dim A{Dim::Base::current};
    const Dim N = per(times(kg, m), times(s, s));
    const Dim J = times(N, m);
    const Dim C = times(A, s);
    const Dim V = per(J, C);
    const Dim Wb = times(V, s);
    const Dim cd{Dim::Base::luminosity};
    const Dim m2 = times(m, m);
    const Dim m3 = times(m2, m);
    struct Case {
        const char* name;
        Dim dim;
    };
    const Case cases[] = {
        {"kg", kg},
        {"g", kg},
        {"m", m},
        {"s", s},
        {"A", A},
        {"K", Dim(Dim::Base::temperature)},
        {"mol", Dim(Dim::Base::amount)},
        {"cd", cd},
        {"N", N},
        {"Pa", per(N, m2)},
        {"J", J},
        {"W", per(J, s)},
        {"Hz", per(none, s)},
        {"V", V},
        {"ohm", per(V, A)},
        {"C", C},
        {"F", per(C, V)},
        {"S", per(A, V)},
        {"T", per(Wb, m2)},
        {"Wb", Wb},
        {"H", per(Wb, A)},
        {"rad", none},
        {"deg", none},
        {"lm", cd},
        {"lx", per(cd, m2)},
        {"Bq", per(none, s)},
        {"Gy", per(J, kg)},
        {"t", kg},
        {"L", m3},
        {"bar", per(N, m2)},
        {"minute", s},
        {"hr", s},
        {"day", s},
        {"in", m},
        {"ft", m},
        {"yd", m},
        {"mi", m},
        {"lb", kg},
        {"lbf", N},
        {"psi", per(N, m2)},
        {"gal", m3},
    };
    for (const Case& c : cases)
        EXPECT_EQ(unit(c.name), c.dim) << c.name;
}

TEST(UnitNames, FactorsFollowFromTheirDefinitions)
{
    // Products and quotients in 64 bits of mantissa, then rounded once to a double.
    const auto rounded = [](long double x) { return static_cast<double>(x); };
    for (const char* const name : {"kg",  "m", "s", "A", "K", "mol", "cd", "N",   "Pa", "J",  "W",  "Hz", "V",
                                   "ohm", "C", "F", "S", "T", "Wb",  "H",  "rad", "lm", "lx", "Bq", "Gy"})
        EXPECT_EQ(factor(name), 1.0) << name;
    EXPECT_EQ(factor("g"), 1e-3);
    EXPECT_EQ(factor("t"), 1000.0);
    EXPECT_EQ(factor("L"), 1e-3);
    EXPECT_EQ(factor("bar"), 1e5);
    EXPECT_EQ(factor("deg"), rounded(std::numbers::pi_v<long double> / 180));
    EXPECT_EQ(factor("minute"), 60.0);
    EXPECT_EQ(factor("hr"), 3600.0);
    EXPECT_EQ(factor("day"), 86400.0);
    EXPECT_EQ(factor("in"), 0.0254);
    EXPECT_EQ(factor("ft"), rounded(12 * 0.0254L));
    EXPECT_EQ(factor("yd"), rounded(36 * 0.0254L));
    EXPECT_EQ(factor("mi"), rounded(5280 * 12 * 0.0254L));
    EXPECT_EQ(factor("lb"), 0.45359237);
    EXPECT_EQ(factor("lbf"), rounded(0.45359237L * 9.80665L));
    EXPECT_EQ(factor("psi"), rounded(0.45359237L * 9.80665L / (0.0254L * 0.0254L)));
    EXPECT_EQ(factor("gal"), rounded(231 * 0.0254L * 0.0254L * 0.0254L));
}

TEST(UnitNames, PrefixedFactorsAreTheNearestDoubles)
{
    struct Prefix {
        const char* text;
        int ten;
    };
    const Prefix prefixes[] = {{"f", -15}, {"p", -12}, {"n", -9}, {"u", -6},        {"m", -3},       {"k", 3},
                               {"M", 6},   {"G", 9},   {"T", 12}, {"\xC2\xB5", -6}, {"\xCE\xBC", -6}};
    struct Unit {
        const char* name;
        int ten;
    };
    const Unit units[] = {{"m", 0},  {"s", 0},  {"A", 0},  {"K", 0},  {"mol", 0}, {"cd", 0},  {"N", 0},
                          {"Pa", 0}, {"J", 0},  {"W", 0},  {"Hz", 0}, {"V", 0},   {"ohm", 0}, {"C", 0},
                          {"F", 0},  {"S", 0},  {"T", 0},  {"Wb", 0}, {"H", 0},   {"rad", 0}, {"lm", 0},
                          {"lx", 0}, {"Bq", 0}, {"Gy", 0}, {"g", -3}, {"L", -3},  {"bar", 5}};
    for (const Unit& u : units) {
        for (const Prefix& p : prefixes) {
            const std::string name = std::string(p.text) + u.name;
            const std::string decimal = "1e" + std::to_string(p.ten + u.ten);
            EXPECT_EQ(factor(name), std::strtod(decimal.c_str(), nullptr)) << name;
            EXPECT_EQ(unit(name.c_str()), unit(u.name)) << name;
        }
    }
    EXPECT_EQ(factor("cm"), 0.01);
    EXPECT_EQ(factor("dm"), 0.1);
    EXPECT_EQ(factor("cL"), 1e-5);
    EXPECT_EQ(factor("dL"), 1e-4);
    EXPECT_EQ(factor("hPa"), 100.0);
}

TEST(UnitNames, OtherNamesAreNone)
{
    for (const char* const name :
         {"",    "k",  "u",    "\xC2\xB5", "\xC2",  "kkg",  "mkg",  "min", "hm",  "hbar", "cs",   "dPa",
          "cg",  "kt", "kdeg", "kminute",  "khr",   "mday", "mft",  "kin", "mlb", "klbf", "kpsi", "mgal",
          "KM",  "PA", "pa",   "M",        "meter", "eV",   "mmm",  "m ",  " m",  "1m",   "h",    "d",
          "kg2", "Em", "am",   "mumol",    "Hk",    "x",    "degC", "dam", "hL",  "drad"})
        EXPECT_FALSE(find_unit(name).has_value()) << name;
}

TEST(UnitNames, AUnitsOwnNameGoesFirst)
{
    EXPECT_EQ(factor("ft"), 0.3048);                   // not a femtotonne
    EXPECT_EQ(unit("cd"), Dim(Dim::Base::luminosity)); // not a centiday
    EXPECT_EQ(unit("T").text(), "kg*s^-2*A^-1");       // a unit and a prefix
    EXPECT_EQ(factor("mT"), 1e-3);
    EXPECT_EQ(unit("Pa").text(), "kg*m^-1*s^-2");
    EXPECT_EQ(factor("mol"), 1.0);
    EXPECT_EQ(factor("mi"), 1609.344);
    EXPECT_EQ(factor("kg"), 1.0);
    EXPECT_EQ(unit("fF"), unit("F"));
    EXPECT_EQ(factor("mm"), 0.001);
}

TEST(UnitNames, TheListIsWhole)
{
    const std::vector<std::string> names = unit_names();
    // 27 units with 9 prefixes and without, c and d on m and L, h on Pa, 13 units without prefixes.
    EXPECT_EQ(names.size(), 27U * 10 + 4 + 1 + 13);
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
    for (const std::string& name : names)
        EXPECT_TRUE(find_unit(name).has_value()) << name;
    for (const char* const name : {"kg", "m", "kN", "hPa", "cm", "dL", "um", "psi", "minute"})
        EXPECT_NE(std::find(names.begin(), names.end(), name), names.end()) << name;
}

} // namespace
