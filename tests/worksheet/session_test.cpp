#include "worksheet/session.hpp"

#include "bailuxhost/matval.hpp"
#include "bailuxhost/options.hpp"
#include "results.hpp"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

using worksheet::apply_setting;
using worksheet::Session;
using worksheet::SheetSettings;
using worksheet::StatementResult;

TEST(Session, DeliversEachResultBeforeTheNextStatementStarts)
{
    Session session;
    std::vector<std::vector<std::string>> names_at_delivery;
    session.evaluate("a := 1\nb := 2", [&](const auto&) { names_at_delivery.push_back(session.names()); });
    EXPECT_EQ(names_at_delivery, (std::vector<std::vector<std::string>>{{"a"}, {"a", "b"}}));
}

TEST(Session, GoesOnFromSourceToSource)
{
    Session session;
    result_of(session, "a := 5\nset origin 1");
    EXPECT_EQ(session.settings().origin.value, 1);
    EXPECT_EQ(json_of(session, "a + [1, 2][1]"),
              (std::vector<std::string>{R"({"kind":"number","re":6.0,"im":0.0,"unit":""})"}));
    EXPECT_EQ(Qud::as_number(session.value_of("a"))->re(), 5.0);
    EXPECT_EQ(session.value_of("b"), nullptr);
}

TEST(Session, StartsWithTheSettingsOfTheCommandLine)
{
    SheetSettings settings;
    EXPECT_EQ(apply_setting(settings, "origin", "1"), "");
    EXPECT_EQ(apply_setting(settings, "tol", "1e-6"), "");
    EXPECT_EQ(apply_setting(settings, "strict_singularity_checking", "off"), "");
    EXPECT_EQ(apply_setting(settings, "zero_over_zero_is_zero", "on"), "");
    EXPECT_EQ(settings.origin.value, 1);
    EXPECT_EQ(settings.tol.value, 1e-6);
    EXPECT_FALSE(settings.strict_singularity_checking);
    EXPECT_TRUE(settings.zero_over_zero_is_zero);
    Session session(settings);
    EXPECT_EQ(outcomes_of(session, "[1, 2][1]\n0 / 0"), (std::vector<Outcome>{{"", 0, "", 1, 0}, {"", 0, "", 2, 0}}));
}

TEST(Session, SettingsThatAreRefused)
{
    SheetSettings settings;
    for (const char* const value :
         {"", "x", "0.5", "2147483648", "-2147483649", "inf", "NaN", "1 2", "0x10", "+1", "2i"})
        EXPECT_NE(apply_setting(settings, "origin", value), "") << value;
    for (const char* const value : {"", "x", "1e", "1 2", "nan", "Inf"})
        EXPECT_NE(apply_setting(settings, "tol", value), "") << value;
    for (const char* const value : {"", "1", "ON", "true"})
        EXPECT_NE(apply_setting(settings, "zero_over_zero_is_zero", value), "") << value;
    EXPECT_NE(apply_setting(settings, "TOL", "1"), "");
    for (const char* const value : {"-2147483648", "2147483647", "1e3", "-0"})
        EXPECT_EQ(apply_setting(settings, "origin", value), "") << value;
    EXPECT_EQ(apply_setting(settings, "tol", "-inf"), "");
    EXPECT_EQ(settings.tol.value, -std::numeric_limits<double>::infinity());
    EXPECT_EQ(apply_setting(settings, "tol", "NaN"), "");
    EXPECT_TRUE(std::isnan(settings.tol.value));
}

TEST(Session, LeavesTheOptionsOfTheThreadAlone)
{
    Session session;
    bool seen = false;
    session.evaluate("set zero_over_zero_is_zero on\n0 / 0",
                     [&](const auto&) { seen = seen || Qud::RuntimeOptions::zero_over_zero_is_zero; });
    EXPECT_FALSE(seen);
    EXPECT_FALSE(Qud::RuntimeOptions::zero_over_zero_is_zero);
    EXPECT_TRUE(Qud::RuntimeOptions::strict_singularity_checking);
}

TEST(Session, ShowsInAUnit)
{
    Session session;
    const StatementResult result = result_of(session, "3 m -> ft / s * s  # a comment");
    ASSERT_TRUE(result.shown_unit);
    EXPECT_EQ(result.shown_unit->text, "ft / s * s");
    EXPECT_DOUBLE_EQ(result.shown_unit->factor, 0.3048);
    EXPECT_EQ(result.shown_unit->dim.text(), "m");
    EXPECT_EQ(result.text, "3 m -> ft / s * s");
}

TEST(Session, TellsPeopleWhatWasFound)
{
    Session session;
    const auto error = [&](std::string_view source) { return result_of(session, source).error; };
    EXPECT_EQ(error("1 + lu([1, 2, 3])").found, "argument 1 of lu is 1 by 3");
    EXPECT_EQ(error("1 + lu([1, 2, 3])").caret, 8U);
    EXPECT_EQ(error("1 + lu([1, 2, 3])").column, 5U);
    EXPECT_EQ(error("mod(1 + 1, (2i))").found, "argument 2 of mod is a complex number");
    EXPECT_EQ(error("mod(1 + 1, (2i))").caret, 12U);
    EXPECT_EQ(error("sin(\"a\")").found, "argument 1 of sin is a text");
    EXPECT_EQ(error("lu(complex([1, 2 m]))").found, "argument 1 of lu is 1 by 2, complex, of different units");
    EXPECT_EQ(error("1 + \"a\"").found, "left is 1; right is a text");
    EXPECT_EQ(error("1 + \"a\"").caret, 5U);
    EXPECT_EQ(error("[1, 2] + [1; 2]").found, "left is 1 by 2; right is 2 by 1");
    EXPECT_EQ(error("[1, 2; 3, 4][0]").found, "it is 2 by 2");
    EXPECT_EQ(error("3 m -> s").found, "the value is 3, in m");
    EXPECT_EQ(error("identity(3 * 1.1)").found, "argument 1 of identity is 3.3000000000000003");
    EXPECT_EQ(error("identity(inf)").found, "argument 1 of identity is inf");
    EXPECT_EQ(error("identity(NaN * m)").found, "argument 1 of identity is NaN, in m");
}

TEST(Session, TellsPeopleWhichShapesACallWasMadeWith)
{
    Session session;
    const auto found = [&](std::string_view source) { return result_of(session, source).error.found; };
    EXPECT_EQ(found("lu([1; 2])"), "argument 1 of lu is 2 by 1");
    EXPECT_EQ(found("mult([1, 2; 3, 4], [5, 6, 7])"), "argument 1 of mult is 2 by 2; argument 2 of mult is 1 by 3");
    EXPECT_EQ(found("geninv([1, 2])"), "argument 1 of geninv is 1 by 2");
    EXPECT_EQ(found("lu([])"), "argument 1 of lu is 0 by 0");
    // other messages name only what has no elements
    EXPECT_EQ(found("match(1, [], \"near\")"), "argument 2 of match is 0 by 0");
    EXPECT_EQ(found("match(1, [2; 3])"), "");
    EXPECT_EQ(found("lu([1, 2; 2, 4])"), "");
}

TEST(Session, TellsPeopleWhichIndicesThereAre)
{
    Session session;
    result_of(session, "A := [1, 2; 3, 4]");
    result_of(session, "v := [1; 2; 3]");
    const auto found = [&](std::string_view source) { return result_of(session, source).error.found; };
    EXPECT_EQ(found("A[2, 0]"), "row 2 is not among 0 to 1");
    EXPECT_EQ(found("A[0, -1]"), "column -1 is not among 0 to 1");
    EXPECT_EQ(found("v[1e12]"), "index 1000000000000 is not among 0 to 2");
    EXPECT_EQ(found("[][0]"), "it is 0 by 0");
    EXPECT_EQ(found("v[0.5]"), "the index is 0.5");
    EXPECT_EQ(found("A[0, 1i]"), "it is 2 by 2");
    result_of(session, "set origin 1");
    EXPECT_EQ(found("v[0]"), "index 0 is not among 1 to 3");
}

TEST(Session, TellsPeopleHowManyArgumentsThereAre)
{
    Session session;
    const auto found = [&](std::string_view source) { return result_of(session, source).error.found; };
    EXPECT_EQ(found("tr()"), "tr takes 1 argument, not 0");
    EXPECT_EQ(found("mult(1)"), "mult takes 2 arguments, not 1");
    EXPECT_EQ(found("QR([1], 0, 1)"), "QR takes 1 or 2 arguments, not 3");
    EXPECT_EQ(found("DMS(1, 2, 3, 4)"), "DMS takes 1 to 3 arguments, not 4");
    EXPECT_EQ(found("max()"), "max takes at least 1 argument, not 0");
    EXPECT_EQ(found("if(1)"), "if takes 3 arguments, not 1");
    result_of(session, "f(p, q) := p");
    EXPECT_EQ(found("f(1)"), "f takes 2 arguments, not 1");
    result_of(session, "g := tr");
    EXPECT_EQ(found("g(1, 2)"), "tr takes 1 argument, not 2");
}

TEST(Session, SuggestsNamesThatAreNear)
{
    Session session;
    result_of(session, "stiffness := 1");
    const auto names = [&](std::string_view source) { return result_of(session, source).error.near_names; };
    EXPECT_EQ(names("stifness + 1"), (std::vector<std::string>{"stiffness"}));
    EXPECT_EQ(names("Sqrt(2)").at(0), "sqrt");
    EXPECT_EQ(names("sqr_t(2)").at(0), "sqrt");
    EXPECT_EQ(names("LSOLVE(2)"), (std::vector<std::string>{"lsolve"}));
    EXPECT_EQ(names("KN").at(0), "kN");
    EXPECT_TRUE(names("nothing_like_it").empty());
    EXPECT_TRUE(names(std::string(100'000, 'x')).empty());
}
