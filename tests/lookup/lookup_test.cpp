// What no worksheet can show of the entry operations: absent arguments, vhlookup, memory, shared arrays, large texts.
#include "bailuxsko/lookup.hpp"

#include "bailuxhost/matval.hpp"
#include "efiutl/arena_testing.hpp"
#include "tests/support/failing_arena.hpp"
#include "tests/support/host_raises.hpp"
#include "tests/support/values.hpp"

#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Qud::Handle;
using support::host_raised_by;
using support::matrix;
using support::number;
using support::Raised;
using support::text;

Handle function_of_two(Qud::FunVal::Operation operation)
{
    return std::make_shared<const Qud::FunVal>("f", 2, 2, std::move(operation));
}

/// The real parts of a column.
std::vector<double> column(const Handle& value)
{
    const Qud::MatVal& M = *Qud::matrix_of(value);
    EXPECT_EQ(M.Cols(), 1U);
    std::vector<double> numbers;
    for (std::size_t i = 0; i < M.Rows(); ++i)
        numbers.push_back(M.real(i, 0));
    return numbers;
}

Handle table()
{
    return matrix({{0, 10, 20}, {1, 11, 21}, {2, 12, 22}});
}

const Handle eq = text("eq");

TEST(Lookup, TheShortTwoWayFormIsTheOneWithEq)
{
    const Handle T = table();
    for (const double row : {0.0, 1.0, 2.0})
        for (const double col : {10.0, 20.0})
            EXPECT_EQ(support::bits(Efi::EfiLookup::vhlookup({}, {}, number(row), number(col), T)),
                      support::bits(Efi::EfiLookup::VHlookup({}, {}, number(row), number(col), T, eq)));
    EXPECT_EQ(column(Efi::EfiLookup::vhlookup({}, {}, number(2), number(10), T)), std::vector<double>{12});
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::vhlookup({}, {}, number(2), number(10), number(1)); }),
              (Raised{"must be matrix", 3}));
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::vhlookup({}, {}, number(5), number(10), T); }),
              (Raised{"no matching values found", -1}));
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::vhlookup({}, {.value = -1}, number(2), number(10), T); }),
              (Raised{"illegal TOL", -1}));
}

TEST(Lookup, AnAbsentRowOrColumnIsNoInteger)
{
    const Raised expected{"must be integer", 3};
    EXPECT_EQ(host_raised_by([] { Efi::EfiLookup::Hlookup({}, {}, number(10), table(), nullptr, eq); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::EfiLookup::Vlookup({}, {}, number(1), table(), nullptr, eq); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::Hlookup({}, {}, number(10), table(), nullptr, nullptr); }), expected);
    EXPECT_EQ(host_raised_by([] { Efi::Matrix::Vlookup({}, {}, number(1), table(), nullptr, nullptr); }), expected);
}

TEST(Lookup, AbsentArgumentsAreOfNoKind)
{
    EXPECT_EQ(host_raised_by([] { Efi::EfiLookup::Match({}, {}, number(1), nullptr, eq); }),
              (Raised{"must be matrix", 2}));
    EXPECT_EQ(host_raised_by([] { Efi::EfiLookup::Match({}, {}, nullptr, table(), eq); }),
              (Raised{"must be a string or a scalar", 1}));
    EXPECT_EQ(host_raised_by([] { Efi::EfiLookup::Lookup({}, {}, number(1), nullptr, nullptr, eq); }),
              (Raised{"must be matrix", 2}));
    EXPECT_EQ(host_raised_by([] { Efi::EfiLookup::Lookup({}, {}, number(1), table(), nullptr, eq); }),
              (Raised{"must be matrix", 3}));
    EXPECT_EQ(host_raised_by([] { Efi::EfiLookup::VHlookup({}, {}, number(1), nullptr, table(), eq); }),
              (Raised{"must be a string or a scalar", 2}));
}

TEST(Lookup, OnlyTheWorksheetsFormsFillInTheModifier)
{
    const Handle T = table();
    const Handle one = number(1);
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::Match({}, {}, one, T, nullptr); }), (Raised{"invalid modifier", 3}));
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::Lookup({}, {}, one, T, T, nullptr); }),
              (Raised{"invalid modifier", 4}));
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::Hlookup({}, {}, one, T, one, nullptr); }),
              (Raised{"invalid modifier", 4}));
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::Vlookup({}, {}, one, T, one, nullptr); }),
              (Raised{"invalid modifier", 4}));
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::VHlookup({}, {}, one, one, T, nullptr); }),
              (Raised{"invalid modifier", 4}));
    EXPECT_EQ(column(Efi::Matrix::Match({}, {}, one, matrix({{0}, {1}}), nullptr)), std::vector<double>{1});
    EXPECT_EQ(column(Efi::Matrix::Lookup({}, {}, one, T, T, nullptr)), std::vector<double>{1});
    EXPECT_EQ(column(Efi::Matrix::Hlookup({}, {}, number(10), T, one, nullptr)), std::vector<double>{11});
    EXPECT_EQ(column(Efi::Matrix::Vlookup({}, {}, one, T, number(2), nullptr)), std::vector<double>{21});
    EXPECT_EQ(column(Efi::Matrix::VHlookup({}, {}, one, number(20), T, nullptr)), std::vector<double>{21});
}

/// Calls of every entry operation; each fails in its own way when told so.
std::vector<std::function<void()>> calls(bool failing)
{
    const Handle T = table();
    const Handle key = number(failing ? 77 : 1);
    const Handle fails = function_of_two(
        [](std::span<const Handle>) -> Handle { Evl::Run::AppException::Raise("a message of its own", 9); });
    std::vector<std::function<void()>> all{
        [=] { Efi::Matrix::Match({}, {}, key, T, nullptr); },
        [=] { Efi::Matrix::Lookup({}, {}, key, T, T, nullptr); },
        [=] { Efi::Matrix::Hlookup({}, {}, number(failing ? 77 : 10), T, number(1), nullptr); },
        [=] { Efi::Matrix::Vlookup({}, {}, key, T, number(1), nullptr); },
        [=] { Efi::Matrix::VHlookup({}, {}, number(1), number(failing ? 77 : 10), T, nullptr); },
        [=] { Efi::EfiLookup::vhlookup({}, {}, key, number(10), T); },
    };
    if (failing)
        all.emplace_back([=] { Efi::Matrix::Match({}, {}, key, T, fails); });
    return all;
}

TEST(Lookup, IsClosedAfterAnError)
{
    const Efi::LiveArenas before = Efi::live_arenas();
    for (const auto& call : calls(true)) {
        EXPECT_NE(host_raised_by(call).message, "");
        EXPECT_EQ(Efi::live_arenas(), before);
    }
    for (const auto& call : calls(false)) {
        EXPECT_EQ(host_raised_by(call).message, "");
        EXPECT_EQ(Efi::live_arenas(), before);
    }
}

TEST(Lookup, AnArenaThatFailsLeavesNothingBehind)
{
    for (const auto& call : calls(false))
        EXPECT_GT(support::fails_at_every_request<Evl::Run::AppException>(call), 0U);
}

TEST(Lookup, AnErrorOfTheUsersFunctionPassesThroughAsItIs)
{
    const Handle fails = function_of_two([](std::span<const Handle>) -> Handle {
        Evl::Run::AppException::Raise("a message of its own", 9, "and a detail");
    });
    const Raised raised = host_raised_by([&] { Efi::EfiLookup::Match({}, {}, number(1), table(), fails); });
    EXPECT_EQ(raised, (Raised{"a message of its own", 9}));
    EXPECT_EQ(raised.detail, "and a detail");
    const Handle throws = function_of_two([](std::span<const Handle>) -> Handle { throw std::bad_alloc(); });
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::Match({}, {}, number(1), table(), throws); }),
              (Raised{"out of memory", -1}));
}

TEST(Lookup, AUsersFunctionMaySearchItself)
{
    const Handle T = table();
    const Handle inner = function_of_two([](std::span<const Handle> arguments) {
        return number(Qud::as_number(arguments[0])->re() == Qud::as_number(arguments[1])->re() ? 1 : 0);
    });
    const Handle outer = function_of_two([&](std::span<const Handle> arguments) {
        const Handle found = Efi::EfiLookup::Match({}, {}, arguments[0], T, inner);
        return Efi::EfiLookup::Vlookup({}, {}, number(1), T, number(0), inner) ? number(column(found).size() == 1)
                                                                               : number(0);
    });
    const Handle found = Efi::EfiLookup::Match({}, {}, number(1), matrix({{12}, {22}}), outer);
    EXPECT_EQ(column(found), (std::vector<double>{0, 1}));
}

TEST(Lookup, UsersFunctionsSeeElementsOnceInTheOrderOfTheSearch)
{
    std::vector<double> seen;
    const Handle f = function_of_two([&](std::span<const Handle> arguments) {
        seen.push_back(Qud::as_number(arguments[0])->re());
        return number(1);
    });
    Efi::EfiLookup::Match({}, {}, number(1), table(), f);
    EXPECT_EQ(seen, (std::vector<double>{0, 1, 2, 10, 11, 12, 20, 21, 22}));
    seen.clear();
    Efi::EfiLookup::Hlookup({}, {}, number(1), table(), number(1), f);
    EXPECT_EQ(seen, (std::vector<double>{0, 10, 20}));
    seen.clear();
    Efi::EfiLookup::Vlookup({}, {}, number(1), table(), number(1), f);
    EXPECT_EQ(seen, (std::vector<double>{0, 1, 2}));
}

TEST(Lookup, ArgumentsAreNotWrittenTo)
{
    const Handle T = matrix({{0, -0.0, std::nan("7")}, {1, 11, 21}}, Qud::Dim::identity, {{1, 2, 3}, {0, 0, 0}});
    const Handle range = matrix({{0}, {100}});
    const std::vector<std::uint64_t> before = support::bits(T);
    for (const char* modifier : {"eq", "not", "lt", "gt", "leq", "geq", "near"}) {
        host_raised_by([&] { Efi::EfiLookup::Match({}, {}, number(1), T, text(modifier)); });
        host_raised_by([&] { Efi::EfiLookup::VHlookup({}, {}, number(1), number(1), T, text(modifier)); });
    }
    Efi::EfiLookup::Lookup({}, {}, range, T, T, text("range"));
    EXPECT_EQ(support::bits(T), before);
    EXPECT_EQ(column(range), (std::vector<double>{0, 100}));
}

TEST(Lookup, ViewsAreSearchedWhereTheyLie)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(1000 * 8);
    for (std::size_t k = 0; k < 8000; ++k)
        numbers[k] = static_cast<double>(k);
    const Handle M = Qud::MatVal::make(1000, 8, numbers);
    const Handle view = Qud::matrix_of(M)->SubMatrix(100, 599, 2, 5);
    // Element (i, j) of the view is (j + 2) * 1000 + 100 + i.
    EXPECT_EQ(column(Efi::EfiLookup::Vlookup({}, {}, number(2350), view, number(3), eq)), std::vector<double>{5350});
    EXPECT_EQ(column(Efi::EfiLookup::Hlookup({}, {}, number(4100), view, number(499), eq)), std::vector<double>{4599});
    EXPECT_EQ(column(Efi::EfiLookup::VHlookup({}, {}, number(2599), number(3100), view, eq)),
              std::vector<double>{3599});
    EXPECT_EQ(host_raised_by([&] { Efi::EfiLookup::Match({}, {}, number(2600), view, eq); }),
              (Raised{"no matching values found", -1}));
    const Handle pair = Efi::EfiLookup::Match({}, {}, number(5599), view, eq);
    EXPECT_EQ(column(*Qud::matrix_of(pair)->entry(0, 0)), (std::vector<double>{499, 3}));
}

TEST(Lookup, TextsOfAMillionCharacters)
{
    std::string large;
    while (large.size() < 2'000'000)
        large += "\xC3\xA9"; // é, a million times
    std::string other = large;
    other.back() = '\xA8'; // differs in the last byte
    std::string shorter = large;
    shorter.pop_back();
    Qud::MatBuilder keys(5, 2);
    const std::string* const texts[] = {&other, &large, &shorter, &other, &large};
    for (std::size_t i = 0; i < 5; ++i) {
        keys.set(i, 0, text(*texts[i]));
        keys.set_number(i, 1, static_cast<double>(i), 0.0, Qud::Dim::identity);
    }
    const Handle T = keys.finish();
    EXPECT_EQ(column(Efi::EfiLookup::Vlookup({}, {}, text(large), T, number(1), eq)), (std::vector<double>{1, 4}));
    EXPECT_EQ(column(Efi::EfiLookup::Vlookup({}, {}, text(large), T, number(1), text("not"))),
              (std::vector<double>{0, 2, 3}));
    EXPECT_EQ(column(Efi::EfiLookup::Vlookup({}, {}, text(shorter), T, number(1), eq)), std::vector<double>{2});
}

TEST(Lookup, TextsThatDifferInOneByte)
{
    for (std::size_t length = 1; length <= 24; ++length) {
        const std::string wanted(length, 'x');
        Qud::MatBuilder keys(static_cast<std::uint32_t>(length) + 3, 1);
        for (std::size_t k = 0; k < length; ++k) {
            std::string other = wanted;
            other[k] = 'y';
            keys.set(k, 0, text(other));
        }
        keys.set(length, 0, text(wanted));
        keys.set(length + 1, 0, text(wanted + 'x'));
        keys.set(length + 2, 0, text(wanted.substr(1)));
        const Handle T = keys.finish();
        EXPECT_EQ(column(Efi::EfiLookup::Match({}, {}, text(wanted), T, eq)),
                  std::vector<double>{static_cast<double>(length)});
        EXPECT_EQ(column(Efi::EfiLookup::Match({}, {}, text(wanted), T, text("not"))).size(), length + 2);
    }
}

TEST(Lookup, TextsWithZerosInside)
{
    Qud::MatBuilder keys(3, 1);
    keys.set(0, 0, text(std::string("a\0b", 3)));
    keys.set(1, 0, text("a"));
    keys.set(2, 0, text(std::string("a\0c", 3)));
    const Handle T = keys.finish();
    EXPECT_EQ(column(Efi::EfiLookup::Match({}, {}, text(std::string("a\0c", 3)), T, eq)), std::vector<double>{2});
    EXPECT_EQ(column(Efi::EfiLookup::Match({}, {}, text("a"), T, eq)), std::vector<double>{1});
}

TEST(LookupThreads, SearchOneTableTogether)
{
    Qud::MatBuilder builder(1000, 2);
    for (std::size_t i = 0; i < 1000; ++i) {
        builder.set(i, 0, i % 2 == 0 ? number(static_cast<double>(i)) : text(std::to_string(i)));
        builder.set_number(i, 1, static_cast<double>(i), 0.0, Qud::Dim::identity);
    }
    const Handle T = builder.finish();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&T] {
            for (std::size_t i = 0; i < 1000; ++i) {
                const Handle key = i % 2 == 0 ? number(static_cast<double>(i)) : text(std::to_string(i));
                EXPECT_EQ(column(Efi::EfiLookup::Vlookup({}, {}, key, T, number(1), eq)),
                          std::vector<double>{static_cast<double>(i)});
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace
