// Searches around every edge of a block, at every level, beside loops that look at one number after the other.
#include "bailuxsko/kernels/search.hpp"

#include "efiutl/records.hpp"
#include "tests/support/kinds.hpp"
#include "tests/support/levels.hpp"

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace number_tests = native::number_tests;

constexpr double t = 0.25;
constexpr double im = -0.5;
constexpr double upper = 1.5;

struct Definition {
    const char* name;
    native::NumberTest (*test)(double tol);
    bool (*holds)(double x, double y, double tol);
};

const Definition definitions[] = {
    {"within",
     [](double tol) -> native::NumberTest {
         return number_tests::Within{t, tol};
     },
     [](double x, double, double tol) { return std::isfinite(x) && std::fabs(x - t) <= tol; }},
    {"outside",
     [](double tol) -> native::NumberTest {
         return number_tests::Outside{t, tol};
     },
     [](double x, double, double tol) { return !std::isfinite(x) || std::fabs(x - t) > tol; }},
    {"both within",
     [](double tol) -> native::NumberTest {
         return number_tests::BothWithin{t, im, tol};
     },
     [](double x, double y, double tol) {
         return std::isfinite(x) && std::isfinite(y) && std::fabs(x - t) <= tol && std::fabs(y - im) <= tol;
     }},
    {"some outside",
     [](double tol) -> native::NumberTest {
         return number_tests::SomeOutside{t, im, tol};
     },
     [](double x, double y, double tol) {
         return !std::isfinite(x) || !std::isfinite(y) || std::fabs(x - t) > tol || std::fabs(y - im) > tol;
     }},
    {"above",
     [](double tol) -> native::NumberTest {
         return number_tests::Above{t, tol};
     },
     [](double x, double, double tol) { return std::isfinite(x) && x - t > tol; }},
    {"at least",
     [](double tol) -> native::NumberTest {
         return number_tests::AtLeast{t, tol};
     },
     [](double x, double, double tol) { return std::isfinite(x) && x - t >= -tol; }},
    {"below",
     [](double tol) -> native::NumberTest {
         return number_tests::Below{t, tol};
     },
     [](double x, double, double tol) { return std::isfinite(x) && t - x > tol; }},
    {"at most",
     [](double tol) -> native::NumberTest {
         return number_tests::AtMost{t, tol};
     },
     [](double x, double, double tol) { return std::isfinite(x) && t - x >= -tol; }},
    {"between",
     [](double tol) -> native::NumberTest {
         return number_tests::Between{t, upper, tol};
     },
     [](double x, double, double tol) { return std::isfinite(x) && x - t >= -tol && upper - x >= -tol; }},
};

/// The kind's numbers, with every sort that is not finite among them.
std::vector<double> drawn(const support::Kind& kind, std::size_t count, support::Random& random)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    const double odd[] = {inf, -inf, std::nan("3"), Efi::ptr_nan(), t, upper, -0.0, std::numeric_limits<double>::max()};
    std::vector<double> numbers(count);
    for (double& x : numbers)
        x = random() % 9 == 0 ? odd[random() % 8] : kind.element(random);
    return numbers;
}

std::vector<std::size_t> edges()
{
    std::vector<std::size_t> counts;
    for (std::size_t count = 0; count <= 130; ++count)
        counts.push_back(count);
    for (const std::size_t count : {191, 192, 193, 1023, 1024})
        counts.push_back(count);
    return counts;
}

class Search : public support::AtLevel {};
INSTANTIATE_TEST_SUITE_P(Levels, Search, support::every_level(), support::level_name);

TEST_P(Search, FindsTheSamePlaces)
{
    support::Random random(5);
    for (const support::Kind& kind : support::kinds)
        for (const std::size_t count : edges()) {
            const std::vector<double> x = drawn(kind, count, random);
            const std::vector<double> y = drawn(kind, count, random);
            for (const Definition& d : definitions)
                for (const bool is_complex : {false, true})
                    for (const double tol : {0.0, 0.5, 1e300}) {
                        std::vector<std::uint16_t> expected;
                        for (std::size_t k = 0; k < count; ++k)
                            if (d.holds(x[k], is_complex ? y[k] : 0.0, tol))
                                expected.push_back(static_cast<std::uint16_t>(k));
                        std::vector<std::uint16_t> places(count);
                        places.resize(
                            native::find(d.test(tol), x.data(), is_complex ? y.data() : nullptr, count, places.data()));
                        ASSERT_EQ(places, expected) << d.name << ", " << kind.name << ", count " << count;
                    }
        }
}

TEST_P(Search, FindsTheSameDistance)
{
    support::Random random(6);
    constexpr double largest = std::numeric_limits<double>::max();
    for (const support::Kind& kind : support::kinds)
        for (const std::size_t count : edges()) {
            const std::vector<double> x = drawn(kind, count, random);
            for (const double target : {t, 0.0, -1e308, kind.element(random)}) {
                if (!std::isfinite(target))
                    continue;
                double expected = largest;
                for (const double number : x)
                    if (std::isfinite(number) && std::fabs(number - target) < expected)
                        expected = std::fabs(number - target);
                ASSERT_EQ(native::nearest_distance(x.data(), count, target, largest), expected)
                    << kind.name << ", count " << count;
                ASSERT_EQ(native::nearest_distance(x.data(), count, target, expected / 2), expected / 2);
            }
        }
}

} // namespace
