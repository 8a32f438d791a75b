// Whole runs of numbers tested at once find what a look at each element finds, in the same order.
#include "bailuxsko/lookup/match.hpp"
#include "bailuxsko/lookup/predicates.hpp"
#include "tests/lookup/tables.hpp"
#include "tests/support/levels.hpp"
#include "tests/support/values.hpp"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace {

using Qud::Dim;
using Qud::Handle;

const Dim metre = Dim::Parse("V{Length 60000}");

/// The target of a search and how the elements are compared with it, as one would say it.
struct Search {
    double t;
    double ti;
    double upper;
    double tol;
};

using Holds = bool (*)(double x, double y, const Search& s);

struct Definition {
    const char* name;
    Holds holds;
};

const Definition definitions[] = {
    {"eq",
     [](double x, double y, const Search& s) {
         return std::isfinite(x) && std::isfinite(y) && std::fabs(x - s.t) <= s.tol && std::fabs(y - s.ti) <= s.tol;
     }},
    {"neq",
     [](double x, double y, const Search& s) {
         return !std::isfinite(x) || !std::isfinite(y) || std::fabs(x - s.t) > s.tol || std::fabs(y - s.ti) > s.tol;
     }},
    {"eq_ignoreIp", [](double x, double, const Search& s) { return std::isfinite(x) && std::fabs(x - s.t) <= s.tol; }},
    {"gt", [](double x, double, const Search& s) { return std::isfinite(x) && x - s.t > s.tol; }},
    {"ge", [](double x, double, const Search& s) { return std::isfinite(x) && x - s.t >= -s.tol; }},
    {"lt", [](double x, double, const Search& s) { return std::isfinite(x) && s.t - x > s.tol; }},
    {"le", [](double x, double, const Search& s) { return std::isfinite(x) && s.t - x >= -s.tol; }},
    {"range",
     [](double x, double, const Search& s) { return std::isfinite(x) && x - s.t >= -s.tol && s.upper - x >= -s.tol; }},
};

std::vector<support::Place> found(std::string_view name, const Search& s, const Qud::MatVal& M, Efi::IndexRange cols,
                                  Efi::IndexRange rows)
{
    return support::found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
        const auto scan = [&](const Efi::comparison_pred& predicate) {
            Efi::Match(hits, ctx, M, cols, rows, predicate, {.value = 3});
        };
        const Handle target = support::number(s.t, s.ti, metre);
        if (name == "eq")
            scan(Efi::eq_pred(target, s.tol));
        else if (name == "neq")
            scan(Efi::neq_pred(target, s.tol));
        else if (name == "eq_ignoreIp")
            scan(Efi::eq_ignoreIp_pred(s.t, metre, s.tol));
        else if (name == "gt")
            scan(Efi::gt_pred(s.t, metre, s.tol));
        else if (name == "ge")
            scan(Efi::ge_pred(s.t, metre, s.tol));
        else if (name == "lt")
            scan(Efi::lt_pred(s.t, metre, s.tol));
        else if (name == "le")
            scan(Efi::le_pred(s.t, metre, s.tol));
        else
            scan(Efi::range_pred(s.t, s.upper, metre, s.tol));
    });
}

/// Some number of the table to search for, if it draws a finite one.
Search drawn(const Qud::MatVal& M, support::Random& random)
{
    const auto pick = [&](bool imaginary) {
        const std::size_t i = random() % M.Rows();
        const std::size_t j = random() % M.Cols();
        const double x = imaginary ? M.imag(i, j) : M.real(i, j);
        return std::isfinite(x) ? x : 0.5;
    };
    constexpr double tolerances[] = {0.0, 1e-3, 0.5, 1.0, 1e300};
    return {.t = pick(false), .ti = pick(true), .upper = pick(false), .tol = tolerances[random() % 5]};
}

template <class Check>
void over_tables(Check check)
{
    support::Random random(20);
    for (const support::TableKind& kind : support::table_kinds)
        for (const support::Kind& numbers : support::kinds)
            for (const std::uint32_t rows : {1U, 2U, 63U, 64U, 65U, 127U, 128U, 129U, 200U}) {
                SCOPED_TRACE(std::string(kind.name) + ", " + numbers.name + ", rows " + std::to_string(rows));
                const Handle M = support::table(kind, numbers, rows, 3, random);
                check(*Qud::matrix_of(M), random);
            }
}

Efi::IndexRange all(std::size_t count)
{
    return {.first = 0, .end = count};
}

class Scan : public support::AtLevel {};
INSTANTIATE_TEST_SUITE_P(Levels, Scan, support::every_level(), support::level_name);

TEST_P(Scan, FindsWhatALookAtEachElementFinds)
{
    over_tables([](const Qud::MatVal& M, support::Random& random) {
        const Search s = drawn(M, random);
        const std::size_t end = 1 + random() % M.Rows();
        const Efi::IndexRange some{.first = random() % end, .end = end};
        for (const Definition& d : definitions) {
            const auto is_hit = [&](const Handle& element) {
                const Qud::NumVal* const x = Qud::as_number(element);
                return x && x->m_dim == metre && d.holds(x->re(), x->im(), s);
            };
            ASSERT_EQ(found(d.name, s, M, all(M.Cols()), all(M.Rows())),
                      support::plain_hits(M, all(M.Cols()), all(M.Rows()), is_hit, 3))
                << d.name;
            ASSERT_EQ(found(d.name, s, M, {.first = 1, .end = 2}, some),
                      support::plain_hits(M, {.first = 1, .end = 2}, some, is_hit, 3))
                << d.name << ", some rows of column 1";
        }
    });
}

TEST_P(Scan, FindsTextsAmongEverything)
{
    over_tables([](const Qud::MatVal& M, support::Random&) {
        for (const char* wanted : {"a", "", "b"}) {
            const Handle target = Qud::StrVal::make(wanted);
            const auto same = [&](const Handle& element) {
                const Qud::StrVal* const text = Qud::as_text(element);
                return text && text->text() == wanted;
            };
            const auto other = [&](const Handle& element) { return Qud::as_text(element) && !same(element); };
            const auto scan = [&](const Efi::comparison_pred& predicate) {
                return support::found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
                    Efi::Match(hits, ctx, M, all(M.Cols()), all(M.Rows()), predicate, {});
                });
            };
            ASSERT_EQ(scan(Efi::eq_pred(target, 0.0)), support::plain_hits(M, all(M.Cols()), all(M.Rows()), same));
            ASSERT_EQ(scan(Efi::neq_pred(target, 0.0)), support::plain_hits(M, all(M.Cols()), all(M.Rows()), other));
        }
    });
}

/// The smallest distance, looked for one by one.
double plain_distance(const Qud::MatVal& M, double t)
{
    double smallest = std::numeric_limits<double>::max();
    for (std::size_t j = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i) {
            const Handle element = M.element(i, j);
            const Qud::NumVal* const x = Qud::as_number(element);
            if (x && x->m_dim == metre && std::isfinite(x->re()) && std::fabs(x->re() - t) < smallest)
                smallest = std::fabs(x->re() - t);
        }
    return smallest;
}

TEST_P(Scan, FindsTheNearest)
{
    over_tables([](const Qud::MatVal& M, support::Random& random) {
        for (const double off : {0.0, 0.375, 1e-4}) {
            Search s = drawn(M, random);
            s.t += off;
            const double distance = plain_distance(M, s.t);
            const Search band{.t = s.t - distance, .ti = 0.0, .upper = s.t + distance, .tol = s.tol};
            const auto is_hit = [&](const Handle& element) {
                const Qud::NumVal* const x = Qud::as_number(element);
                return x && x->m_dim == metre &&
                       (distance == 0.0 ? definitions[2].holds(x->re(), 0.0, s)
                                        : definitions[7].holds(x->re(), 0.0, band));
            };
            const auto found_here = support::found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
                Efi::Match(hits, ctx, s.t, metre, M, all(M.Cols()), all(M.Rows()), {.value = s.tol}, {});
            });
            ASSERT_EQ(found_here, support::plain_hits(M, all(M.Cols()), all(M.Rows()), is_hit));
        }
    });
}

/// Finds numbers that are whole, by its own word only.
class WholeNumbers final : public Efi::comparison_pred {
public:
    using comparison_pred::eval;
    bool eval(const Qud::NumVal& x) const override { return x.get_IsInt(); }
};

TEST_P(Scan, AsksAPredicateThatTestsOneByOne)
{
    over_tables([](const Qud::MatVal& M, support::Random&) {
        const auto whole = [](const Handle& element) {
            const Qud::NumVal* const x = Qud::as_number(element);
            return x && x->get_IsInt();
        };
        const auto found_here = support::found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
            Efi::Match(hits, ctx, M, all(M.Cols()), all(M.Rows()), WholeNumbers(), {});
        });
        ASSERT_EQ(found_here, support::plain_hits(M, all(M.Cols()), all(M.Rows()), whole));
    });
}

TEST_P(Scan, FindsInARowWhatALookAtEachElementFinds)
{
    support::Random random(21);
    for (const support::TableKind& kind : support::table_kinds)
        for (const std::uint32_t cols : {1U, 2U, 65U, 1023U, 1024U, 1025U, 2100U}) {
            SCOPED_TRACE(std::string(kind.name) + ", cols " + std::to_string(cols));
            const Handle table = support::table(kind, support::kinds[1], 3, cols, random);
            const Qud::MatVal& M = *Qud::matrix_of(table);
            const Efi::IndexRange row{.first = 1, .end = 2};
            const Search s{.t = 1.0, .ti = 0.0, .upper = 2.0, .tol = 0.0};
            for (const Definition& d : definitions) {
                const auto is_hit = [&](const Handle& element) {
                    const Qud::NumVal* const x = Qud::as_number(element);
                    return x && x->m_dim == metre && d.holds(x->re(), x->im(), s);
                };
                ASSERT_EQ(found(d.name, s, M, all(cols), row), support::plain_hits(M, all(cols), row, is_hit, 3))
                    << d.name;
            }
            // Whole numbers from -2 to 2 are nearest to 9 where they are 2, or what is the largest there.
            const Handle of_row = M.SubMatrix(1, 1, 0, cols - 1);
            const double distance = plain_distance(*Qud::matrix_of(of_row), 9.0);
            const auto is_nearest = [&](const Handle& element) {
                const Qud::NumVal* const x = Qud::as_number(element);
                return x && x->m_dim == metre && 9.0 - x->re() == distance;
            };
            ASSERT_EQ(support::found_by([&](Efi::indicesList& hits, EfiCallContext* ctx) {
                          Efi::Match(hits, ctx, 9.0, metre, M, all(cols), row, {.value = 0.0}, {});
                      }),
                      support::plain_hits(M, all(cols), row, is_nearest));
        }
}

TEST_P(Scan, HitsThatOutgrowTheListStayInOrder)
{
    constexpr std::uint32_t rows = 30000;
    Qud::FreshNumbers numbers = Qud::fresh_numbers(2 * rows);
    for (std::size_t k = 0; k < 2 * rows; ++k)
        numbers[k] = k % 3 == 0 ? 1.0 : 0.0;
    const Handle M = Qud::MatVal::make(rows, 2, numbers, nullptr, metre);
    const auto one = [](const Handle& element) { return Qud::as_number(element)->re() == 1.0; };
    EXPECT_EQ(found("eq", {.t = 1.0, .ti = 0.0, .upper = 0.0, .tol = 0.0}, *Qud::matrix_of(M), all(2), all(rows)),
              support::plain_hits(*Qud::matrix_of(M), all(2), all(rows), one, 3));
}

} // namespace
