#include "bailuxhost/value.hpp"

#include "bailuxhost/marshal.hpp"
#include "bailuxhost/options.hpp"
#include "efiutl/arena_testing.hpp"
#include "efiutl/block_pool.hpp"
#include "tests/host/matrices.hpp"
#include "tests/support/host_raises.hpp"

#include <limits>
#include <thread>
#include <utility>

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

/// A record of the call, n by n, with (leading dimension) - n unused rows; element k of the real array is k, of the
/// imaginary one -k.
const aMatrix* record_of_order(EfiCallContext& ctx, std::uint32_t n, std::uint32_t leading_dimension)
{
    const std::size_t count = std::size_t{n} * leading_dimension;
    double* const re = Efi::uncleared_doubles(&ctx, count);
    double* const im = Efi::uncleared_doubles(&ctx, count);
    for (std::size_t k = 0; k < count; ++k) {
        re[k] = static_cast<double>(k);
        im[k] = -re[k];
    }
    aMatrix* const record = aMatrix::mk(ctx.m_arena, n, n, re, im);
    record->m_anr = leading_dimension;
    return record;
}

/// Whether the value has the elements of such a record.
bool has_elements_of_record(const Handle& value, std::size_t leading_dimension)
{
    const Qud::MatVal& M = as_matrix(value);
    for (std::size_t j = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i)
            if (const auto k = static_cast<double>(j * leading_dimension + i); M.real(i, j) != k || M.imag(i, j) != -k)
                return false;
    return true;
}

TEST(Marshal, LargeArraysLeaveTheArenaWithoutACopy)
{
    Efi::block_pool::release();
    Handle value;
    {
        EfiCallContext ctx;
        const aMatrix* const record = record_of_order(ctx, 200, 200);
        value = Efi::EfiMarshal::UnMarshal(ctx.m_arena, record, m);
        EXPECT_EQ(as_matrix(value).m_rarr, record->m_rv);
        EXPECT_EQ(as_matrix(value).m_iarr, record->m_iv);
        EXPECT_EQ(Efi::live_arenas().m_blocks, 0);
    }
    EXPECT_TRUE(has_elements_of_record(value, 200));
    EXPECT_EQ(as_matrix(value).UniformDimension(), m);
    EXPECT_EQ(Efi::block_pool::kept_bytes(), 0U);
    Handle last_row = as_matrix(value).SubMatrix(199, 199, 0, 199);
    value.reset();
    EXPECT_EQ(Efi::block_pool::kept_bytes(), 0U) << "the block of a matrix shares its arrays";
    EXPECT_EQ(as_matrix(last_row).real(0, 199), 39999.0);
    last_row.reset();
    EXPECT_GE(Efi::block_pool::kept_bytes(), 2 * 320000U);
    EXPECT_LT(Efi::block_pool::kept_bytes(), 3 * 320000U);
    Efi::block_pool::release();
}

TEST(Marshal, OtherArraysAreCopied)
{
    const struct {
        const char* name;
        std::uint32_t n;
        std::uint32_t leading_dimension;
    } cases[] = {
        {.name = "small: inside the context", .n = 10, .leading_dimension = 10},
        {.name = "small: beside others in a block", .n = 31, .leading_dimension = 31},
        {.name = "rows are missing", .n = 200, .leading_dimension = 201},
    };
    for (const auto& c : cases) {
        Handle value;
        {
            EfiCallContext ctx;
            const aMatrix* const record = record_of_order(ctx, c.n, c.leading_dimension);
            value = Efi::EfiMarshal::UnMarshal(ctx.m_arena, record);
            EXPECT_NE(as_matrix(value).m_rarr, record->m_rv) << c.name;
            EXPECT_NE(as_matrix(value).m_iarr, record->m_iv) << c.name;
        }
        EXPECT_TRUE(has_elements_of_record(value, c.leading_dimension)) << c.name;
    }
}

TEST(Marshal, PartOfALargeArrayIsCopied)
{
    EfiCallContext ctx;
    const aMatrix* const whole = record_of_order(ctx, 200, 200);
    const aMatrix half{
        .m_anr = 200, .m_tag = aMatrix::tag, .m_rows = 200, .m_cols = 100, .m_rv = whole->m_rv, .m_iv = whole->m_iv};
    const Handle left = Efi::EfiMarshal::UnMarshal(ctx.m_arena, &half);
    EXPECT_NE(as_matrix(left).m_rarr, whole->m_rv) << "much smaller than its block";
    const aMatrix tail{
        .m_anr = 200, .m_tag = aMatrix::tag, .m_rows = 200, .m_cols = 199, .m_rv = whole->m_rv + 200, .m_iv = nullptr};
    const Handle behind_first = Efi::EfiMarshal::UnMarshal(ctx.m_arena, &tail);
    EXPECT_NE(as_matrix(behind_first).m_rarr, tail.m_rv) << "not the beginning of its block";
    EXPECT_EQ(as_matrix(behind_first).real(0, 0), 200.0);
    EXPECT_TRUE(has_elements_of_record(left, 200));
}

TEST(Marshal, AnArrayThatIsBothPartsIsTakenOverOnce)
{
    EfiCallContext ctx;
    aMatrix* const record = aMatrix::mk(ctx.m_arena, 100, 100, Efi::doubles(&ctx, 10000), nullptr);
    record->m_iv = record->m_rv;
    const Handle value = Efi::EfiMarshal::UnMarshal(ctx.m_arena, record);
    EXPECT_EQ(as_matrix(value).m_rarr, record->m_rv);
    EXPECT_NE(as_matrix(value).m_iarr, record->m_iv);
}

TEST(Marshal, AnAbsentArenaIsNotAsked)
{
    EfiCallContext ctx;
    const aMatrix* const record = record_of_order(ctx, 200, 200);
    const Handle value = Efi::EfiMarshal::UnMarshal(nullptr, record);
    EXPECT_NE(as_matrix(value).m_rarr, record->m_rv);
    EXPECT_TRUE(has_elements_of_record(value, 200));
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

TEST(MarshalThreads, AResultMayEndOnAnotherThread)
{
    Efi::block_pool::release();
    for (int round = 0; round < 20; ++round) {
        Handle value;
        {
            EfiCallContext ctx;
            value = Efi::EfiMarshal::UnMarshal(ctx.m_arena, record_of_order(ctx, 100, 100));
        }
        std::thread([held = std::move(value)]() mutable {
            EXPECT_TRUE(has_elements_of_record(held, 100));
            held.reset();
            EXPECT_GE(Efi::block_pool::kept_bytes(), 2 * 80000U);
        }).join(); // the thread's pool goes with it
        EXPECT_EQ(Efi::block_pool::kept_bytes(), 0U);
    }
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
