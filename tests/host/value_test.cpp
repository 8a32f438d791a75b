#include "bailuxhost/value.hpp"

#include "bailuxhost/marshal.hpp"
#include "bailuxhost/options.hpp"
#include "tests/host/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <limits>
#include <thread>

namespace {

using host::as_matrix;
using host::Cell;
using host::cells;
using host::number_cell;
using host::numbered;
using Qud::Dim;
using Qud::DimVal;
using Qud::Handle;
using Qud::NumVal;
using Qud::StrVal;
using support::host_raised_by;
using support::Raised;

const Dim none;
const Dim m{Dim::Base::length};
const Dim s{Dim::Base::time};

TEST(Value, DvGivesEveryNumberAUnit)
{
    EXPECT_EQ(Qud::as_number(DimVal::dv(NumVal::make(2.0, 1.0, s), m))->m_dim, m);
    EXPECT_EQ(Qud::as_number(DimVal::dv(NumVal::make(2.0, 1.0, s), m))->im(), 1.0);
    const Handle uniform = DimVal::dv(numbered(2, 1, s), m);
    EXPECT_EQ(cells(uniform), (std::vector<Cell>{number_cell(0, 0, m), number_cell(10, 0, m)}));
    const Handle mixed = DimVal::dv(host::matrix_of_units(1, 2, {m, s}), none);
    EXPECT_TRUE(as_matrix(mixed).IsUniformScalar());
    EXPECT_EQ(as_matrix(mixed).UniformDimension(), none);
}

TEST(Value, DvOfAMarkerLeavesTheUnits)
{
    const Handle mixed = host::matrix_of_units(1, 2, {m, s});
    EXPECT_EQ(DimVal::dv(mixed, Dim::mixed_matrix_dim), mixed);
    EXPECT_EQ(DimVal::dv(mixed, Dim::string_dim), mixed);
    const Handle text = StrVal::make("a");
    EXPECT_EQ(DimVal::dv(text, m), text);
    EXPECT_EQ(DimVal::dv(nullptr, m), nullptr);
    Qud::MatBuilder builder(1, 1);
    builder.set(0, 0, text);
    EXPECT_EQ(as_matrix(DimVal::dv(builder.finish(), m)).UniformDimension(), Dim::string_dim);
}

TEST(Value, WholeNumbersAreRealFiniteAndWhole)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    for (const double x : {0.0, -0.0, -3.0, 1e300})
        EXPECT_EQ(NumVal(x, 0.0, m).isInt(), x);
    for (const double x : {0.5, inf, -inf, std::numeric_limits<double>::quiet_NaN(), 1e-300})
        EXPECT_EQ(NumVal(x, 0.0).isInt(), std::nullopt);
    EXPECT_EQ(NumVal(2.0, -0.0).isInt(), 2.0);
    EXPECT_EQ(NumVal(2.0, 1e-300).isInt(), std::nullopt);
    EXPECT_EQ(as_matrix(numbered(1, 1)).isInt(), std::nullopt);
}

TEST(Value, ARealPartIsAskedForWithAMessage)
{
    EXPECT_EQ(DimVal::asReal(NumVal::make(2.5, -0.0, m), "must be real", 1), 2.5);
    const Raised refused{.message = "must be real", .index = 4};
    for (const Handle& other : {NumVal::make(1.0, 1.0), StrVal::make("1"), numbered(1, 1), Handle()})
        EXPECT_EQ(host_raised_by([&] { DimVal::asReal(other, "must be real", 4); }), refused);
}

TEST(Value, ARealMatrixIsOfPlainNumbersOfOneUnit)
{
    const Handle real = numbered(2, 2, m);
    EXPECT_EQ(&DimVal::asRealMatrix(real, 1), real.get());
    const Raised refused{.message = "must be real matrix", .index = 2};
    Qud::MatBuilder text(1, 1);
    text.set(0, 0, StrVal::make("a"));
    for (const Handle& other :
         {numbered(1, 1, m, true), host::matrix_of_units(1, 2, {m, s}), text.finish(), NumVal::make(1.0), Handle()})
        EXPECT_EQ(host_raised_by([&] { DimVal::asRealMatrix(other, 2); }), refused);
}

TEST(Value, FunctionsTakeACountOfArguments)
{
    const Qud::FunVal two("f", 2, 2, [](std::span<const Handle> x) { return x[1]; });
    EXPECT_TRUE(two.takes(2));
    EXPECT_FALSE(two.takes(1));
    EXPECT_TRUE(Qud::FunVal("g", 1, Qud::FunVal::any_count, nullptr).takes(1000));
    const Raised refused{.message = "must be a function of 2 variables", .index = 3};
    const Handle one = std::make_shared<const Qud::FunVal>("h", 1, 1, nullptr);
    for (const Handle& other : {one, NumVal::make(1.0), Handle()})
        EXPECT_EQ(host_raised_by([&] { Qud::FunVal::asFunctionN(other, 2, 3); }), refused);
}

TEST(Marshal, MatricesAreCopiedOutOfTheArena)
{
    Handle value;
    {
        EfiCallContext ctx;
        double* const re = Efi::doubles(&ctx, 6);
        double* const im = Efi::doubles(&ctx, 6);
        for (std::size_t k = 0; k < 6; ++k) {
            re[k] = static_cast<double>(k);
            im[k] = -re[k];
        }
        aMatrix* const record = aMatrix::mk(ctx.m_arena, 2, 2, re, im);
        record->m_anr = 3;
        value = Efi::EfiMarshal::UnMarshal(ctx.m_arena, record, m);
    }
    EXPECT_EQ(as_matrix(value).Anr(), 2U);
    EXPECT_EQ(cells(value), (std::vector<Cell>{number_cell(0, -0.0, m), number_cell(3, -3, m), number_cell(1, -1, m),
                                               number_cell(4, -4, m)}));
}

TEST(Marshal, AnImaginaryArrayIsKeptAlsoWhenZero)
{
    EfiCallContext ctx;
    double* const zeros = Efi::doubles(&ctx, 2);
    EXPECT_TRUE(
        as_matrix(Efi::EfiMarshal::UnMarshal(ctx.m_arena, aMatrix::mk(ctx.m_arena, 2, 1, zeros, zeros))).HasImag());
    EXPECT_FALSE(
        as_matrix(Efi::EfiMarshal::UnMarshal(ctx.m_arena, aMatrix::mk(ctx.m_arena, 2, 1, zeros, nullptr))).HasImag());
    EXPECT_TRUE(as_matrix(Efi::EfiMarshal::UnMarshal(ctx.m_arena, aMatrix::mk(ctx.m_arena, 0, 0, nullptr, nullptr)))
                    .is_empty());
}

TEST(Marshal, ATaggedValueIsANumberOrAMatrix)
{
    EfiCallContext ctx;
    Anyval number{.m_number = {.m_re = 2.0, .m_im = -3.0}};
    const Handle host_number = Efi::EfiMarshal::UnMarshal(ctx.m_arena, &number, s);
    EXPECT_EQ(Qud::as_number(host_number)->re(), 2.0);
    EXPECT_EQ(Qud::as_number(host_number)->im(), -3.0);
    EXPECT_EQ(Qud::as_number(host_number)->m_dim, s);
    const aComplex plain{.m_re = 1.0, .m_im = 0.0};
    EXPECT_EQ(Qud::as_number(Efi::EfiMarshal::UnMarshal(ctx.m_arena, &plain))->m_dim, none);

    Anyval matrix{.m_matrix = *aMatrix::mk(ctx.m_arena, 1, 1, Efi::doubles(&ctx, 1), nullptr)};
    EXPECT_EQ(cells(Efi::EfiMarshal::UnMarshal(ctx.m_arena, &matrix, s)), std::vector<Cell>{number_cell(0, 0, s)});
}

TEST(OptionsThreads, EachThreadHasItsOwn)
{
    EXPECT_TRUE(Qud::RuntimeOptions::strict_singularity_checking);
    EXPECT_FALSE(Qud::RuntimeOptions::zero_over_zero_is_zero);
    Qud::RuntimeOptions::zero_over_zero_is_zero = true;
    std::thread([] {
        EXPECT_FALSE(Qud::RuntimeOptions::zero_over_zero_is_zero);
        Qud::RuntimeOptions::strict_singularity_checking = false;
    }).join();
    EXPECT_TRUE(Qud::RuntimeOptions::strict_singularity_checking);
    Qud::RuntimeOptions::zero_over_zero_is_zero = false;
}

} // namespace
