#include "bailuxhost/matval.hpp"
#include "results.hpp"

#include <bit>
#include <cmath>
#include <cstdint>

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace {

std::string json_of_value(Qud::Handle value)
{
    worksheet::StatementResult result;
    result.kind = worksheet::StatementResult::Kind::value;
    result.value = std::move(value);
    std::string text;
    worksheet::append_json(text, result);
    return text;
}

} // namespace

TEST(Json, EveryKindOfResult)
{
    const std::vector<std::string> expected{
        R"({"kind":"definition","name":"A"})",
        R"({"kind":"definition","name":"f"})",
        R"({"kind":"setting","name":"origin"})",
        R"({"kind":"number","re":3.0,"im":0.0,"unit":"m"})",
        R"({"kind":"matrix","rows":2,"cols":2,"complex":false,"unit":"","data":[[1.0,2.0],[3.0,4.0]]})",
        R"({"kind":"text","text":"abc"})",
        R"({"kind":"function","name":"f","params":2})",
        R"({"kind":"error","message":"singular matrix","index":-1,"function":"lu","line":8,"column":3})",
    };
    EXPECT_EQ(json_of("A := 1\nf(x, y) := x\nset origin 0\n3 m\n[1, 2; 3, 4]\n\"abc\"\nf\n1+lu([1, 2; 2, 4])"),
              expected);
}

TEST(Json, ErrorsOfDefinitionsAndSettings)
{
    const std::vector<std::string> expected{
        R"({"kind":"error","message":"undefined name: y","index":-1,"function":"","line":1,"column":6})",
        R"({"kind":"error","message":"syntax error: there is no setting b; there are origin, tol, )"
        R"(strict_singularity_checking, zero_over_zero_is_zero","index":-1,"function":"","line":2,"column":5})",
    };
    EXPECT_EQ(json_of("x := y\nset b c"), expected);
}

TEST(Json, ControlCharactersInTexts)
{
    EXPECT_EQ(json_of_value(Qud::StrVal::make(std::string("\0\x01\b\f\r\n\t\x1F\x7F\"\\/\u00fc", 14))),
              "{\"kind\":\"text\",\"text\":\"\\u0000\\u0001\\u0008\\u000c\\r\\n\\t\\u001f\x7F\\\"\\\\/\u00fc\"}");
}

RC_GTEST_PROP(Json, TextsReadBack, ())
{
    const auto text = *rc::gen::container<std::string>(rc::gen::inRange('\0', '\x7F'));
    RC_ASSERT(nlohmann::json::parse(json_of_value(Qud::StrVal::make(text)))["text"] == text);
}

RC_GTEST_PROP(Json, NumbersReadBackToTheSameBits, (std::uint64_t bits))
{
    const double value = std::bit_cast<double>(bits);
    RC_PRE(std::isfinite(value));
    const auto json = nlohmann::json::parse(json_of_value(Qud::NumVal::make(value, -value)));
    RC_ASSERT(json["re"].is_number_float() && json["im"].is_number_float());
    RC_ASSERT(std::bit_cast<std::uint64_t>(json["re"].get<double>()) == bits);
    RC_ASSERT(std::signbit(json["im"].get<double>()) != std::signbit(value));
}

TEST(Json, WholeNumbersHaveAPoint)
{
    for (const double value : {0.0, -0.0, 1.0, 1e15, 123456.0, 1e21, 1e22, 9007199254740992.0}) {
        const std::string text = json_of_value(Qud::NumVal::make(value));
        EXPECT_TRUE(nlohmann::json::parse(text)["re"].is_number_float()) << text;
    }
}

TEST(Json, AMatrixOfNoElements)
{
    EXPECT_EQ(json_of_value(Qud::MatVal::make(0, 3, Qud::fresh_numbers(0))),
              R"({"kind":"matrix","rows":0,"cols":3,"complex":false,"unit":"","data":[]})");
    EXPECT_EQ(json_of_value(Qud::MatVal::make(3, 0, Qud::fresh_numbers(0))),
              R"({"kind":"matrix","rows":3,"cols":0,"complex":false,"unit":"","data":[]})");
}
