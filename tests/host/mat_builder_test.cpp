#include "bailuxhost/matval.hpp"

#include "tests/host/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <limits>
#include <new>
#include <span>

namespace {

using host::as_matrix;
using host::cell;
using host::Cell;
using host::cells;
using host::number_cell;
using host::numbered;
using Qud::Dim;
using Qud::GrowableColumn;
using Qud::Handle;
using Qud::MatBuilder;
using Qud::MatVal;
using Qud::StrVal;
using support::host_raised_by;
using support::Raised;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

const Dim none;
const Dim m{Dim::Base::length};
const Dim s{Dim::Base::time};

TEST(MatBuilder, OneUnitMakesAUniformMatrix)
{
    MatBuilder builder(2, 2);
    for (std::size_t k = 0; k < 4; ++k)
        builder.set_number(k % 2, k / 2, static_cast<double>(k), 0.0, m);
    const Handle value = builder.finish();
    EXPECT_TRUE(as_matrix(value).IsUniformScalar());
    EXPECT_FALSE(as_matrix(value).HasImag());
    EXPECT_EQ(cells(value), (std::vector<Cell>{number_cell(0, 0, m), number_cell(2, 0, m), number_cell(1, 0, m),
                                               number_cell(3, 0, m)}));
}

TEST(MatBuilder, UnitsMayDifferFromAnyElementOn)
{
    for (std::size_t odd = 0; odd < 6; ++odd) {
        MatBuilder builder(2, 3);
        for (std::size_t k = 0; k < 6; ++k)
            builder.set_number(k / 3, k % 3, 1.0, 0.0, k == odd ? s : m);
        const Handle value = builder.finish();
        EXPECT_EQ(as_matrix(value).UniformDimension(), Dim::mixed_matrix_dim);
        for (std::size_t k = 0; k < 6; ++k)
            EXPECT_EQ(as_matrix(value).unit(k / 3, k % 3), k == odd ? s : m) << odd << ", " << k;
    }
}

TEST(MatBuilder, AnImaginaryArrayIsMadeAtTheFirstPartThatIsNotZero)
{
    struct Case {
        double im;
        bool complex;
    };
    for (const Case& c : {Case{0.0, false}, {-0.0, false}, {1.0, true}, {-1e-320, true}, {NaN, true}}) {
        MatBuilder builder(1, 2);
        builder.set_number(0, 0, 1.0, 0.0, none);
        builder.set_number(0, 1, 1.0, c.im, none);
        EXPECT_EQ(as_matrix(builder.finish()).HasImag(), c.complex) << c.im;
    }
    MatBuilder asked(1, 1);
    asked.want_imaginary();
    asked.set_number(0, 0, 1.0, 0.0, none);
    EXPECT_TRUE(as_matrix(asked.finish()).HasImag());
}

TEST(MatBuilder, TextsAndArraysAreEntries)
{
    const Handle text = StrVal::make("text");
    const Handle inner = numbered(2, 2, s);
    MatBuilder builder(2, 2);
    builder.set(1, 1, inner); // in any order
    builder.set(0, 0, text);
    builder.set(1, 0, Qud::NumVal::make(3.0, 0.0, m));
    builder.set_number(0, 1, 4.0, 0.0, m);
    const Handle value = builder.finish();
    EXPECT_EQ(
        cells(value),
        (std::vector<Cell>{{.entry = text.get()}, number_cell(4, 0, m), number_cell(3, 0, m), {.entry = inner.get()}}));
    ASSERT_EQ(as_matrix(value).entries()->size(), 2U);
    EXPECT_EQ(as_matrix(value).entries()->front().index, 0U);
    EXPECT_EQ(*as_matrix(value).number_unit(), m); // the unit of the inner array is not theirs
}

TEST(MatBuilder, FunctionsAreNoElements)
{
    const Handle function =
        std::make_shared<const Qud::FunVal>("f", 1, 1, [](std::span<const Handle> x) { return x[0]; });
    MatBuilder builder(1, 1);
    const Raised refused{.message = "must be string scalar or array", .index = 3};
    EXPECT_EQ(host_raised_by([&] { builder.set(0, 0, function, 3); }), refused);
    EXPECT_EQ(host_raised_by([&] { builder.set(0, 0, nullptr, 3); }), refused);
}

TEST(MatBuilder, AnElementThatIsLeftOutIsZero)
{
    MatBuilder builder(1, 2);
    builder.set_number(0, 1, 5.0, 0.0, m);
    EXPECT_EQ(cells(builder.finish()), (std::vector<Cell>{number_cell(0, 0, m), number_cell(5, 0, m)}));
}

TEST(MatBuilder, TakesBlocks)
{
    MatBuilder builder(2, 4);
    const Handle whole = numbered(4, 4, m, true);
    const Handle block = as_matrix(whole).SubMatrix(1, 2, 1, 2);
    builder.set_block(0, 0, as_matrix(block));
    builder.set_block(0, 2, as_matrix(numbered(2, 2, m)));
    const Handle value = builder.finish();
    EXPECT_TRUE(as_matrix(value).HasImag());
    EXPECT_EQ(as_matrix(value).UniformDimension(), m);
    EXPECT_EQ(cells(value), (std::vector<Cell>{number_cell(11, -11, m), number_cell(12, -12, m), number_cell(0, 0, m),
                                               number_cell(1, 0, m), number_cell(21, -21, m), number_cell(22, -22, m),
                                               number_cell(10, 0, m), number_cell(11, 0, m)}));
}

TEST(MatBuilder, AnImaginaryArrayOfZerosInABlockIsNotTakenOver)
{
    MatBuilder zeros(1, 1);
    zeros.want_imaginary();
    zeros.set_number(0, 0, 2.0, 0.0, none);
    const Handle block = zeros.finish();
    ASSERT_TRUE(as_matrix(block).HasImag());
    MatBuilder builder(1, 1);
    builder.set_block(0, 0, as_matrix(block));
    EXPECT_FALSE(as_matrix(builder.finish()).HasImag());
}

TEST(MatBuilder, AnArrayOfTextsSaysNothingAboutUnits)
{
    MatBuilder texts(1, 1);
    texts.set(0, 0, StrVal::make("a"));
    const Handle block = texts.finish();
    for (const bool texts_first : {true, false}) {
        MatBuilder builder(1, 2);
        builder.set_block(0, texts_first ? 0 : 1, as_matrix(block));
        builder.set_block(0, texts_first ? 1 : 0, as_matrix(numbered(1, 1, m)));
        const Handle value = builder.finish();
        ASSERT_NE(as_matrix(value).number_unit(), nullptr);
        EXPECT_EQ(*as_matrix(value).number_unit(), m);
    }
}

TEST(MatBuilder, EmptyBlocksChangeNothing)
{
    MatBuilder builder(1, 1);
    builder.set_block(0, 0, as_matrix(MatVal::empty()));
    builder.set_number(0, 0, 1.0, 0.0, m);
    EXPECT_EQ(as_matrix(builder.finish()).UniformDimension(), m);
    EXPECT_TRUE(as_matrix(MatBuilder(0, 0).finish()).is_empty());
}

TEST(MatBuilder, AbsurdSizesAreOutOfMemory)
{
    const std::uint32_t all = std::numeric_limits<std::uint32_t>::max();
    EXPECT_THROW(MatBuilder(all, all), std::bad_alloc);
    EXPECT_THROW((void)Qud::element_count(std::size_t{1} << 62, 4), std::bad_alloc);
    EXPECT_EQ(Qud::element_count(all, 0), 0U);
}

RC_GTEST_PROP(MatBuilderLaws, BlocksAndElementsGiveTheSameMatrix, ())
{
    const Handle left = gen::matrix();
    const Handle right = gen::matrix();
    const std::uint32_t rows = std::max(as_matrix(left).Rows(), as_matrix(right).Rows());
    const std::uint32_t cols = as_matrix(left).Cols() + as_matrix(right).Cols();
    MatBuilder by_blocks(rows, cols);
    MatBuilder by_elements(rows, cols);
    std::size_t col = 0;
    for (const Handle& part : {left, right}) {
        const MatVal& M = as_matrix(part);
        by_blocks.set_block(0, col, M);
        for (std::size_t j = 0; j < M.Cols(); ++j, ++col)
            for (std::size_t i = 0; i < M.Rows(); ++i)
                by_elements.set(i, col, M.element(i, j));
    }
    const Handle a = by_blocks.finish();
    const Handle b = by_elements.finish();
    std::size_t first_col = 0;
    for (const Handle& part : {left, right}) {
        const MatVal& M = as_matrix(part);
        for (std::size_t j = 0; j < M.Cols(); ++j, ++first_col) {
            for (std::size_t i = 0; i < M.Rows(); ++i) {
                RC_ASSERT(cell(as_matrix(a), i, first_col) == cell(M, i, j));
                RC_ASSERT(cell(as_matrix(b), i, first_col) == cell(M, i, j));
            }
        }
    }
    RC_ASSERT(as_matrix(a).HasImag() == as_matrix(b).HasImag());
    RC_ASSERT(as_matrix(a).has_entries() == as_matrix(b).has_entries());
}

TEST(GrowableColumn, TakesAnyElementAndThenAShape)
{
    const Handle text = StrVal::make("text");
    MatBuilder builder(1, 4);
    builder.set(0, 0, text);
    builder.set_number(0, 1, 1.0, 0.0, m);
    builder.set_number(0, 2, 2.0, 3.0, m);
    builder.set_number(0, 3, 4.0, 0.0, s);
    const Handle source = builder.finish();
    GrowableColumn column;
    column.reserve(6);
    for (const std::size_t j : {0U, 1U, 2U, 3U, 0U, 1U})
        column.PushRaw(as_matrix(source), 0, j);
    EXPECT_EQ(column.size(), 6U);
    const Handle value = column.reshape(2, 3);
    EXPECT_EQ(cells(value), (std::vector<Cell>{{.entry = text.get()},
                                               number_cell(2, 3, m),
                                               {.entry = text.get()},
                                               number_cell(1, 0, m),
                                               number_cell(4, 0, s),
                                               number_cell(1, 0, m)}));
}

TEST(GrowableColumn, IsRealAndUniformWhereItCanBe)
{
    const Handle source = numbered(2, 2, m, true);
    GrowableColumn column;
    column.PushRaw(as_matrix(source), 0, 0); // 0 - 0i
    const Handle value = column.reshape(1, 1);
    EXPECT_FALSE(as_matrix(value).HasImag());
    EXPECT_TRUE(as_matrix(value).IsUniformScalar());
    EXPECT_EQ(as_matrix(value).UniformDimension(), m);
    EXPECT_TRUE(as_matrix(GrowableColumn().reshape(0, 0)).is_empty());
}

} // namespace
