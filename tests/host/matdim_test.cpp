#include "bailuxhost/matdim.hpp"

#include "tests/host/generated.hpp"
#include "tests/support/host_raises.hpp"

#include <limits>

namespace {

using host::as_matrix;
using host::matrix_of_units;
using host::units_of;
using Qud::Dim;
using Qud::Handle;
using Qud::MatDim;
using Qud::MatVal;
using Qud::PatternBreak;

const Dim none;
const Dim m{Dim::Base::length};
const Dim s{Dim::Base::time};
const Dim m2 = Dim::Mult(m, m);
const Dim ms = Dim::Mult(m, s);
const Dim per_m = Dim::Div(none, m);
const Dim per_s = Dim::Div(none, s);

std::optional<MatDim> pattern_of(std::size_t rows, std::size_t cols, const std::vector<Dim>& units)
{
    return MatDim::make(as_matrix(matrix_of_units(rows, cols, units)));
}

/// The two give every element the same unit, however rows and columns share it.
bool same(const MatDim& p, const MatDim& q)
{
    return p.rows().size() == q.rows().size() && p.cols().size() == q.cols().size() && units_of(p) == units_of(q);
}

TEST(MatDim, FactorsIntoRowsAndColumns)
{
    const std::vector<Dim> units = {m, ms, none, m2, Dim::Mult(m2, s), m};
    const std::optional<MatDim> pattern = pattern_of(2, 3, units);
    ASSERT_TRUE(pattern.has_value());
    EXPECT_EQ(units_of(*pattern), units);
}

TEST(MatDim, OneUnitIsAPattern)
{
    const std::vector<Dim> units(6, m);
    EXPECT_EQ(units_of(pattern_of(3, 2, units).value()), units);
    EXPECT_EQ(units_of(pattern_of(1, 1, {s}).value()), std::vector<Dim>{s});
}

TEST(MatDim, RowsAndColumnsAlwaysAreOne)
{
    const std::vector<Dim> units = {m, s, none, per_m};
    EXPECT_EQ(units_of(pattern_of(1, 4, units).value()), units);
    EXPECT_EQ(units_of(pattern_of(4, 1, units).value()), units);
}

TEST(MatDim, OtherUnitsAreNone)
{
    EXPECT_FALSE(pattern_of(2, 2, {m, s, s, m}).has_value());
    EXPECT_FALSE(pattern_of(2, 2, {m, none, none, m}).has_value());
    EXPECT_FALSE(pattern_of(2, 3, {m, m, m, m, m, none}).has_value());
}

TEST(MatDim, TextsAndArraysAreNone)
{
    Qud::MatBuilder texts(2, 2);
    for (std::size_t k = 0; k < 4; ++k)
        texts.set(k / 2, k % 2, k == 2 ? Qud::StrVal::make("a") : Qud::NumVal::make(1.0));
    const Handle mixed = texts.finish();
    EXPECT_FALSE(MatDim::make(as_matrix(mixed)).has_value());
    EXPECT_EQ(first_break(as_matrix(mixed)).value().text(), "row 2, column 1 is no number");
}

TEST(MatDim, NoElementsAreAPattern)
{
    const std::optional<MatDim> pattern = MatDim::make(as_matrix(MatVal::empty()));
    ASSERT_TRUE(pattern.has_value());
    EXPECT_EQ(MatDim::Det(*pattern, 0), none);
    EXPECT_TRUE(MatDim::Pwr(*pattern, 0.0).has_value());
    EXPECT_TRUE(MatDim::MMult(*pattern, *pattern).has_value());
}

TEST(MatDim, ABlockHasItsOwnPattern)
{
    const Handle whole = matrix_of_units(3, 3, {s, s, s, s, m, ms, s, m2, Dim::Mult(m2, s)});
    EXPECT_FALSE(MatDim::make(as_matrix(whole)).has_value());
    const Handle block = as_matrix(whole).SubMatrix(1, 2, 1, 2);
    EXPECT_EQ(units_of(MatDim::make(as_matrix(block)).value()), (std::vector<Dim>{m, ms, m2, Dim::Mult(m2, s)}));
}

TEST(MatDim, TheFirstBreakIsShown)
{
    const Handle M = matrix_of_units(2, 3, {m, m, m, m, m, s});
    const PatternBreak found = first_break(as_matrix(M)).value();
    EXPECT_EQ(found.row, 1U);
    EXPECT_EQ(found.col, 2U);
    EXPECT_EQ(found.found, s);
    EXPECT_EQ(found.needed, m);
    EXPECT_EQ(found.text(), "row 2, column 3 has unit s where m is needed");
    EXPECT_EQ(first_break(as_matrix(matrix_of_units(2, 2, {m, m, m, none}))).value().text(),
              "row 2, column 2 has no unit where m is needed");
    EXPECT_EQ(first_break(as_matrix(matrix_of_units(2, 2, {m, none, m, m}))).value().text(),
              "row 2, column 2 has unit m where none is needed");
}

TEST(MatDim, InversesSwapAndInvert)
{
    // [m, m*s; 1, s]: the inverse of [a, b; c, d] is [d, -b; -c, a] / (a*d - b*c), a determinant in m*s.
    const MatDim pattern = pattern_of(2, 2, {m, ms, none, s}).value();
    const MatDim inverse = MatDim::Pwr(pattern, -1.0).value();
    EXPECT_EQ(units_of(inverse), (std::vector<Dim>{per_m, none, Dim::Div(none, ms), per_s}));
    EXPECT_EQ(MatDim::Det(pattern, 2), ms);
}

TEST(MatDim, PowersNeedEqualInnerUnits)
{
    // [1, s; 1/s, 1] maps a length and a speed to a length and a speed.
    const std::vector<Dim> units = {none, s, per_s, none};
    const MatDim pattern = pattern_of(2, 2, units).value();
    for (const double n : {-3.0, -1.0, 0.0, 1.0, 2.0, 10.0})
        EXPECT_EQ(units_of(MatDim::Pwr(pattern, n).value()), units) << n;
    const MatDim other = pattern_of(2, 2, {m, ms, none, s}).value();
    for (const double n : {-2.0, 0.0, 2.0, 3.0})
        EXPECT_FALSE(MatDim::Pwr(other, n).has_value()) << n;
    EXPECT_TRUE(same(MatDim::Pwr(other, 1.0).value(), other));
    EXPECT_TRUE(MatDim::Pwr(other, -1.0).has_value());
}

TEST(MatDim, APowerThatIsNotWholeIsNone)
{
    const MatDim pattern = pattern_of(2, 2, std::vector<Dim>(4, m)).value();
    for (const double n : {0.5, 2.5, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(MatDim::Pwr(pattern, n).has_value()) << n;
}

TEST(MatDim, AMatrixThatIsNotSquareHasNoPower)
{
    const MatDim pattern = pattern_of(2, 3, std::vector<Dim>(6, none)).value();
    EXPECT_FALSE(MatDim::Pwr(pattern, 2.0).has_value());
    EXPECT_FALSE(MatDim::Det(pattern, 2).has_value());
    EXPECT_FALSE(MatDim::Det(pattern, 3).has_value());
}

TEST(MatDim, ExponentsBeyond32BitsAreRefused)
{
    const MatDim pattern = pattern_of(2, 2, std::vector<Dim>(4, m)).value();
    const support::Raised refused{.message = "unit power not representable", .index = -1};
    EXPECT_EQ(support::host_raised_by([&] { MatDim::Pwr(pattern, 40000.0); }), refused);
    EXPECT_EQ(support::host_raised_by([&] { MatDim::Pwr(pattern, 1e300); }), refused);
}

TEST(MatDim, ProductsThatAreNumbers)
{
    const MatDim row = pattern_of(1, 2, {m, s}).value();
    const MatDim column = pattern_of(2, 1, {s, m}).value();
    EXPECT_EQ(MatDim::DMult(row, column), ms);
    EXPECT_EQ(MatDim::DMult(column, pattern_of(2, 1, {m, s}).value()), ms);
    EXPECT_EQ(MatDim::DMult(column, column), std::nullopt);
    EXPECT_EQ(MatDim::DMult(row, pattern_of(2, 1, {m, s}).value()), std::nullopt);
    EXPECT_EQ(MatDim::DMult(pattern_of(1, 1, {m}).value(), pattern_of(1, 1, {s}).value()), ms);
    EXPECT_EQ(MatDim::DMult(column, row), std::nullopt);
    EXPECT_EQ(MatDim::DMult(column, pattern_of(3, 1, {s, m, m}).value()), std::nullopt);
}

std::size_t small_size()
{
    return *rc::gen::inRange<std::size_t>(1, 5);
}

RC_GTEST_PROP(MatDimLaws, MakeFindsAPatternAgain, ())
{
    const MatDim pattern = *gen::pattern(small_size(), small_size());
    const Handle M = matrix_of_units(pattern.rows().size(), pattern.cols().size(), units_of(pattern));
    RC_ASSERT(!first_break(as_matrix(M)));
    RC_ASSERT(same(MatDim::make(as_matrix(M)).value(), pattern));
}

RC_GTEST_PROP(MatDimLaws, OneOtherUnitBreaksAPattern, ())
{
    const std::size_t rows = *rc::gen::inRange<std::size_t>(2, 5);
    const std::size_t cols = *rc::gen::inRange<std::size_t>(2, 5);
    std::vector<Dim> units = units_of(*gen::pattern(rows, cols));
    Dim& changed = units[*rc::gen::inRange<std::size_t>(0, units.size())];
    changed = Dim::Mult(changed, Dim(Dim::Base::mass));
    RC_ASSERT(!pattern_of(rows, cols, units).has_value());
}

RC_GTEST_PROP(MatDimLaws, ArbitraryUnitsFactorExactlyWhenAllMinorsAgree, ())
{
    // Units factor exactly when u(i, j) * u(k, l) = u(i, l) * u(k, j) for all rows i, k and columns j, l.
    const std::size_t rows = small_size();
    const std::size_t cols = small_size();
    const std::vector<Dim> units = *gen::plain_units(rows * cols);
    const auto at = [&](std::size_t i, std::size_t j) { return units[i * cols + j]; };
    bool agree = true;
    for (std::size_t i = 0; i < rows; ++i)
        for (std::size_t k = 0; k < rows; ++k)
            for (std::size_t j = 0; j < cols; ++j)
                for (std::size_t l = 0; l < cols; ++l)
                    agree = agree && Dim::Mult(at(i, j), at(k, l)) == Dim::Mult(at(i, l), at(k, j));
    const std::optional<MatDim> pattern = pattern_of(rows, cols, units);
    RC_ASSERT(pattern.has_value() == agree);
    if (pattern)
        RC_ASSERT(units_of(*pattern) == units);
}

RC_GTEST_PROP(MatDimLaws, ProductsAreThoseOfTheElements, ())
{
    const std::size_t rows = small_size();
    const std::size_t inner = small_size();
    const std::size_t cols = small_size();
    const MatDim a = *gen::pattern(rows, inner);
    MatDim b = *gen::pattern(inner, cols);
    if (*rc::gen::arbitrary<bool>()) {
        std::vector<Dim> fitting;
        for (const Dim& u : a.cols())
            fitting.push_back(Dim::Div(m2, u));
        b = MatDim(fitting, b.cols());
    }
    bool defined = true;
    std::vector<Dim> units;
    for (std::size_t i = 0; i < rows; ++i) {
        for (std::size_t j = 0; j < cols; ++j) {
            units.push_back(Dim::Mult(a.at(i, 0), b.at(0, j)));
            for (std::size_t k = 1; k < inner; ++k)
                defined = defined && Dim::Mult(a.at(i, k), b.at(k, j)) == units.back();
        }
    }
    const std::optional<MatDim> product = MatDim::MMult(a, b);
    RC_ASSERT(product.has_value() == defined);
    if (product)
        RC_ASSERT(units_of(*product) == units);
    if (rows == 1 && cols == 1)
        RC_ASSERT(MatDim::DMult(a, b) == (defined ? std::optional<Dim>(units[0]) : std::nullopt));
}

RC_GTEST_PROP(MatDimLaws, TheInverseUndoesThePattern, ())
{
    const std::size_t n = small_size();
    const MatDim a = *gen::pattern(n, n);
    const MatDim inverse = MatDim::Pwr(a, -1.0).value();
    RC_ASSERT(same(MatDim::Pwr(inverse, -1.0).value(), a));
    RC_ASSERT(same(MatDim::MMult(MatDim::MMult(a, inverse).value(), a).value(), a));
    const MatDim identity = MatDim::MMult(inverse, a).value();
    for (std::size_t k = 0; k < n; ++k)
        RC_ASSERT(identity.at(k, k) == none);
    RC_ASSERT(MatDim::Det(inverse, n).value() == Dim::Div(none, MatDim::Det(a, n).value()));
}

RC_GTEST_PROP(MatDimLaws, PowersFollowEachOther, ())
{
    const MatDim a = *gen::self_multiplicable(small_size());
    for (int n = -4; n <= 4; ++n)
        RC_ASSERT(same(MatDim::MMult(MatDim::Pwr(a, n).value(), a).value(), MatDim::Pwr(a, n + 1.0).value()));
}

RC_GTEST_PROP(MatDimLaws, AnyDiagonalGivesTheDeterminant, ())
{
    const std::size_t n = small_size();
    const MatDim a = *gen::pattern(n, n);
    for (std::size_t shift = 0; shift < n; ++shift) {
        Dim product;
        for (std::size_t k = 0; k < n; ++k)
            product = Dim::Mult(product, a.at(k, (k + shift) % n));
        RC_ASSERT(product == MatDim::Det(a, n).value());
    }
}

} // namespace
