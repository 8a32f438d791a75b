// What no worksheet can show of construction and joins: shared arrays, the order of calls, absent arguments.
#include "bailuxsko/construction.hpp"

#include "bailuxhost/matval.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::bits;
using support::host_raised_by;
using support::matrix;
using support::number;
using support::Raised;

TEST(Matrix, CallsGoDownTheColumns)
{
    std::vector<std::pair<double, double>> calls;
    const Handle f = std::make_shared<const Qud::FunVal>("f", 2, 2, [&](std::span<const Handle> place) {
        const Qud::NumVal& i = *Qud::as_number(place[0]);
        const Qud::NumVal& j = *Qud::as_number(place[1]);
        EXPECT_EQ(i.m_dim, Qud::Dim::identity);
        EXPECT_TRUE(i.is_real() && j.is_real());
        calls.emplace_back(i.re(), j.re());
        return number(0);
    });
    Efi::Matrix::matrix(number(2), number(3), f);
    EXPECT_EQ(calls, (std::vector<std::pair<double, double>>{{0, 0}, {1, 0}, {0, 1}, {1, 1}, {0, 2}, {1, 2}}));
}

TEST(Matrix, RefusesWhatNoElementCanBe)
{
    const auto gives = [](Handle value) {
        return Handle(std::make_shared<const Qud::FunVal>("f", 2, 2, [value](auto) { return value; }));
    };
    const Raised expected{"must be string scalar or array", 3};
    const auto raised = [](const Handle& f) {
        return host_raised_by([&] { Efi::Matrix::matrix(number(1), number(1), f); });
    };
    EXPECT_EQ(raised(gives(gives(number(1)))), expected);
    EXPECT_EQ(raised(gives(nullptr)), expected);
    EXPECT_EQ(raised(nullptr), (Raised{"must be a function of 2 variables", 3}));
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::matrix(nullptr, number(1), nullptr); }),
              (Raised{"must be positive integer", 1}));
}

TEST(Matrix, AnAbsurdSizeCallsNothing)
{
    int calls = 0;
    const Handle f = std::make_shared<const Qud::FunVal>("f", 2, 2, [&](auto) {
        ++calls;
        return number(0);
    });
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::matrix(number(2e9), number(2e9), f); }), (Raised{"out of memory", -1}));
    EXPECT_EQ(calls, 0);
}

TEST(Submatrix, ABlockIsAViewAndAFlippedOneIsNot)
{
    const Handle M = matrix({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    const auto block = [&](double ir, double jr, double ic, double jc) {
        return Efi::Matrix::submatrix({.value = 0}, M, number(ir), number(jr), number(ic), number(jc));
    };
    const Handle view = block(1, 2, 0, 1);
    EXPECT_EQ(Qud::matrix_of(view)->m_rarr, Qud::matrix_of(M)->m_rarr);
    EXPECT_EQ(Qud::matrix_of(view)->Anr(), 3U);
    EXPECT_NE(Qud::matrix_of(block(2, 1, 0, 1))->m_rarr, Qud::matrix_of(M)->m_rarr);
}

TEST(Joins, LargeOnesAndViewsHoldTheElementsOfTheirParts)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(1000 * 8);
    for (std::size_t k = 0; k < 8000; ++k)
        numbers[k] = static_cast<double>(k);
    const Handle M = Qud::MatVal::make(1000, 8, numbers);
    const Handle view = Qud::matrix_of(M)->SubMatrix(100, 599, 2, 5);
    const Handle parts[] = {view, view};
    const Handle side = Efi::Matrix::augment(parts);
    const Handle tall = Efi::Matrix::stack(parts);
    ASSERT_EQ(Qud::matrix_of(side)->Cols(), 8U);
    ASSERT_EQ(Qud::matrix_of(tall)->Rows(), 1000U);
    for (std::size_t j = 0; j < 8; ++j)
        for (std::size_t i = 0; i < 500; ++i)
            ASSERT_EQ(Qud::matrix_of(side)->real(i, j), static_cast<double>((j % 4 + 2) * 1000 + 100 + i));
    for (std::size_t j = 0; j < 4; ++j)
        for (std::size_t i = 0; i < 1000; ++i)
            ASSERT_EQ(Qud::matrix_of(tall)->real(i, j), static_cast<double>((j + 2) * 1000 + 100 + i % 500));
}

TEST(Reverse, AnEntryOutsideTheMatrixIsNamed)
{
    // A table whose only entry stands in the gap below column 0 of a block of two rows.
    const auto table =
        std::make_shared<const Qud::EntryTable>(Qud::EntryTable{{.index = 2, .value = Qud::StrVal::make("stray")}});
    const Handle block = Qud::MatVal::make({.rows = 2,
                                            .cols = 2,
                                            .anr = 3,
                                            .real = Qud::zero_numbers(6),
                                            .imaginary = nullptr,
                                            .units = {},
                                            .entries = table});
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::reverse(block); }), (Raised{"unmatched key index", -1}));
}

TEST(Reverse, OneRowIsTheVeryValue)
{
    const Handle row = matrix({{1, 2, 3}});
    EXPECT_EQ(Efi::Matrix::reverse(row), row);
    const Handle block = Qud::matrix_of(matrix({{1, 2}, {3, 4}}))->SubMatrix(1, 1, 0, 1);
    EXPECT_EQ(Efi::Matrix::reverse(block), block);
    EXPECT_EQ(bits(Efi::Matrix::reverse(matrix({{1}, {2}}))), bits(matrix({{2}, {1}})));
}

/// Rows 1 to 2 and columns 1 to 2 of a complex matrix with a text at (1, 1), so that m_offset is 5 and Anr 4.
Handle block_with_text()
{
    Qud::MatBuilder builder(4, 4);
    for (std::size_t j = 0; j < 4; ++j)
        for (std::size_t i = 0; i < 4; ++i) {
            const double x = static_cast<double>(10 * i + j);
            builder.set_number(i, j, x, -x, Qud::Dim::identity);
        }
    builder.set(1, 1, Qud::StrVal::make("text"));
    return Qud::matrix_of(builder.finish())->SubMatrix(1, 2, 1, 2);
}

/// Element (i, j), -1 where a text stands.
double real_or_text(const Handle& value, std::size_t i, std::size_t j)
{
    return Qud::matrix_of(value)->entry(i, j) ? -1 : Qud::matrix_of(value)->real(i, j);
}

std::vector<double> elements(const Handle& value)
{
    std::vector<double> all;
    for (std::size_t i = 0; i < Qud::matrix_of(value)->Rows(); ++i)
        for (std::size_t j = 0; j < Qud::matrix_of(value)->Cols(); ++j)
            all.push_back(real_or_text(value, i, j));
    return all;
}

TEST(Views, GiveTheirOwnElements)
{
    using Elements = std::vector<double>;
    const Handle view = block_with_text();
    const Qud::MatVal& M = *Qud::matrix_of(view);
    ASSERT_EQ(M.m_offset, 5U);
    ASSERT_EQ(M.Anr(), 4U);
    ASSERT_EQ(elements(view), (Elements{-1, 12, 21, 22}));

    EXPECT_EQ(elements(Efi::Matrix::reverse(view)), (Elements{21, 22, -1, 12}));
    EXPECT_EQ(Qud::matrix_of(Efi::Matrix::reverse(view))->imag(0, 1), -22);
    EXPECT_EQ(elements(Efi::Matrix::diag(view)), (Elements{-1, 22}));
    EXPECT_EQ(elements(Efi::Matrix::diag(M.SubMatrix(0, 1, 0, 0))), (Elements{-1, 0, 0, 21}));
    EXPECT_EQ(elements(Efi::Matrix::diag(M.SubMatrix(0, 1, 1, 1))), (Elements{12, 0, 0, 22}));
    const Handle twice[] = {view, view};
    EXPECT_EQ(elements(Efi::Matrix::augment(twice)), (Elements{-1, 12, -1, 12, 21, 22, 21, 22}));
    EXPECT_EQ(elements(Efi::Matrix::stack(twice)), (Elements{-1, 12, 21, 22, -1, 12, 21, 22}));
    const auto cut = [&](double ir, double jr, double ic, double jc) {
        return Efi::Matrix::submatrix({.value = 1}, view, number(ir), number(jr), number(ic), number(jc));
    };
    EXPECT_EQ(elements(cut(2, 1, 1, 2)), (Elements{21, 22, -1, 12}));
    EXPECT_EQ(elements(cut(1, 2, 2, 1)), (Elements{12, -1, 22, 21}));
    EXPECT_EQ(elements(cut(2, 2, 1, 2)), (Elements{21, 22}));
}

TEST(Joins, AbsentArgumentsAreRefused)
{
    const Handle values[] = {number(1), nullptr};
    const Raised expected{"must be string scalar or array", 2};
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::augment(values); }), expected);
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::stack(values); }), expected);
}

TEST(Joins, MoreRowsThanARecordCanCount)
{
    // Views of one element, 2^31 rows high in their record only: nothing is read before the size is refused.
    const Handle tall = Qud::MatVal::make(1U << 31, 1, Qud::fresh_numbers(1));
    const Handle values[] = {tall, tall};
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::stack(values); }), (Raised{"out of memory", -1}));
}

} // namespace
