#include "bailuxsko/frame/error_checks.hpp"

#include "bailuxhost/error.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

namespace {

using Qud::Dim;
using Qud::Handle;

Handle matrix(std::uint32_t rows, std::uint32_t cols, const Dim& unit = Dim::identity)
{
    return Qud::MatVal::make(rows, cols, Qud::zero_numbers(std::size_t{rows} * cols), nullptr, unit);
}

Handle nested()
{
    Qud::MatBuilder builder(1, 1);
    builder.set(0, 0, Qud::StrVal::make("a"));
    return builder.finish();
}

Handle function()
{
    return std::make_shared<const Qud::FunVal>("f", 1, 1, [](std::span<const Handle> x) { return x[0]; });
}

const Handle absent;
const Handle number = Qud::NumVal::make(2.0);
const Handle text = Qud::StrVal::make("abc");
const Dim metre{Dim::Base::length};

/// The check raises the message with the index that it was given.
void expect_raise(const char* message, int index, const std::function<void()>& check)
{
    try {
        check();
        FAIL() << "accepted: " << message;
    } catch (const Evl::Run::AppException& error) {
        EXPECT_EQ(error.message(), message);
        EXPECT_EQ(error.index(), index);
    }
}

TEST(ErrorChecks, TextsAreTextsAndNothingElse)
{
    EXPECT_TRUE(Efi::Error::is_string(text));
    for (const Handle& other : {absent, number, matrix(1, 1), nested(), function()})
        EXPECT_FALSE(Efi::Error::is_string(other));
    const std::string* found = nullptr;
    EXPECT_TRUE(Efi::Error::is_string(text, &found));
    EXPECT_EQ(*found, "abc");
    EXPECT_EQ(Efi::Error::as_string(text, "invalid modifier", 3), "abc");
    expect_raise("invalid modifier", 3, [] { Efi::Error::as_string(number, "invalid modifier", 3); });
    expect_raise("invalid modifier", 2, [] { Efi::Error::as_string(absent, "invalid modifier", 2); });
}

TEST(ErrorChecks, ARealNumberWithoutUnit)
{
    EXPECT_EQ(Efi::Error::as_dimless_real(number, 1), 2.0);
    EXPECT_EQ(Efi::Error::as_dimless_real(Qud::NumVal::make(2.5, -0.0), 1), 2.5);
    for (const Handle& other :
         {absent, text, matrix(1, 1), function(), Qud::NumVal::make(1.0, 1.0), Qud::NumVal::make(1.0, 0.0, metre)})
        expect_raise("must be real", 2, [&] { Efi::Error::as_dimless_real(other, 2); });
}

TEST(ErrorChecks, WholeNumbersOfWhateverSizeAndUnit)
{
    for (const double whole : {0.0, -3.0, 1e300})
        EXPECT_EQ(Efi::Error::as_integer(Qud::NumVal::make(whole), 1), whole);
    EXPECT_EQ(Efi::Error::as_integer(Qud::NumVal::make(2.0, -0.0, metre), 1), 2.0);
    const double inf = std::numeric_limits<double>::infinity();
    for (const Handle& other : {absent, text, matrix(1, 1), function(), Qud::NumVal::make(1.5), Qud::NumVal::make(inf),
                                Qud::NumVal::make(1.0, 1.0)})
        expect_raise("must be integer", 2, [&] { Efi::Error::as_integer(other, 2); });
}

TEST(ErrorChecks, MatricesOfAShape)
{
    struct Case {
        Efi::Error::ofsize_t shape;
        bool fits_3_by_1;
        bool fits_1_by_3;
    };
    const Case cases[] = {
        {.shape = {-1, -1}, .fits_3_by_1 = true, .fits_1_by_3 = true},
        {.shape = {3, -1}, .fits_3_by_1 = true, .fits_1_by_3 = false},
        {.shape = {-1, 3}, .fits_3_by_1 = false, .fits_1_by_3 = true},
        {.shape = {-1, 1}, .fits_3_by_1 = true, .fits_1_by_3 = false},
        {.shape = {3, 1}, .fits_3_by_1 = true, .fits_1_by_3 = false},
        {.shape = {0, -1}, .fits_3_by_1 = false, .fits_1_by_3 = false},
        {.shape = {4294967297, 1}, .fits_3_by_1 = false, .fits_1_by_3 = false},
    };
    const Handle column = matrix(3, 1);
    const Handle row = matrix(1, 3);
    for (const Case& c : cases) {
        EXPECT_EQ(Efi::Error::is_matrix(column, c.shape) == column.get(), c.fits_3_by_1) << c.shape.rows;
        EXPECT_EQ(Efi::Error::is_matrix(row, c.shape) == row.get(), c.fits_1_by_3) << c.shape.rows;
        // A vector is a column first, then of the asked shape.
        EXPECT_EQ(Efi::Error::is_vector(column, c.shape) == column.get(), c.fits_3_by_1);
        EXPECT_EQ(Efi::Error::is_vector(row, c.shape), nullptr);
    }
    for (const Handle& other : {absent, number, text, function()}) {
        EXPECT_EQ(Efi::Error::is_matrix(other), nullptr);
        EXPECT_EQ(Efi::Error::is_vector(other), nullptr);
    }
}

TEST(ErrorChecks, RaiseTheirMessageWithTheirIndex)
{
    const Handle row = matrix(1, 3);
    EXPECT_EQ(&Efi::Error::as_matrix(row, "must be matrix", 1), row.get());
    EXPECT_EQ(&Efi::Error::as_scalar(number, "must be scalar", 1), number.get());
    EXPECT_EQ(&Efi::Error::as_scalar_matrix(row, 1), row.get());
    const Handle square = matrix(2, 2, metre);
    EXPECT_EQ(&Efi::Error::as_square_smatrix(square, 1), square.get());

    expect_raise("must be vector", 4, [&] { Efi::Error::as_vector(row, "must be vector", 4); });
    expect_raise("must be scalar", 2, [&] { Efi::Error::as_scalar(row, "must be scalar", 2); });
    expect_raise("must be square", 1, [&] { Efi::Error::as_square_smatrix(row, 1); });
    for (const Handle& other : {absent, number, text, function(), nested()}) {
        expect_raise("must be scalar matrix", 3, [&] { Efi::Error::as_scalar_matrix(other, 3); });
        expect_raise("must be scalar matrix", 3, [&] { Efi::Error::as_square_smatrix(other, 3); });
    }
}

TEST(ErrorChecks, MixedUnitsAreNoScalarMatrix)
{
    Qud::MatBuilder builder(1, 2);
    builder.set_number(0, 0, 1.0, 0.0, metre);
    builder.set_number(0, 1, 1.0, 0.0, Dim::identity);
    const Handle mixed = builder.finish();
    expect_raise("must be scalar matrix", 1, [&] { Efi::Error::as_scalar_matrix(mixed, 1); });
    expect_raise("must be real matrix", 1, [&] { Qud::DimVal::asRealMatrix(mixed, 1); });
}

TEST(ErrorChecks, AnImaginaryArrayOfZerosIsNotReal)
{
    const Handle complex = Qud::MatVal::make(1, 1, Qud::zero_numbers(1), Qud::zero_numbers(1));
    expect_raise("must be real matrix", 1, [&] { Qud::DimVal::asRealMatrix(complex, 1); });
    EXPECT_EQ(&Efi::Error::as_scalar_matrix(complex, 1), complex.get());
}

} // namespace
