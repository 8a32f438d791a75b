#pragma once

#include "bailuxhost/matval.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

/// The numbers that benchmarks measure on, as plain columns for the peers and as host values for us.
namespace bench {

using Numbers = std::vector<double>;
using Complexes = std::vector<std::complex<double>>;

/// The same numbers on every run, evenly spread over (-1, 1).
inline Numbers random_numbers(std::size_t count, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    Numbers numbers(count);
    for (double& x : numbers)
        x = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
    return numbers;
}

/// The upper triangle of A, n by n, below its diagonal too, times `sign`.
inline void mirror(Numbers& A, std::size_t n, double sign = 1.0)
{
    for (std::size_t j = 0; j < n; ++j)
        for (std::size_t i = 0; i < j; ++i)
            A[i * n + j] = sign * A[j * n + i];
}

/// Symmetric, random, with a diagonal that makes it positive definite and its pivots distinct.
inline Numbers positive_definite(std::size_t n, std::uint64_t seed)
{
    Numbers A = random_numbers(n * n, seed);
    mirror(A, n);
    for (std::size_t j = 0; j < n; ++j)
        A[j * n + j] += static_cast<double>(2 * n + j);
    return A;
}

/// Complex numbers from their parts, as LAPACK takes them; real ones where `im` is empty.
inline void interleave(const Numbers& re, const Numbers& im, Complexes& z)
{
    for (std::size_t k = 0; k < re.size(); ++k)
        z[k] = {re[k], im.empty() ? 0.0 : im[k]};
}

/// The parts of complex numbers.
inline void part(const Complexes& z, Numbers& re, Numbers& im)
{
    for (std::size_t k = 0; k < re.size(); ++k) {
        re[k] = z[k].real();
        im[k] = z[k].imag();
    }
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

/// Factor k of a column of nested matrices.
inline const Qud::Handle& factor(const Qud::Handle& column, std::size_t k)
{
    return *Qud::matrix_of(column)->entry(k, 0);
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
