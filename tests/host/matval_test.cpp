#include "bailuxhost/matval.hpp"

#include "tests/host/matrices.hpp"

#include <array>
#include <cstring>
#include <string>
#include <thread>

namespace {

using host::as_matrix;
using host::cell;
using host::Cell;
using host::cells;
using host::number_cell;
using host::numbered;
using Qud::Dim;
using Qud::Handle;
using Qud::MatBuilder;
using Qud::MatVal;
using Qud::NumVal;
using Qud::StrVal;

const Dim none;
const Dim m{Dim::Base::length};
const Dim s{Dim::Base::time};

/// 3 by 3 lengths with texts at (0, 0), (1, 2) and (2, 0).
Handle with_texts()
{
    MatBuilder builder(3, 3);
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            builder.set_number(i, j, static_cast<double>(10 * i + j), 0.0, m);
    builder.set(2, 0, StrVal::make("third"));
    builder.set(0, 0, StrVal::make("first"));
    builder.set(1, 2, StrVal::make("second"));
    return builder.finish();
}

std::string text_at(const MatVal& M, std::size_t i, std::size_t j)
{
    const Handle* const held = M.entry(i, j);
    return held ? *(*held)->get_IsString() : "";
}

TEST(MatVal, TheRecordIsThatOfTheFunctionInterface)
{
    static_assert(sizeof(Qud::mat_val) == 32);
    const Handle value = numbered(3, 2, m, true);
    const MatVal& M = as_matrix(value);
    std::array<std::uint32_t, 8> words{};
    const Qud::mat_val view = M.view();
    std::memcpy(words.data(), &view, sizeof view);
    EXPECT_EQ(words[0], 3U);
    EXPECT_EQ(words[1], 0x7FF40000U);
    EXPECT_EQ(words[2], 3U);
    EXPECT_EQ(words[3], 2U);
    EXPECT_EQ(view.m_rv, M.m_rarr);
    EXPECT_EQ(view.m_iv, M.m_iarr);
    EXPECT_EQ(as_matrix(numbered(3, 2)).view().m_iv, nullptr);
}

TEST(MatVal, ViewsLeaveTheSharedRecordAlone)
{
    const Handle value = numbered(2, 2);
    const MatVal& M = as_matrix(value);
    (void)M.view();
    EXPECT_EQ(M.Data.m_rv, nullptr);
    EXPECT_EQ(M.Data.m_iv, nullptr);
    EXPECT_EQ(M.Data.m_rows, 2U);
}

TEST(MatVal, ABlockCopiesNothing)
{
    const Handle value = numbered(5, 4, m, true);
    const MatVal& M = as_matrix(value);
    const Handle inner = M.SubMatrix(1, 3, 1, 2);
    const MatVal& B = as_matrix(inner);
    EXPECT_EQ(B.m_rarr, M.m_rarr);
    EXPECT_EQ(B.m_iarr, M.m_iarr);
    EXPECT_EQ(B.m_offset, 6U);
    EXPECT_EQ(B.Anr(), 5U);
    EXPECT_EQ(B.view().m_rv, M.m_rarr + 6);
    EXPECT_EQ(B.view().m_iv, M.m_iarr + 6);
    EXPECT_EQ(cells(inner),
              (std::vector<Cell>{number_cell(11, -11, m), number_cell(12, -12, m), number_cell(21, -21, m),
                                 number_cell(22, -22, m), number_cell(31, -31, m), number_cell(32, -32, m)}));
}

TEST(MatVal, ABlockOfABlockCopiesNothing)
{
    const Handle value = numbered(5, 4);
    const Handle block = as_matrix(value).SubMatrix(1, 4, 1, 3);
    const Handle inner = as_matrix(block).SubMatrix(1, 2, 2, 2);
    EXPECT_EQ(as_matrix(inner).m_rarr, as_matrix(value).m_rarr);
    EXPECT_EQ(as_matrix(inner).m_offset, 3U * 5 + 2);
    EXPECT_EQ(as_matrix(inner).Anr(), 5U);
    EXPECT_EQ(cells(inner), (std::vector<Cell>{number_cell(23), number_cell(33)}));
}

TEST(MatVal, TheCanonicalFormHasPackedArrays)
{
    const Handle value = numbered(5, 4, m, true);
    EXPECT_EQ(MatVal::Canonicalize(value), value);
    const Handle block = as_matrix(value).SubMatrix(1, 3, 1, 2);
    const Handle packed = MatVal::Canonicalize(block);
    EXPECT_EQ(cells(packed), cells(block));
    EXPECT_EQ(as_matrix(packed).m_offset, 0U);
    EXPECT_EQ(as_matrix(packed).Anr(), 3U);
    // The first rows of a matrix begin where it begins, and their columns are apart.
    const Handle top = as_matrix(value).SubMatrix(0, 1, 0, 3);
    EXPECT_EQ(as_matrix(MatVal::Canonicalize(top)).Anr(), 2U);
    // Whole columns that begin later are not packed either: they share the arrays of all.
    const Handle later = as_matrix(value).SubMatrix(0, 4, 1, 3);
    EXPECT_EQ(as_matrix(MatVal::Canonicalize(later)).m_offset, 0U);
}

TEST(MatVal, RealPartsOfMixedUnitsAreReadInSI)
{
    MatBuilder builder(1, 2);
    builder.set_number(0, 0, 2.0, 1.0, m);
    builder.set_number(0, 1, 3.0, 0.0, s);
    const Handle value = builder.finish();
    EXPECT_EQ(as_matrix(value).get_real_mixed(0, 0), 2.0);
    EXPECT_EQ(as_matrix(value).get_real_mixed(0, 1), 3.0);
}

TEST(MatVal, ABlockOutlivesItsMatrix)
{
    const Handle block = as_matrix(numbered(5, 4)).SubMatrix(2, 2, 3, 3);
    EXPECT_EQ(cells(block), std::vector<Cell>{number_cell(23)});
}

TEST(MatVal, ABlockHoldsItsOwnEntriesOnly)
{
    const Handle value = with_texts();
    const MatVal& M = as_matrix(value);
    ASSERT_EQ(M.entries()->size(), 3U);
    const Handle corner = M.SubMatrix(0, 1, 1, 2);
    ASSERT_EQ(as_matrix(corner).entries()->size(), 1U);
    EXPECT_EQ(text_at(as_matrix(corner), 1, 1), "second");
    EXPECT_EQ(text_at(as_matrix(corner), 0, 0), "");

    const Handle numbers = M.SubMatrix(0, 2, 1, 1);
    EXPECT_EQ(as_matrix(numbers).entries(), nullptr);
    EXPECT_TRUE(as_matrix(numbers).IsUniformScalar());
    EXPECT_EQ(as_matrix(numbers).UniformDimension(), m);

    const Handle text = M.SubMatrix(2, 2, 0, 0);
    EXPECT_EQ(as_matrix(text).UniformDimension(), Dim::string_dim);
}

TEST(MatVal, ASlotWithoutANumberHoldsThePointerNaN)
{
    const Handle value = with_texts();
    EXPECT_TRUE(Efi::isPtrNan(as_matrix(value).real(1, 2)));
    EXPECT_FALSE(Efi::isPtrNan(as_matrix(value).real(1, 1)));
}

TEST(MatVal, TheUniformDimensionIsAUnitOrAMarker)
{
    EXPECT_EQ(as_matrix(numbered(2, 2, m)).UniformDimension(), m);
    EXPECT_EQ(as_matrix(MatVal::empty()).UniformDimension(), none);

    const Handle two_units = host::matrix_of_units(1, 2, {m, s});
    EXPECT_EQ(as_matrix(two_units).UniformDimension(), Dim::mixed_matrix_dim);
    EXPECT_FALSE(as_matrix(two_units).IsUniformScalar());
    EXPECT_EQ(as_matrix(two_units).number_unit(), nullptr);

    const Handle text_and_numbers = with_texts();
    EXPECT_EQ(as_matrix(text_and_numbers).UniformDimension(), Dim::mixed_matrix_dim);
    EXPECT_FALSE(as_matrix(text_and_numbers).IsUniformScalar());
    EXPECT_EQ(*as_matrix(text_and_numbers).number_unit(), m);

    MatBuilder builder(1, 2);
    builder.set(0, 0, StrVal::make("a"));
    builder.set(0, 1, numbered(2, 2, m));
    const Handle all = builder.finish();
    EXPECT_EQ(as_matrix(all).UniformDimension(), Dim::string_dim);
    EXPECT_FALSE(as_matrix(all).IsUniformScalar());
}

TEST(MatVal, UnitsThatAgreeAreOneAgain)
{
    const Handle value = host::matrix_of_units(2, 2, {m, s, m, s});
    const Handle column = as_matrix(value).SubMatrix(0, 1, 1, 1);
    EXPECT_TRUE(as_matrix(column).IsUniformScalar());
    EXPECT_EQ(as_matrix(column).UniformDimension(), s);
    const Handle row = as_matrix(value).SubMatrix(1, 1, 0, 1);
    EXPECT_EQ(as_matrix(row).UniformDimension(), Dim::mixed_matrix_dim);
}

TEST(MatVal, ElementsAreValuesOfTheirOwn)
{
    const Handle inner = numbered(1, 1);
    MatBuilder builder(1, 3);
    builder.set(0, 0, NumVal::make(2.0, -1.0, m));
    builder.set(0, 1, StrVal::make("text"));
    builder.set(0, 2, inner);
    const Handle value = builder.finish();
    const Handle number = as_matrix(value).element(0, 0);
    EXPECT_EQ(Qud::as_number(number)->re(), 2.0);
    EXPECT_EQ(Qud::as_number(number)->im(), -1.0);
    EXPECT_EQ(Qud::as_number(number)->m_dim, m);
    EXPECT_EQ(*as_matrix(value).element(0, 1)->get_IsString(), "text");
    EXPECT_EQ(as_matrix(value).element(0, 2), inner);
}

TEST(MatVal, TransposesUnitsEntriesAndImaginaryParts)
{
    MatBuilder builder(2, 3);
    const Handle text = StrVal::make("text");
    const Handle inner = numbered(1, 2);
    builder.set_number(0, 0, 1, 2, m);
    builder.set_number(0, 1, 3, 0, s);
    builder.set(0, 2, text);
    builder.set(1, 0, inner);
    builder.set_number(1, 1, 5, -6, none);
    builder.set_number(1, 2, 7, 8, m);
    const Handle turned = as_matrix(builder.finish()).Transpose();
    EXPECT_EQ(as_matrix(turned).Rows(), 3U);
    EXPECT_EQ(as_matrix(turned).Cols(), 2U);
    EXPECT_EQ(cells(turned), (std::vector<Cell>{number_cell(1, 2, m),
                                                {.entry = inner.get()},
                                                number_cell(3, 0, s),
                                                number_cell(5, -6),
                                                {.entry = text.get()},
                                                number_cell(7, 8, m)}));
}

TEST(MatVal, AColumnAndItsTransposeShareTheirArrays)
{
    const Handle value = numbered(4, 2, m, true);
    const Handle column = as_matrix(value).SubMatrix(1, 3, 1, 1);
    const Handle row = as_matrix(column).Transpose();
    EXPECT_EQ(as_matrix(row).m_rarr, as_matrix(value).m_rarr);
    EXPECT_EQ(cells(row), cells(column));
    const Handle back = as_matrix(row).Transpose();
    EXPECT_EQ(as_matrix(back).m_rarr, as_matrix(value).m_rarr);
    EXPECT_EQ(cells(back), cells(column));
    EXPECT_EQ(as_matrix(back).Rows(), 3U);
}

TEST(MatVal, CopiesArePackedAndTheirOwn)
{
    const Handle value = with_texts();
    const Handle block = as_matrix(value).SubMatrix(1, 2, 0, 2);
    const Handle copy = as_matrix(block).copy();
    EXPECT_NE(as_matrix(copy).m_rarr, as_matrix(value).m_rarr);
    EXPECT_EQ(as_matrix(copy).m_offset, 0U);
    EXPECT_EQ(as_matrix(copy).Anr(), 2U);
    EXPECT_EQ(cells(copy), cells(block));
    const Handle complex_copy = as_matrix(as_matrix(numbered(3, 3, m, true)).SubMatrix(1, 2, 1, 2)).copy();
    EXPECT_EQ(cell(as_matrix(complex_copy), 1, 1), number_cell(22, -22, m));
}

TEST(MatVal, UnitsAreTakenOffAndEntriesStay)
{
    const Handle value = with_texts();
    const Handle stripped = as_matrix(value).StripDimension();
    EXPECT_EQ(as_matrix(stripped).m_rarr, as_matrix(value).m_rarr);
    EXPECT_EQ(cell(as_matrix(stripped), 1, 1), number_cell(11));
    EXPECT_EQ(text_at(as_matrix(stripped), 1, 2), "second");
    EXPECT_EQ(as_matrix(stripped).UniformDimension(), Dim::mixed_matrix_dim);
    EXPECT_TRUE(as_matrix(as_matrix(host::matrix_of_units(1, 2, {m, s})).StripDimension()).IsUniformScalar());
}

TEST(MatVal, APatternGivesEachElementItsUnit)
{
    const Handle value = numbered(2, 2);
    const Handle patterned = as_matrix(value).ApplyLinearDimension(Qud::MatDim({m, s}, {none, s}));
    EXPECT_EQ(as_matrix(patterned).m_rarr, as_matrix(value).m_rarr);
    const Dim ms = Dim::Mult(m, s);
    EXPECT_EQ(cells(patterned), (std::vector<Cell>{number_cell(0, 0, m), number_cell(1, 0, ms), number_cell(10, 0, s),
                                                   number_cell(11, 0, Dim::Mult(s, s))}));
    const Handle uniform = as_matrix(value).ApplyLinearDimension(Qud::MatDim({s, s}, {m, m}));
    EXPECT_TRUE(as_matrix(uniform).IsUniformScalar());
    EXPECT_EQ(as_matrix(uniform).UniformDimension(), ms);
}

TEST(MatVal, RealPartsArePackedColumnByColumn)
{
    const Handle value = numbered(4, 3);
    std::array<double, 5> packed{0, 0, 0, 0, 77};
    as_matrix(as_matrix(value).SubMatrix(2, 3, 1, 2)).PackReal(packed.data());
    EXPECT_EQ(packed, (std::array<double, 5>{21, 31, 22, 32, 77}));
}

TEST(MatVal, NoElementsAreNoTrouble)
{
    const Handle empty = MatVal::empty();
    const MatVal& M = as_matrix(empty);
    EXPECT_TRUE(M.is_empty());
    EXPECT_TRUE(M.IsUniformScalar());
    for (const Handle& other : {M.Transpose(), M.copy(), M.StripDimension()})
        EXPECT_EQ(as_matrix(other).count(), 0U);
    M.PackReal(nullptr);
}

RC_GTEST_PROP(MatValLaws, ABlockShowsTheElementsOfItsMatrix, ())
{
    const Handle value = gen::matrix();
    const MatVal& M = as_matrix(value);
    const auto range = [](std::size_t end) {
        const std::size_t first = *rc::gen::inRange<std::size_t>(0, end);
        return std::pair(first, *rc::gen::inRange<std::size_t>(first, end));
    };
    const auto [first_row, last_row] = range(M.Rows());
    const auto [first_col, last_col] = range(M.Cols());
    const Handle block = M.SubMatrix(first_row, last_row, first_col, last_col);
    const Handle turned = as_matrix(block).Transpose();
    for (std::size_t i = first_row; i <= last_row; ++i) {
        for (std::size_t j = first_col; j <= last_col; ++j) {
            RC_ASSERT(cell(as_matrix(block), i - first_row, j - first_col) == cell(M, i, j));
            RC_ASSERT(cell(as_matrix(turned), j - first_col, i - first_row) == cell(M, i, j));
        }
    }
    RC_ASSERT(cells(as_matrix(block).copy()) == cells(block));
    RC_ASSERT(cells(as_matrix(turned).Transpose()) == cells(block));
    RC_ASSERT(as_matrix(turned).UniformDimension() == as_matrix(block).UniformDimension());
}

TEST(MatVal, LargeMatricesTransposeTileByTile)
{
    for (const auto& [rows, cols] : {std::pair(31U, 33U), {32U, 32U}, {64U, 65U}, {100U, 1U}, {2U, 97U}}) {
        const Handle value = numbered(rows, cols, m, true);
        const Handle turned = as_matrix(value).Transpose();
        for (std::size_t i = 0; i < rows; ++i)
            for (std::size_t j = 0; j < cols; ++j)
                ASSERT_EQ(cell(as_matrix(turned), j, i), cell(as_matrix(value), i, j)) << rows << " by " << cols;
    }
}

/// The numbers of a source with a gap behind every column, as the test knows them.
double of_source(std::size_t i, std::size_t j)
{
    return static_cast<double>(100 * i + j) + 0.5;
}

TEST(MatVal, ACopyHoldsItsFewNumbersItself)
{
    const struct {
        std::uint32_t rows;
        std::uint32_t cols;
    } shapes[] = {{0, 0}, {1, 1},  {2, 2},  {4, 1},  {5, 1},   {2, 4},
                  {4, 4}, {17, 1}, {10, 5}, {51, 1}, {10, 10}, {101, 1}};
    constexpr std::size_t gap = 3;
    for (const auto& shape : shapes)
        for (const bool is_complex : {false, true}) {
            const std::size_t anr = shape.rows + gap;
            std::vector<double> re(anr * shape.cols + 1);
            std::vector<double> im(anr * shape.cols + 1);
            for (std::size_t j = 0; j < shape.cols; ++j)
                for (std::size_t i = 0; i < shape.rows; ++i) {
                    re[i + j * anr] = of_source(i, j);
                    im[i + j * anr] = -of_source(j, i);
                }
            const Handle copy =
                MatVal::copy_of(shape.rows, shape.cols, re.data(), is_complex ? im.data() : nullptr, anr, m);
            const MatVal& M = as_matrix(copy);
            ASSERT_EQ(M.Rows(), shape.rows);
            ASSERT_EQ(M.Cols(), shape.cols);
            EXPECT_EQ(M.Anr(), shape.rows);
            EXPECT_EQ(M.HasImag(), is_complex);
            EXPECT_EQ(M.UniformDimension(), m);
            EXPECT_TRUE(M.IsUniformScalar());
            for (std::size_t j = 0; j < shape.cols; ++j)
                for (std::size_t i = 0; i < shape.rows; ++i) {
                    EXPECT_EQ(M.real(i, j), of_source(i, j));
                    EXPECT_EQ(M.imag(i, j), is_complex ? -of_source(j, i) : 0.0);
                }
        }
}

TEST(MatVal, WhatIsMadeOfACopyOutlivesIt)
{
    const double re[] = {1, 2, 3, 4, 5, 6};
    const double im[] = {7, 8, 9, 10, 11, 12};
    Handle copy = MatVal::copy_of(3, 2, re, im, 3, m);
    const Handle block = as_matrix(copy).SubMatrix(1, 2, 1, 1);
    const Handle turned = as_matrix(copy).Transpose();
    const Handle column = as_matrix(as_matrix(copy).SubMatrix(0, 2, 0, 0)).Transpose();
    const Handle plain = as_matrix(copy).StripDimension();
    const Handle second = as_matrix(copy).copy();
    const Handle other_unit = Qud::DimVal::dv(copy, s);
    EXPECT_EQ(MatVal::Canonicalize(copy), copy);
    const std::vector<Cell> expected = cells(copy);
    const Handle element = as_matrix(copy).element(2, 1);
    copy.reset();
    EXPECT_EQ(cells(block), (std::vector<Cell>{number_cell(5, 11, m), number_cell(6, 12, m)}));
    EXPECT_EQ(cell(as_matrix(turned), 1, 2), number_cell(6, 12, m));
    EXPECT_EQ(cell(as_matrix(column), 0, 2), number_cell(3, 9, m));
    EXPECT_EQ(cell(as_matrix(plain), 0, 1), number_cell(4, 10, none));
    EXPECT_EQ(cells(second), expected);
    EXPECT_EQ(cell(as_matrix(other_unit), 0, 0), number_cell(1, 7, s));
    EXPECT_EQ(Qud::as_number(element)->im(), 12.0);
}

TEST(MatValThreads, ValuesAreSharedFreely)
{
    MatBuilder builder(40, 40);
    for (std::size_t i = 0; i < 40; ++i)
        for (std::size_t j = 0; j < 40; ++j)
            builder.set_number(i, j, static_cast<double>(10 * i + j), 0.0, j % 2 ? m : s);
    builder.set(3, 3, StrVal::make("text"));
    Handle value = builder.finish();
    const std::vector<Cell> expected = cells(value);
    std::array<std::thread, 8> threads;
    for (std::size_t t = 0; t < threads.size(); ++t)
        threads[t] = std::thread([&expected, t, mine = value] {
            for (std::size_t round = 0; round < 20; ++round) {
                const Handle block = as_matrix(mine).SubMatrix(t, 39, 0, 39 - t);
                EXPECT_EQ(cell(as_matrix(block), 0, 0), expected[t * 40]);
                EXPECT_EQ(cells(as_matrix(as_matrix(mine).Transpose()).Transpose()), expected);
                EXPECT_EQ(cells(as_matrix(mine).copy()), expected);
                EXPECT_FALSE(Qud::MatDim::make(as_matrix(mine)).has_value());
                EXPECT_EQ(as_matrix(mine).view().m_rv, as_matrix(mine).m_rarr);
            }
        });
    value.reset(); // the last thread that ends gives the arrays back
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
