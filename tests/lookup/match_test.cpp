// The search engine by itself: its three forms on parts of a matrix, indices, results, errors.
#include "bailuxsko/lookup/match.hpp"

#include "bailuxsko/lookup.hpp"
#include "efiutl/records.hpp"
#include "tests/lookup/tables.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Efi::IndexRange;
using Qud::Handle;
using support::found_by;
using support::host_raised_by;
using support::matrix;
using support::number;
using support::Place;
using support::Raised;
using support::raised_by;
using support::text;

constexpr IndexRange all_of_4{.first = 0, .end = 4};
constexpr Efi::ArgumentIndices arguments{.target = 11, .matrix = 12, .modifier = 13};

// 1 2 1 2
// 2 1 2 1
// 1 1 2 2
// 2 2 1 9
Handle board()
{
    return matrix({{1, 2, 1, 2}, {2, 1, 2, 1}, {1, 1, 2, 2}, {2, 2, 1, 9}});
}

TEST(Match, ScansThePartThatItIsGiven)
{
    const Handle M = board();
    const Efi::eq_pred ones(number(1), 0.0);
    const auto in = [&](IndexRange cols, IndexRange rows, std::int32_t origin) {
        return found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
            Efi::Match(hits, ctx, *Qud::matrix_of(M), cols, rows, ones, {.value = origin});
        });
    };
    EXPECT_EQ(in({.first = 1, .end = 3}, {.first = 1, .end = 4}, 0), (std::vector<Place>{{1, 1}, {2, 1}, {3, 2}}));
    EXPECT_EQ(in({.first = 0, .end = 1}, all_of_4, 1), (std::vector<Place>{{1, 1}, {3, 1}}));
    EXPECT_EQ(in(all_of_4, {.first = 2, .end = 3}, -1), (std::vector<Place>{{1, -1}, {1, 0}}));
    EXPECT_EQ(in({.first = 3, .end = 4}, {.first = 3, .end = 4}, 0), std::vector<Place>{});
    EXPECT_EQ(in({.first = 2, .end = 2}, all_of_4, 0), std::vector<Place>{});
    EXPECT_EQ(in(all_of_4, {.first = 1, .end = 1}, 0), std::vector<Place>{});
}

TEST(Match, LooksForTheNearestInThePartThatItIsGiven)
{
    const Handle M = board();
    const auto in = [&](double target, IndexRange cols, IndexRange rows) {
        return found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
            Efi::Match(hits, ctx, target, Qud::Dim::identity, *Qud::matrix_of(M), cols, rows, {.value = 0.0}, {});
        });
    };
    EXPECT_EQ(in(8.0, all_of_4, all_of_4), (std::vector<Place>{{3, 3}}));
    EXPECT_EQ(in(8.0, {.first = 2, .end = 4}, {.first = 1, .end = 3}), (std::vector<Place>{{1, 2}, {2, 2}, {2, 3}}));
    EXPECT_EQ(in(1.5, {.first = 0, .end = 1}, {.first = 0, .end = 2}), (std::vector<Place>{{0, 0}, {1, 0}}));
    EXPECT_EQ(in(1.0, {.first = 3, .end = 4}, all_of_4), (std::vector<Place>{{1, 3}}));
}

TEST(Match, ReadsModifiersForThePartThatItIsGiven)
{
    const Handle M = board();
    const auto in = [&](const Handle& target, const char* modifier) {
        return found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
            Efi::Match(hits, ctx, target, Qud::matrix_of(M), {.first = 2, .end = 4}, {.first = 0, .end = 2},
                       text(modifier), {.value = 0.0}, {.value = 10}, arguments);
        });
    };
    EXPECT_EQ(in(number(1), "eq"), (std::vector<Place>{{10, 12}, {11, 13}}));
    EXPECT_EQ(in(number(1), "not"), (std::vector<Place>{{11, 12}, {10, 13}}));
    EXPECT_EQ(in(number(2), "lt"), (std::vector<Place>{{10, 12}, {11, 13}}));
    EXPECT_EQ(in(number(1), "gt"), (std::vector<Place>{{11, 12}, {10, 13}}));
    EXPECT_EQ(in(number(1), "leq"), (std::vector<Place>{{10, 12}, {11, 13}}));
    EXPECT_EQ(in(number(2), "geq"), (std::vector<Place>{{11, 12}, {10, 13}}));
    EXPECT_EQ(in(number(7), "near"), (std::vector<Place>{{11, 12}, {10, 13}}));
    EXPECT_EQ(in(matrix({{1.5}, {9}}), "range"), (std::vector<Place>{{11, 12}, {10, 13}}));
}

/// What the reading of a modifier raises, by whichever way it takes.
Raised raised_for(const Handle& target, const Qud::MatVal* M, const Handle& modifier, double tol = 0.0)
{
    EfiCallContext context;
    Efi::indicesList hits(&context);
    Raised native;
    const Raised host = host_raised_by([&] {
        native = raised_by([&] {
            Efi::Match(hits, &context, target, M, all_of_4, all_of_4, modifier, {.value = tol}, {}, arguments);
        });
    });
    return host.message.empty() ? native : host;
}

TEST(Match, BlamesTheArgumentThatItIsTold)
{
    const Handle M = board();
    const Qud::MatVal* const table = Qud::matrix_of(M);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Handle gives_text =
        std::make_shared<const Qud::FunVal>("f", 2, 2, [](auto) { return Qud::StrVal::make("1"); });
    const Handle of_one = std::make_shared<const Qud::FunVal>("f", 1, 1, [](auto) { return number(1); });

    EXPECT_EQ(raised_for(number(1), nullptr, text("eq"), -1.0), (Raised{"must be matrix", 12}));
    EXPECT_EQ(raised_for(number(1), table, text("eq"), -1.0), (Raised{"illegal TOL", -1}));
    EXPECT_EQ(raised_for(number(1), table, nullptr, Efi::ptr_nan()), (Raised{"illegal TOL", -1}));
    EXPECT_EQ(raised_for(number(1), table, nullptr), (Raised{"invalid modifier", 13}));
    EXPECT_EQ(raised_for(number(1), table, number(1)), (Raised{"invalid modifier", 13}));
    EXPECT_EQ(raised_for(number(1), table, text("most")), (Raised{"invalid modifier", 13}));
    EXPECT_EQ(raised_for(nullptr, table, text("eq")), (Raised{"must be a string or a scalar", 11}));
    EXPECT_EQ(raised_for(M, table, text("not")), (Raised{"must be a string or a scalar", 11}));
    EXPECT_EQ(raised_for(number(nan), table, text("eq")), (Raised{"must be scalar", 1})) << "always the first";
    EXPECT_EQ(raised_for(nullptr, table, text("lt")), (Raised{"must be scalar", 11}));
    EXPECT_EQ(raised_for(number(nan), table, text("near")), (Raised{"must be real", 11}));
    EXPECT_EQ(raised_for(number(1, 1), table, text("geq")), (Raised{"must be real", 11}));
    EXPECT_EQ(raised_for(nullptr, table, text("range")), (Raised{"must be vector", 11}));
    EXPECT_EQ(raised_for(matrix({{1}, {2}, {3}}), table, text("range")), (Raised{"invalid range", 11}));
    EXPECT_EQ(raised_for(matrix({{1}, {nan}}), table, text("range")), (Raised{"must be real vector", 11}));
    EXPECT_EQ(raised_for(number(1), table, of_one), (Raised{"must be a function of 2 variables", 13}));
    EXPECT_EQ(raised_for(number(1), table, gives_text), (Raised{"This function must return an integer value", 13}));
    EXPECT_EQ(raised_for(number(7), table, text("eq")), (Raised{"no matching values found", -1}));
}

TEST(Match, StartsTheListAnew)
{
    const Handle M = board();
    EfiCallContext context;
    Efi::indicesList hits(&context);
    for (const double target : {1.0, 9.0})
        Efi::Match(hits, &context, *Qud::matrix_of(M), all_of_4, all_of_4, Efi::eq_pred(number(target), 0.0), {});
    EXPECT_EQ(support::places(hits), (std::vector<Place>{{3, 3}}));
    EXPECT_EQ(hits.capacity(), Efi::indicesList::first_capacity);
}

TEST(Match, TheSlotsOfPairsHoldTheMarker)
{
    const Handle found = Efi::EfiLookup::Match({.value = 1}, {}, number(9), board(), text("leq"));
    const Qud::MatVal& pairs = *Qud::matrix_of(found);
    ASSERT_EQ(pairs.Rows(), 16U);
    ASSERT_EQ(pairs.Cols(), 1U);
    EXPECT_FALSE(pairs.HasImag());
    EXPECT_EQ(pairs.UniformDimension(), Qud::Dim::string_dim);
    for (std::size_t k = 0; k < 16; ++k) {
        EXPECT_TRUE(Efi::isPtrNan(pairs.real(k, 0))) << k;
        const Handle* const entry = pairs.entry(k, 0);
        ASSERT_NE(entry, nullptr) << k;
        const Qud::MatVal& pair = *Qud::matrix_of(*entry);
        ASSERT_EQ(pair.Rows(), 2U);
        ASSERT_EQ(pair.Cols(), 1U);
        EXPECT_EQ(pair.UniformDimension(), Qud::Dim::identity);
        EXPECT_EQ(pair.real(0, 0), static_cast<double>(k % 4 + 1));
        EXPECT_EQ(pair.real(1, 0), static_cast<double>(k / 4 + 1));
        EXPECT_FALSE(pair.HasImag());
    }
}

TEST(Match, AHitWhoseIndexDoesNotFitIsAnError)
{
    constexpr std::int32_t last = std::numeric_limits<std::int32_t>::max();
    // One column that repeats a single number: 70 rows, so that whole blocks and the rest are looked at.
    Qud::FreshNumbers numbers = Qud::zero_numbers(70);
    for (const std::size_t hit : {std::size_t{3}, std::size_t{63}, std::size_t{64}, std::size_t{69}}) {
        std::fill_n(numbers.get(), 70, 0.0);
        numbers[hit] = 1.0;
        const Handle M = Qud::MatVal::make(70, 1, numbers);
        const auto rows_from = [&](std::int32_t origin) {
            return Efi::EfiLookup::Match({.value = origin}, {}, number(1), M, text("eq"));
        };
        const auto fits = static_cast<std::int32_t>(hit);
        EXPECT_EQ(Qud::matrix_of(rows_from(last - fits))->real(0, 0), static_cast<double>(last)) << hit;
        EXPECT_EQ(host_raised_by([&] { rows_from(last - fits + 1); }), (Raised{"index out of bounds", -1})) << hit;
        numbers[hit] = 0.0;
    }
}

TEST(Match, RowsBeyond31BitsFitWithALowOrigin)
{
    // A record of 2^32 - 1 rows over a column of 70 numbers: only those are read.
    Qud::FreshNumbers numbers = Qud::zero_numbers(70);
    numbers[66] = 1.0;
    const Handle M = Qud::MatVal::make(0xFFFFFFFFU, 1, numbers);
    const auto found = [&](std::int32_t origin) {
        return found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
            Efi::Match(hits, ctx, *Qud::matrix_of(M), {.first = 0, .end = 1}, {.first = 0, .end = 70},
                       Efi::eq_pred(number(1), 0.0), {.value = origin});
        });
    };
    EXPECT_EQ(found(std::numeric_limits<std::int32_t>::min()),
              (std::vector<Place>{
                  {std::numeric_limits<std::int32_t>::min() + 66, std::numeric_limits<std::int32_t>::min()}}));
}

TEST(Match, AnArenaThatFailsLeavesNothingBehind)
{
    const Handle M = board();
    const std::size_t requests = support::fails_at_every_request<Evl::Run::AppException>(
        [&] { Efi::EfiLookup::Match({}, {}, number(9), M, text("leq")); });
    EXPECT_GE(requests, 4U) << "the list for 12 hits and for 24";
}

} // namespace
