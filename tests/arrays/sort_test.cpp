// What no worksheet can show of sorting: the automatic direction, views and shared arrays, absent arguments.
#include "bailuxsko/arrays/sort.hpp"

#include "bailuxsko/sorting.hpp"
#include "efiutl/records.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using Qud::MatVal;
using support::bits;
using support::host_raised_by;
using support::matrix;
using support::number;
using support::Raised;
using support::text;

const MatVal& as_matrix(const Handle& value)
{
    return *Qud::matrix_of(value);
}

std::string text_at(const Handle& value, std::size_t i, std::size_t j)
{
    const Handle* const held = as_matrix(value).entry(i, j);
    return held ? *(*held)->get_IsString() : "";
}

TEST(SortMat, TheAutomaticDirectionFollowsTheShape)
{
    constexpr int automatic = -1;
    const auto sorted = [](support::Numbers M, std::size_t k, int d) {
        return bits(Efi::sortMat(as_matrix(matrix(M)), k, d));
    };
    EXPECT_EQ(sorted({{3, 1, 2}}, 0, automatic), bits(matrix({{1, 2, 3}})));
    EXPECT_EQ(sorted({{3}, {1}, {2}}, 0, automatic), bits(matrix({{1}, {2}, {3}})));
    EXPECT_EQ(sorted({{3, 1}, {2, 4}}, 0, automatic), bits(matrix({{2, 4}, {3, 1}})));
    EXPECT_EQ(sorted({{3, 1}, {2, 4}}, 1, automatic), bits(matrix({{3, 1}, {2, 4}})));
    EXPECT_EQ(sorted({{5}}, 0, automatic), bits(matrix({{5}})));
    EXPECT_EQ(sorted({{3, 1}, {2, 4}}, 0, 0), bits(matrix({{1, 3}, {4, 2}})));
    EXPECT_EQ(sorted({{3, 1}, {2, 4}}, 0, 1), bits(matrix({{2, 4}, {3, 1}})));
}

TEST(SortMat, WhereThereIsOneToSortTheResultIsACopy)
{
    for (const Handle& M : {matrix({{3, 1, 2}}), matrix({{3, 1}}, Qud::Dim::identity, {{5, 4}})}) {
        const Handle copy = Efi::sortMat(as_matrix(M), 1, 1);
        EXPECT_EQ(bits(copy), bits(M));
        EXPECT_NE(as_matrix(copy).m_rarr, as_matrix(M).m_rarr);
    }
    const Handle column = matrix({{3}, {1}});
    EXPECT_EQ(bits(Efi::sortMat(as_matrix(column), 0, 0)), bits(column));
    const Handle none = MatVal::make(0, 2, Qud::fresh_numbers(0));
    EXPECT_EQ(as_matrix(Efi::sortMat(as_matrix(none), 1, 1)).Cols(), 2U);
}

TEST(SortMat, MarksAndPayloadsOfNaNTravelUnchanged)
{
    const double payload = std::bit_cast<double>(std::uint64_t{0xFFF8000000ABCDEF});
    const double signalling = std::bit_cast<double>(std::uint64_t{0x7FF0000000000001});
    Qud::MatBuilder builder(3, 3);
    const double keys[] = {3, 1, 2};
    const double others[] = {payload, signalling, -0.0};
    for (std::size_t i = 0; i < 3; ++i) {
        builder.set_number(i, 0, keys[i], 0.0, Qud::Dim::identity);
        builder.set_number(i, 1, others[i], 0.0, Qud::Dim::identity);
        builder.set(i, 2, text(i == 0 ? "three" : i == 1 ? "one" : "two"));
    }
    const Handle sorted = Efi::sortMat(as_matrix(builder.finish()), 0, 1);
    const std::vector<std::uint64_t> found = bits(sorted);
    EXPECT_EQ(found[3], 0x7FF0000000000001U);
    EXPECT_EQ(found[4], 0x8000000000000000U);
    EXPECT_EQ(found[5], 0xFFF8000000ABCDEFU);
    for (std::size_t i = 6; i < 9; ++i)
        EXPECT_EQ(found[i], Efi::ptr_nan_bits);
    EXPECT_EQ(text_at(sorted, 0, 2) + text_at(sorted, 1, 2) + text_at(sorted, 2, 2), "onetwothree");
}

TEST(SortMat, TheKeyIsRealAndItsTiesTakeTheOrderOfTheHeap)
{
    const Handle M = matrix({{1}, {1}, {1}, {1}}, Qud::Dim::identity, {{4}, {3}, {2}, {1}});
    EXPECT_EQ(bits(Efi::sortMat(as_matrix(M), 0, 1)),
              bits(matrix({{1}, {1}, {1}, {1}}, Qud::Dim::identity, {{3}, {1}, {4}, {2}})));
}

TEST(CompareStringElements, SmallerOrEqualInTheHostsOrder)
{
    EXPECT_TRUE(Efi::compareStringElements(text("a"), text("b")));
    EXPECT_TRUE(Efi::compareStringElements(text("a"), text("a")));
    EXPECT_TRUE(Efi::compareStringElements(text("a"), text("A")));
    EXPECT_FALSE(Efi::compareStringElements(text("A"), text("a")));
    EXPECT_FALSE(Efi::compareStringElements(text("b"), text("A")));
    EXPECT_TRUE(Efi::compareStringElements(text(""), text("a")));
    // One letter with its accent, or the letter and the accent behind it: equal both ways.
    EXPECT_TRUE(Efi::compareStringElements(text("\xC3\xA9"), text("e\xCC\x81")));
    EXPECT_TRUE(Efi::compareStringElements(text("e\xCC\x81"), text("\xC3\xA9")));
}

/// Rows 1 to 3 and columns 1 to 2 of a matrix whose other elements would sort otherwise.
Handle block()
{
    const Handle M = matrix({{0, 9, 9, 0}, {0, 3, 30, 0}, {0, 1, 10, 0}, {0, 2, 20, 0}, {0, -9, -9, 0}},
                            Qud::Dim(Qud::Dim::Base::length),
                            {{0, 9, 9, 0}, {0, 6, 60, 0}, {0, 4, 40, 0}, {0, 5, 50, 0}, {0, -9, -9, 0}});
    return as_matrix(M).SubMatrix(1, 3, 1, 2);
}

TEST(Sort, ViewsAreSortedAndTheirMatrixIsNotWrittenTo)
{
    const Handle view = block();
    ASSERT_EQ(as_matrix(view).Anr(), 5U);
    ASSERT_EQ(as_matrix(view).m_offset, 6U);
    const std::vector<double> before(as_matrix(view).m_rarr, as_matrix(view).m_rarr + 20);
    const Handle sorted = Efi::Matrix::csort({.value = 0}, view, number(1));
    EXPECT_EQ(bits(sorted), bits(matrix({{1, 10}, {2, 20}, {3, 30}}, {}, {{4, 40}, {5, 50}, {6, 60}})));
    EXPECT_EQ(as_matrix(sorted).m_dim, Qud::Dim(Qud::Dim::Base::length));
    const Handle turned = Efi::Matrix::rsort({.value = 0}, as_matrix(view).SubMatrix(0, 2, 0, 1), number(0));
    EXPECT_EQ(bits(turned), bits(view));
    EXPECT_EQ(bits(Efi::Matrix::sort(as_matrix(view).SubMatrix(0, 2, 0, 0))),
              bits(matrix({{1}, {2}, {3}}, {}, {{4}, {5}, {6}})));
    const std::vector<double> after(as_matrix(view).m_rarr, as_matrix(view).m_rarr + 20);
    EXPECT_EQ(after, before);
}

TEST(Sort, ArgumentsThatAreAbsentAreRefused)
{
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::sort(nullptr); }), (Raised{"must be vector", 1}));
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::csort({}, nullptr, nullptr); }), (Raised{"must be matrix", 1}));
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::rsort({}, nullptr, nullptr); }), (Raised{"must be matrix", 1}));
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::csort({}, block(), nullptr); }), (Raised{"must be integer", 2}));
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::rsort({}, block(), nullptr); }), (Raised{"must be integer", 2}));
}

TEST(Sort, MatricesWithoutRowsOrColumns)
{
    const Handle no_rows = MatVal::make(0, 2, Qud::fresh_numbers(0));
    EXPECT_EQ(as_matrix(Efi::Matrix::csort({}, no_rows, number(1))).Rows(), 0U);
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::rsort({}, no_rows, number(0)); }), (Raised{"index out of bounds", 2}));
    EXPECT_EQ(as_matrix(Efi::Matrix::rsort({}, MatVal::make(2, 0, Qud::fresh_numbers(0)), number(1))).Rows(), 2U);
    EXPECT_EQ(as_matrix(Efi::Matrix::sort(MatVal::make(0, 1, Qud::fresh_numbers(0)))).Rows(), 0U);
}

TEST(Sort, TheFarthestOriginsDoNotWrapAround)
{
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const Handle M = matrix({{2, 5}, {1, 6}});
    EXPECT_EQ(bits(Efi::Matrix::csort({.value = least}, M, number(least))), bits(matrix({{1, 6}, {2, 5}})));
    EXPECT_EQ(host_raised_by([&] { Efi::Matrix::csort({.value = least}, M, number(-1.0 - least)); }),
              (Raised{"index out of bounds", 2}));
}

} // namespace
