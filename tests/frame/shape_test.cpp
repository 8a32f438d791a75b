#include "bailuxsko/shape.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxhost/matval.hpp"

#include <gtest/gtest.h>

namespace {

using Qud::Handle;

Handle matrix(std::uint32_t rows, std::uint32_t cols)
{
    return Qud::MatVal::make(rows, cols, Qud::zero_numbers(std::size_t{rows} * cols));
}

double number(const Handle& value)
{
    EXPECT_TRUE(Qud::as_number(value));
    EXPECT_EQ(Qud::as_number(value)->m_dim, Qud::Dim::identity);
    EXPECT_EQ(Qud::as_number(value)->im(), 0.0);
    return Qud::as_number(value)->re();
}

/// An argument that was not given is a null handle; a worksheet cannot hand one over.
const Handle absent;

TEST(Shape, AnAbsentValueHasNoRowsAndNoColumns)
{
    EXPECT_EQ(number(Efi::Matrix::rows(absent)), 0.0);
    EXPECT_EQ(number(Efi::Matrix::cols(absent)), 0.0);
}

TEST(Shape, AnAbsentValueIsRefusedWhereAMatrixIsNeeded)
{
    struct Case {
        Handle (*operation)(const Handle&);
        const char* message;
    };
    const Case cases[] = {
        {.operation = Efi::Matrix::length, .message = "must be vector"},
        {.operation = Efi::Matrix::transpose, .message = "must be matrix"},
        {.operation = Efi::Matrix::cpMatrix, .message = "must be matrix"},
        {.operation = [](const Handle& v) { return Efi::Matrix::last(Qud::Origin{1}, v); },
         .message = "must be vector"},
    };
    for (const Case& c : cases) {
        try {
            c.operation(absent);
            FAIL() << c.message;
        } catch (const Evl::Run::AppException& error) {
            EXPECT_EQ(error.message(), c.message);
            EXPECT_EQ(error.index(), 1);
        }
    }
}

TEST(Shape, LastCountsFromTheOrigin)
{
    EXPECT_EQ(number(Efi::Matrix::last(Qud::Origin{1}, matrix(5, 1))), 5.0);
    EXPECT_EQ(number(Efi::Matrix::last(Qud::Origin{0}, matrix(5, 1))), 4.0);
    EXPECT_EQ(number(Efi::Matrix::last(Qud::Origin{-3}, matrix(5, 1))), 1.0);
    EXPECT_EQ(number(Efi::Matrix::last(Qud::Origin{2147483647}, matrix(5, 1))), 2147483651.0);
    EXPECT_EQ(number(Efi::Matrix::last(Qud::Origin{0}, matrix(0, 1))), -1.0);
}

TEST(Shape, ACopyHasArraysOfItsOwn)
{
    const Handle whole = matrix(3, 3);
    const Handle block = Qud::matrix_of(whole)->SubMatrix(1, 2, 0, 1);
    const Handle copy = Efi::Matrix::cpMatrix(block);
    EXPECT_NE(Qud::matrix_of(copy)->m_rarr, Qud::matrix_of(whole)->m_rarr);
    EXPECT_EQ(Qud::matrix_of(copy)->Anr(), 2U);
    EXPECT_EQ(Qud::matrix_of(copy)->m_offset, 0U);
}

TEST(Shape, ATransposedColumnIsAViewOfIt)
{
    const Handle column = matrix(5, 1);
    const Handle row = Efi::Matrix::transpose(column);
    EXPECT_EQ(Qud::matrix_of(row)->Rows(), 1U);
    EXPECT_EQ(Qud::matrix_of(row)->Cols(), 5U);
    EXPECT_EQ(Qud::matrix_of(row)->m_rarr, Qud::matrix_of(column)->m_rarr);
}

} // namespace
