// Searches in an array of doubles. 64 numbers at a time are tested without a branch, and their answers packed into one
// word: where hits are rare a search runs at the memory's speed.
#include "bailuxsko/kernels/search.hpp"

#include "bailuxsko/kernels/levels.hpp"

#include <algorithm>
#include <bit>
#include <cstring>

namespace native {
namespace {

using number_tests::Four;
using number_tests::FourWords;

constexpr std::size_t block = 64;

struct Numbers {
    const double* re;
    const double* im;
    std::size_t count;
};

[[gnu::always_inline]] inline Four four_at(const double* numbers)
{
    Four four;
    std::memcpy(&four, numbers, sizeof four);
    return four;
}

/// Bit k says whether the test holds for number `first` + k of 64.
template <class Test>
[[gnu::always_inline]] inline std::uint64_t answers(const Test& test, const Numbers& numbers, std::size_t first)
{
    FourWords bits = {1, 2, 4, 8};
    FourWords held{};
    for (std::size_t k = first; k < first + block; k += 4) {
        if constexpr (Test::reads_imaginary)
            held |= bits & test(four_at(numbers.re + k), four_at(numbers.im + k));
        else
            held |= bits & test(four_at(numbers.re + k));
        bits <<= 4;
    }
    return static_cast<std::uint64_t>(held[0] | held[1] | held[2] | held[3]);
}

template <class Test>
[[gnu::always_inline]] inline std::uint64_t answers_of_rest(const Test& test, const Numbers& numbers, std::size_t first)
{
    std::uint64_t held = 0;
    for (std::size_t k = first; k < numbers.count; ++k) {
        if constexpr (Test::reads_imaginary)
            held |= std::uint64_t{test(numbers.re[k], numbers.im[k]) ? 1U : 0U} << (k - first);
        else
            held |= std::uint64_t{test(numbers.re[k]) ? 1U : 0U} << (k - first);
    }
    return held;
}

template <class Test>
[[gnu::always_inline]] inline std::size_t find_places(const Test& test, const Numbers& numbers, std::uint16_t* places)
{
    std::size_t found = 0;
    for (std::size_t first = 0; first < numbers.count; first += block) {
        const bool is_whole = numbers.count - first >= block;
        for (std::uint64_t held = is_whole ? answers(test, numbers, first) : answers_of_rest(test, numbers, first);
             held != 0; held &= held - 1)
            places[found++] = static_cast<std::uint16_t>(first + static_cast<std::size_t>(std::countr_zero(held)));
    }
    return found;
}

template <class Test>
std::size_t find_baseline(const Test& test, const Numbers& numbers, std::uint16_t* places)
{
    return find_places(test, numbers, places);
}

[[gnu::always_inline]] inline double smallest_distance(const Numbers& numbers, double target, double best)
{
    constexpr std::size_t chains = 4;
    Four least[chains];
    std::fill_n(least, chains, Four{best, best, best, best});
    std::size_t k = 0;
    for (; k + 4 * chains <= numbers.count; k += 4 * chains)
        for (std::size_t chain = 0; chain < chains; ++chain) {
            // A NaN is not smaller than what is there, and an infinity is not smaller than anything finite.
            const Four distance = number_tests::magnitude(four_at(numbers.re + k + 4 * chain) - target);
            least[chain] = distance < least[chain] ? distance : least[chain];
        }
    for (const Four& four : least)
        best = std::min({best, four[0], four[1], four[2], four[3]});
    for (; k < numbers.count; ++k) {
        const double distance = number_tests::magnitude(numbers.re[k] - target);
        best = distance < best ? distance : best;
    }
    return best;
}

double distance_baseline(const Numbers& numbers, double target, double best)
{
    return smallest_distance(numbers, target, best);
}

#if defined(__x86_64__)
template <class Test>
[[gnu::target("avx2")]] std::size_t find_avx2(const Test& test, const Numbers& numbers, std::uint16_t* places)
{
    return find_places(test, numbers, places);
}
[[gnu::target("avx2")]] double distance_avx2(const Numbers& numbers, double target, double best)
{
    return smallest_distance(numbers, target, best);
}
#else
template <class Test>
constexpr auto find_avx2 = find_baseline<Test>;
constexpr auto distance_avx2 = distance_baseline;
#endif

template <class Test>
std::size_t find_with(const Test& test, const Numbers& numbers, std::uint16_t* places)
{
    if constexpr (Test::reads_imaginary) {
        if (numbers.im == nullptr)
            return find_with(test.of_reals(), numbers, places);
    }
    return at_level(find_baseline<Test>, find_avx2<Test>)(test, numbers, places);
}

} // namespace

std::size_t find(const NumberTest& test, const double* re, const double* im, std::size_t count,
                 std::uint16_t* places) noexcept
{
    const Numbers numbers{.re = re, .im = im, .count = count};
    return std::visit([&](const auto& t) { return find_with(t, numbers, places); }, test);
}

double nearest_distance(const double* numbers, std::size_t count, double target, double best) noexcept
{
    return at_level(distance_baseline, distance_avx2)({.re = numbers, .im = nullptr, .count = count}, target, best);
}

} // namespace native
