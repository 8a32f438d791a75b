#pragma once

#include "bailuxhost/matval.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

/// The numbers that benchmarks measure on, as plain columns for the peers and as host values for us.
namespace bench {

using Numbers = std::vector<double>;

/// The same numbers on every run, evenly spread over (-1, 1).
inline Numbers random_numbers(std::size_t count, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    Numbers numbers(count);
    for (double& x : numbers)
        x = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
    return numbers;
}

inline Qud::SharedNumbers shared(const Numbers& numbers)
{
    Qud::FreshNumbers copy = Qud::fresh_numbers(numbers.size());
    std::copy(numbers.begin(), numbers.end(), copy.get());
    return copy;
}

/// The host's matrix of numbers that stand column after column; complex where there are imaginary parts.
inline Qud::Handle host_matrix(std::size_t rows, std::size_t cols, const Numbers& re, const Numbers& im = {})
{
    return Qud::MatVal::make(static_cast<std::uint32_t>(rows), static_cast<std::uint32_t>(cols), shared(re),
                             im.empty() ? nullptr : shared(im));
}

/// Whether the real parts of a host matrix, column after column, are the peer's numbers but for rounding: the largest
/// difference against the largest number.
inline bool agree_within(double tolerance, const Qud::Handle& ours, std::span<const double> peer)
{
    const Qud::MatVal& M = *Qud::matrix_of(ours);
    if (M.count() != peer.size())
        return false;
    double difference = 0.0;
    double largest = 0.0;
    for (std::size_t j = 0, k = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i, ++k) {
            difference = std::max(difference, std::fabs(M.real(i, j) - peer[k]));
            largest = std::max(largest, std::fabs(peer[k]));
        }
    return difference <= tolerance * largest;
}

} // namespace bench
