// What no worksheet can show of the notations: a locale with commas, numbers at the edges, the remainder.
#include "bailuxsko/affine.hpp"

#include "bailuxhost/matval.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <string>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::host_raised_by;
using support::number;
using support::Raised;

constexpr double inf = std::numeric_limits<double>::infinity();

std::string text(const Handle& value)
{
    const std::string* const found = value->get_IsString();
    return found ? *found : "no text";
}

/// A comma for the point and points between thousands, for the C++ library and, where such a locale is installed, for
/// the C library too.
class Commas {
public:
    Commas() : m_before(std::locale::global(std::locale(std::locale::classic(), &m_punctuation)))
    {
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "nl_NL.UTF-8"})
            if (std::setlocale(LC_NUMERIC, name) != nullptr)
                return;
    }
    ~Commas()
    {
        std::locale::global(m_before);
        std::setlocale(LC_NUMERIC, "C");
    }
    Commas(const Commas&) = delete;
    Commas& operator=(const Commas&) = delete;

private:
    struct Punctuation : std::numpunct<char> {
        Punctuation() : std::numpunct<char>(1) {} // ours, not the locale's
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    Punctuation m_punctuation;
    std::locale m_before;
};

TEST(Notations, KeepThePointUnderALocaleWithCommas)
{
    const Commas commas;
    EXPECT_EQ(text(Efi::Affine::HMS_inverse(number(3661.25))), "1:1:1.25");
    EXPECT_EQ(text(Efi::Affine::HMS_inverse(number(36e9))), "10000000:0:0");
    EXPECT_EQ(text(Efi::Affine::FIF_inverse(number(1234567 * 0.3048 + 0.0127))), "1234567' 1/2\"");
    const Handle time = Efi::Affine::HMS(Qud::StrVal::make("1:01:01.25"), nullptr, nullptr);
    EXPECT_EQ(Qud::as_number(time)->re(), 3661.25);
    EXPECT_EQ(host_raised_by([] { Efi::Affine::HMS(Qud::StrVal::make("1:01:01,25"), nullptr, nullptr); }),
              (Raised{"bad_hhmmss_string", 1}));
}

TEST(Notations, UnitsAreALengthAndATime)
{
    const Handle length = Efi::Affine::FIF(number(1), nullptr, nullptr);
    const Handle time = Efi::Affine::HMS(number(1), nullptr, nullptr);
    EXPECT_EQ(Qud::as_number(length)->m_dim, Qud::Dim(Qud::Dim::Base::length));
    EXPECT_EQ(Qud::as_number(time)->m_dim, Qud::Dim(Qud::Dim::Base::time));
}

TEST(Notations, AbsentArguments)
{
    const Raised expected{"must be real", 1};
    EXPECT_EQ(host_raised_by([] { Efi::Affine::FIF(nullptr, nullptr, nullptr); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::Affine::DMS(nullptr, nullptr, nullptr); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::Affine::HMS(nullptr, nullptr, nullptr); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::Affine::FIF_inverse(nullptr); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::Affine::DMS_inverse(nullptr); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::Affine::HMS_inverse(nullptr); }), expected);
    // the second may be absent where the third is there
    const Handle time = Efi::Affine::HMS(number(1), nullptr, number(5));
    EXPECT_EQ(Qud::as_number(time)->re(), 3605.0);
    EXPECT_EQ(host_raised_by([] { Efi::Affine::FIF(Qud::StrVal::make("1'"), nullptr, number(5)); }), expected);
}

TEST(Notations, NumbersTooLargeForTheirPartsNeverLeaveTheirTypes)
{
    for (const double x : {1e17, 1e100, std::numeric_limits<double>::max()})
        for (const double sign : {1.0, -1.0}) {
            EXPECT_NE(text(Efi::Affine::FIF_inverse(number(sign * x))), "");
            EXPECT_NE(text(Efi::Affine::HMS_inverse(number(sign * x))), "");
            EXPECT_EQ(Qud::matrix_of(Efi::Affine::DMS_inverse(number(sign * x)))->Rows(), 3U);
        }
}

TEST(Notations, DmsReadsAViewOfAMatrix)
{
    const Handle M = support::matrix({{9, 9, 9}, {9, 1, 9}, {9, 2, 9}, {9, 3, 9}});
    const Handle view = Qud::matrix_of(M)->SubMatrix(1, 3, 1, 1);
    EXPECT_EQ(Qud::as_number(Efi::Affine::DMS(view, nullptr, nullptr))->re(), 3723.0 * 4.84813681109536e-06);
}

TEST(Mod, IsNeverNegative)
{
    using Efi::Affine::mod;
    EXPECT_EQ(mod(7.0, 3.0), 1.0);
    EXPECT_EQ(mod(-7.0, 3.0), 2.0);
    EXPECT_EQ(mod(6.0, 3.0), 0.0);
    EXPECT_EQ(mod(7.0, -3.0), 0.0); // -2 by the formula
    EXPECT_EQ(mod(0.25, 1.0), 0.25);
    EXPECT_TRUE(std::isnan(mod(inf, 60.0)));
    EXPECT_TRUE(std::isnan(mod(NAN, 60.0)));
    EXPECT_TRUE(std::isnan(mod(1.0, 0.0)));
}

} // namespace
