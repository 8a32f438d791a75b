#include "bailuxhost/dim.hpp"

#include "tests/host/generated.hpp"
#include "tests/support/host_raises.hpp"

#include <cmath>
#include <limits>
#include <string>

namespace {

using Qud::Dim;
using support::host_raised_by;
using support::Raised;

const Dim kg{Dim::Base::mass};
const Dim m{Dim::Base::length};
const Dim s{Dim::Base::time};

constexpr double inf = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t smallest = std::numeric_limits<std::int32_t>::min();

const Raised not_representable{.message = "unit power not representable", .index = -1};

Dim length_to(std::int32_t sixty_thousandths)
{
    return Dim(std::array<std::int32_t, Dim::base_count>{0, sixty_thousandths});
}

TEST(Dim, IsWrittenInBaseUnits)
{
    struct Case {
        std::array<std::int32_t, Dim::base_count> exponents;
        std::string text;
    };
    const Case cases[] = {
        {{}, ""},
        {{60000}, "kg"},
        {{60000, 60000, -120000}, "kg*m*s^-2"},
        {{0, 30000}, "m^1/2"},
        {{0, -90000}, "m^-3/2"},
        {{0, 20000, 0, 0, 0, 0, 0}, "m^1/3"},
        {{0, 15000, -12000}, "m^1/4*s^-1/5"},
        {{60000, 60000, 60000, 60000, 60000, 60000, 60000}, "kg*m*s*A*K*mol*cd"},
        {{0, 0, 0, -60000, 120000, 48000, 1}, "A^-1*K^2*mol^4/5*cd^1/60000"},
        {{largest}, "kg^2147483647/60000"},
        {{smallest}, "kg^-67108864/1875"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Dim(c.exponents).text(), c.text);
    EXPECT_EQ(Dim::mixed_matrix_dim.text(), "");
    EXPECT_EQ(Dim::string_dim.text(), "");
}

TEST(Dim, IsReadFromNamedExponents)
{
    EXPECT_EQ(Dim::Parse("V{Length 60000}"), m);
    EXPECT_EQ(Dim::Parse("V{Time 60000}"), s);
    EXPECT_EQ(Dim::Parse("V{}"), Dim::identity);
    EXPECT_EQ(Dim::Parse(" V { Mass 60000 ,Length 60000,\tTime -120000 } ").text(), "kg*m*s^-2");
    EXPECT_EQ(Dim::Parse("V{Luminosity 1, Amount 2, Temperature 3, Current 4}"),
              Dim(std::array<std::int32_t, Dim::base_count>{0, 0, 0, 4, 3, 2, 1}));
    EXPECT_EQ(Dim::Parse("V{Length -2147483648}"), length_to(smallest));
}

TEST(Dim, RefusesWhatIsNoUnit)
{
    for (const char* const text : {"", "V", "V{", "V{Length}", "V{Length 60000", "V{Length 60000} x", "V{length 60000}",
                                   "V{Length 1.5}", "V{Length 60000,}", "V{Length 60000 Time 60000}",
                                   "V{Length 60000, Length 60000}", "V{Length 2147483648}", "m"})
        EXPECT_EQ(host_raised_by([&] { Dim::Parse(text); }), (Raised{.message = "invalid argument", .index = -1}))
            << text;
}

TEST(Dim, PowersRoundToTheNearest60000th)
{
    struct Case {
        Dim unit;
        double exponent;
        Dim power;
    };
    const Case cases[] = {
        {m, 0.0, Dim::identity},
        {m, -0.0, Dim::identity},
        {m, 1.0, m},
        {m, -1.0, length_to(-60000)},
        {m, 0.5, length_to(30000)},
        {m, 1 / 3.0, length_to(20000)},
        {m, 2 / 3.0, length_to(40000)},
        {m, -1 / 3.0, length_to(-20000)},
        {m, 0.1 + 0.2, length_to(18000)}, // 0.30000000000000004
        {m, 1 / 60000.0, length_to(1)},
        {m, 0.5 + 1.5e-11, length_to(30000)}, // 0.9e-6 of a 60000th away
        {m, 35791.0, length_to(2147460000)},
        {m, -35791.0, length_to(-2147460000)},
        {length_to(1), 2147483647.0, length_to(largest)},
        {length_to(1), -2147483648.0, length_to(smallest)},
        {length_to(smallest), 1.0, length_to(smallest)},
        {length_to(-60000), -2.0, length_to(120000)},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Dim::Pwr(c.unit, c.exponent), c.power) << c.unit << " ^ " << c.exponent;
}

TEST(Dim, RefusesPowersThatAreNoUnit)
{
    for (const double exponent : {inf, -inf, NaN, 1e300, -1e300, 35792.0, 1 / 7.0, std::sqrt(2.0), 0.5 + 2.5e-11,
                                  std::numeric_limits<double>::denorm_min() + 1 / 120000.0, 1e-9})
        EXPECT_EQ(host_raised_by([&] { Dim::Pwr(m, exponent); }), not_representable) << exponent;
    EXPECT_EQ(host_raised_by([] { Dim::Pwr(length_to(1), 2147483648.0); }), not_representable);
    EXPECT_EQ(host_raised_by([] { Dim::Pwr(length_to(smallest), -1.0); }), not_representable);
    EXPECT_EQ(host_raised_by([] { Dim::Pwr(m, 2.0, 1e-300); }), not_representable);
    EXPECT_EQ(host_raised_by([] { Dim::Pwr(m, 2.0, NaN); }), not_representable);
    EXPECT_EQ(Dim::Pwr(m, 2.0, -0.0), length_to(120000));
    EXPECT_EQ(host_raised_by([] { Dim::Pwr(m, 0.7000001); }).detail, "m to the power 0.7000001");
    EXPECT_EQ(host_raised_by([] { Dim::Pwr(m, 1.0, -2.5); }).detail, "m to the power 1-2.5i");
}

TEST(Dim, WithoutAUnitAnyExponentGoes)
{
    for (const double re : {0.0, 1 / 7.0, 1e300, inf, NaN})
        for (const double im : {0.0, 1.0, NaN})
            EXPECT_EQ(Dim::Pwr(Dim::identity, re, im), Dim::identity);
}

TEST(Dim, ExponentsBeyond32BitsAreRefused)
{
    EXPECT_EQ(Dim::Mult(length_to(largest), length_to(smallest)), length_to(-1));
    EXPECT_EQ(Dim::Div(length_to(-1), length_to(largest)), length_to(smallest));
    EXPECT_EQ(host_raised_by([] { Dim::Mult(length_to(largest), length_to(1)); }), not_representable);
    EXPECT_EQ(host_raised_by([] { Dim::Div(length_to(smallest), length_to(1)); }), not_representable);
    EXPECT_EQ(host_raised_by([] { Dim::Div(Dim::identity, length_to(smallest)); }), not_representable);
}

TEST(Dim, AgreementIsChecked)
{
    EXPECT_EQ(Dim::Eq(m, m, 2), m);
    EXPECT_EQ(host_raised_by([] { Dim::Eq(m, s, 2); }), (Raised{.message = "unit mismatch", .index = 2}));
    EXPECT_EQ(host_raised_by([] { Dim::Eq(m, Dim::identity, 2); }).detail, "unit m beside no unit");
    EXPECT_TRUE(Dim::Eq_b(m, m));
    EXPECT_FALSE(Dim::Eq_b(m, Dim::identity));
    EXPECT_EQ(Dim::Id(Dim::identity, 1), Dim::identity);
    EXPECT_EQ(host_raised_by([] { Dim::Id(kg, 3); }), (Raised{.message = "must be dimless", .index = 3}));
    EXPECT_EQ(host_raised_by([] { Dim::Id(kg, 3); }).detail, "found unit kg");
}

TEST(Dim, AMarkerIsNoUnitAndIsHandedOn)
{
    for (const Dim& marker : {Dim::mixed_matrix_dim, Dim::string_dim}) {
        EXPECT_TRUE(marker.is_marker());
        EXPECT_NE(marker, Dim::identity);
        EXPECT_EQ(Dim::Pwr(marker, NaN), marker);
        EXPECT_EQ(Dim::Mult(marker, m), marker);
        EXPECT_EQ(Dim::Mult(m, marker), marker);
        EXPECT_EQ(Dim::Div(m, marker), marker);
        EXPECT_EQ(host_raised_by([&] { Dim::Id(marker, 1); }).message, "must be dimless");
        EXPECT_EQ(host_raised_by([&] { Dim::Eq(marker, Dim::identity, 1); }).message, "unit mismatch");
    }
    EXPECT_NE(Dim::mixed_matrix_dim, Dim::string_dim);
    EXPECT_EQ(Dim::Mult(Dim::string_dim, Dim::mixed_matrix_dim), Dim::string_dim);
    EXPECT_FALSE(m.is_marker());
}

RC_GTEST_PROP(DimLaws, UnitsAreAGroup, ())
{
    const Dim u = *gen::unit();
    const Dim v = *gen::unit();
    const Dim w = *gen::unit();
    RC_ASSERT(Dim::Mult(u, v) == Dim::Mult(v, u));
    RC_ASSERT(Dim::Mult(Dim::Mult(u, v), w) == Dim::Mult(u, Dim::Mult(v, w)));
    RC_ASSERT(Dim::Mult(u, Dim::identity) == u);
    RC_ASSERT(Dim::Div(u, u) == Dim::identity);
    RC_ASSERT(Dim::Div(u, v) == Dim::Mult(u, Dim::Pwr(v, -1.0)));
}

RC_GTEST_PROP(DimLaws, PowersAdd, (int a, int b))
{
    const Dim u = *gen::unit();
    const double x = a % 20;
    const double y = b % 20;
    RC_ASSERT(Dim::Pwr(u, x + y) == Dim::Mult(Dim::Pwr(u, x), Dim::Pwr(u, y)));
    RC_ASSERT(Dim::Pwr(Dim::Pwr(u, 2.0), y) == Dim::Pwr(u, 2.0 * y));
}

RC_GTEST_PROP(DimLaws, RootsOfPowersAreExact, ())
{
    const Dim u = *gen::unit(20'000);
    for (const int n : {2, 3, 4, 5, 6, 7, 10, 60, 600, 1001})
        RC_ASSERT(Dim::Pwr(Dim::Pwr(u, n), 1.0 / n) == u);
}

RC_GTEST_PROP(DimLaws, ReadsWhatIsWrittenInExponents, ())
{
    const Dim u = *gen::unit(largest / 2);
    const char* const names[] = {"Mass", "Length", "Time", "Current", "Temperature", "Amount", "Luminosity"};
    std::string text = "V{";
    for (std::size_t b = 0; b < Dim::base_count; ++b)
        text += std::string(b ? ", " : "") + names[b] + ' ' + std::to_string(u.exponents()[b]);
    RC_ASSERT(Dim::Parse(text + "}") == u);
}

} // namespace
