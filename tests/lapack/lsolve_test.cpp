// What only the host side of lsolve shows: units of results are in tests/worksheets/lsolve.ws.
#include "bailuxsko/intel_mkl.hpp"
#include "efiutl/arena_testing.hpp"
#include "efiutl/records.hpp"
#include "tests/lapack/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <gtest/gtest.h>

namespace {

using Efi::IntelMKL::lsolve;
using Qud::Handle;
using Qud::matrix_of;
using support::host_raised_by;
using support::Raised;

const Qud::Dim m(Qud::Dim::Base::length);
const Qud::Dim s(Qud::Dim::Base::time);
const Qud::Dim none;

Handle with_units(const Handle& matrix, std::vector<Qud::Dim> units)
{
    return matrix_of(matrix)->with_units(Qud::Units(std::make_shared<const std::vector<Qud::Dim>>(std::move(units))));
}

Raised raised(const Handle& A, const Handle& B)
{
    return host_raised_by([&] { lsolve(A, B); });
}

TEST(Lsolve, WantsMatrices)
{
    const Handle M = matrices::real({{1}});
    for (const Handle& other : {Handle(), Qud::NumVal::make(1.0), Qud::StrVal::make("text")}) {
        EXPECT_EQ(raised(other, M), (Raised{"must be matrix", 1, ""}));
        EXPECT_EQ(raised(M, other), (Raised{"must be matrix", 2, ""}));
        EXPECT_EQ(raised(other, other), (Raised{"must be matrix", 1, ""}));
    }
}

TEST(Lsolve, TheDetailNamesTheShapes)
{
    const Raised error = raised(matrices::real({{1}}), matrices::real({{1}, {2}}));
    EXPECT_EQ(error, (Raised{"array size mismatch", -1, ""}));
    EXPECT_EQ(error.detail, "A is 1 by 1, B is 2 by 1");
}

TEST(Lsolve, TheDetailNamesTheElementThatBreaksThePattern)
{
    // element (2, 2) would have to be m s / m
    const Handle broken = with_units(matrices::real({{2, 1}, {1, 2}}), {m, m, s, m});
    const Handle good = matrices::real({{1}, {1}});
    EXPECT_EQ(raised(broken, good), (Raised{"must be a linear algebra matrix", 1, ""}));
    EXPECT_EQ(raised(broken, good).detail, "row 2, column 2 has unit m where s is needed");
    // beside A of full rank without a unit, B is looked at
    const Handle broken_B = with_units(matrices::real({{1, 1}, {1, 1}}), {m, m, s, m});
    EXPECT_EQ(raised(good, broken_B), (Raised{"must be a linear algebra matrix", 2, ""}));
}

TEST(Lsolve, TheDetailNamesTheRowWithTheWrongUnit)
{
    const Handle A = with_units(matrices::real({{2, 1}, {1, 2}}), {m, s, m, s});
    const Raised error = raised(A, matrices::real({{1}, {1}}));
    EXPECT_EQ(error, (Raised{"matrix unit mismatch", -1, ""}));
    EXPECT_EQ(error.detail, "row 2 of B has no unit where m^-1*s is needed");
}

TEST(Lsolve, NumbersAreSolvedBeforeUnitsAreLookedAt)
{
    const Handle singular = with_units(matrices::real({{1, 2}, {2, 4}}), {m, m, s, m});
    EXPECT_EQ(raised(singular, matrices::real({{1}, {1}})), (Raised{"not converging", -1, ""}));
}

TEST(Lsolve, TextsAndArraysAreNoNumbers)
{
    Qud::MatBuilder builder(1, 1);
    builder.set(0, 0, Qud::StrVal::make("text"));
    const Handle texts = builder.finish();
    EXPECT_EQ(raised(texts, matrices::real({{1}})), (Raised{"must be a linear algebra matrix", 1, ""}));
    EXPECT_EQ(raised(matrices::real({{1}}), texts), (Raised{"must be a linear algebra matrix", 2, ""}));
    EXPECT_EQ(raised(texts, texts), (Raised{"must be a linear algebra matrix", 1, ""}));
    EXPECT_EQ(raised(texts, texts).detail, "row 1, column 1 is no number");
}

TEST(Lsolve, NoContextIsLeftWhenTheHostSeesTheError)
{
    EXPECT_EQ(raised(matrices::real({{0}}), matrices::real({{1}})), (Raised{"not converging", -1, ""}));
    EXPECT_EQ(Efi::live_arenas(), (Efi::LiveArenas{0, 0}));
}

TEST(Lsolve, ACrazySolveOfUniformUnitsIsTheScalarOne)
{
    const Handle A = matrix_of(matrices::real({{2, 0}, {0, 4}}))->with_units(m);
    const Handle B = matrix_of(matrices::real({{2}, {4}}))->with_units(s);
    const Handle X = Efi::IntelMKL::CrazyLsolve(*matrix_of(A), *matrix_of(B));
    EXPECT_TRUE(matrix_of(X)->IsUniformScalar());
    EXPECT_EQ(matrix_of(X)->m_dim, Qud::Dim::Div(s, m));
    EXPECT_EQ(matrix_of(Efi::IntelMKL::ScalarLsolve(*matrix_of(A), *matrix_of(B)))->m_dim, none);
}

} // namespace
