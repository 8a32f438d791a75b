// Beside the message of a refusal stands which element, row or column breaks the pattern of units.
#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/inverse.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <gtest/gtest.h>

namespace {

using Qud::Dim;
using Qud::Handle;
using support::host_raised_by;
using support::number;
using support::Raised;

const Dim m(Dim::Base::length);
const Dim s(Dim::Base::time);

Handle of_units(std::initializer_list<std::initializer_list<Dim>> units)
{
    Qud::MatBuilder result(static_cast<std::uint32_t>(units.size()), static_cast<std::uint32_t>(units.begin()->size()));
    std::size_t i = 0;
    for (const auto& row : units) {
        std::size_t j = 0;
        for (const Dim& unit : row) {
            result.set_number(i, j, i == j ? 2.0 : 1.0, 0.0, unit);
            ++j;
        }
        ++i;
    }
    return result.finish();
}

TEST(UnitDetails, TheElementThatBreaksThePattern)
{
    const Handle broken = of_units({{m, m}, {m, s}});
    const Raised inverse = host_raised_by([&] { Efi::Matrix::inv(broken); });
    EXPECT_EQ(inverse, (Raised{"must be a linear algebra matrix", 1}));
    EXPECT_EQ(inverse.detail, "row 2, column 2 has unit s where m is needed");
    const Raised product = host_raised_by([&] { Efi::Matrix::mult(of_units({{m, s}}), broken); });
    EXPECT_EQ(product, (Raised{"must be a linear algebra matrix", 2}));
    EXPECT_EQ(product.detail, inverse.detail);
    const Raised power = host_raised_by([&] { Efi::Matrix::pwr(broken, number(2)); });
    EXPECT_EQ(power, (Raised{"must be self multiplicable", 1}));
    EXPECT_EQ(power.detail, inverse.detail);
}

TEST(UnitDetails, ThePairsThatDoNotAgree)
{
    const Raised product = host_raised_by([&] { Efi::Matrix::mult(of_units({{m, s}}), of_units({{s}, {s}})); });
    EXPECT_EQ(product, (Raised{"matrix unit mismatch", -1}));
    EXPECT_EQ(product.detail,
              "elements (1, 2) and (2, 1) multiply to unit s^2, elements (1, 1) and (1, 1) to unit m*s");
    const Raised columns = host_raised_by([&] { Efi::Matrix::mult(of_units({{m}, {s}}), of_units({{Dim{}}, {s}})); });
    EXPECT_EQ(columns, (Raised{"matrix unit mismatch", -1}));
    EXPECT_EQ(columns.detail, "elements (2, 1) and (2, 1) multiply to unit s^2, elements (1, 1) and (1, 1) to unit m");
    const Raised power = host_raised_by([&] { Efi::Matrix::pwr(of_units({{m, s}, {m, s}}), number(2)); });
    EXPECT_EQ(power, (Raised{"must be self multiplicable", 1}));
    EXPECT_EQ(power.detail, "elements (1, 2) and (2, 1) multiply to unit m*s, elements (1, 1) and (1, 1) to unit m^2");
}

} // namespace
