#pragma once

#include "tests/support/gallery.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <span>

/// The matrices of the gallery as tables: a property holds for all of a table, at all sizes.
namespace gen {

/// One kind of matrices; n by n, or its leading m by n part from a square one of the larger side.
struct Kind {
    const char* name;
    Matrix (*make)(std::uint32_t n, Random& random);
    bool singular = false;
    bool nearly_defective = false; ///< some eigenvectors nearly agree
    bool badly_scaled = false;
    bool large = false; ///< also of the sizes above `usual_largest`
};

namespace detail {

inline double down(std::size_t i) // rows or columns 2^40 apart, neighbours not alike
{
    return std::ldexp(1.0, -static_cast<int>((i * 17) % 41));
}
inline double same(std::size_t)
{
    return 1.0;
}
inline Matrix random_complex(std::uint32_t n, Random& random)
{
    Matrix A = gen::random(n, n, random);
    A.make_complex();
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i)
            A.im(i, j) = uniform(random);
    return A;
}

} // namespace detail

using Kinds = std::span<const Kind>;

inline constexpr std::uint32_t usual_largest = 129;

/// Calls check(kind, n, A) for every kind of every table at every size up to the largest; only kinds that are also made
/// large go beyond the usual one.
template <class Check>
void for_all(std::initializer_list<Kinds> tables, std::uint32_t largest, Check check)
{
    for (const Kinds& kinds : tables)
        for (const Kind& kind : kinds)
            for (const std::uint32_t n : sizes)
                if (n <= (kind.large ? largest : std::min(largest, usual_largest))) {
                    Random random(n);
                    check(kind, n, kind.make(n, random));
                }
}

inline const Kind real_kinds[] = {
    {.name = "random", .make = [](std::uint32_t n, Random& r) { return random(n, n, r); }, .large = true},
    {.name = "small whole numbers",
     .make =
         [](std::uint32_t n, Random& r) {
             return from(n, n, [&](std::size_t i, std::size_t j) {
                 return std::trunc(4.0 * uniform(r)) + (i == j ? 8.0 : 0.0);
             });
         }},
    {.name = "graded",
     .make = [](std::uint32_t n, Random& r) { return with_singular_values(n, n, graded_values(n), false, r); },
     .large = true},
    {.name = "clustered",
     .make = [](std::uint32_t n, Random& r) { return with_singular_values(n, n, clustered_values(n), false, r); }},
    {.name = "rank-deficient",
     .make = [](std::uint32_t n, Random& r) { return with_singular_values(n, n, deficient_values(n), false, r); },
     .singular = true,
     .large = true},
    {.name = "Hilbert", .make = [](std::uint32_t n, Random&) { return hilbert(n); }},
    {.name = "Frank", .make = [](std::uint32_t n, Random&) { return frank(n); }, .nearly_defective = true},
    {.name = "Pascal", .make = [](std::uint32_t n, Random&) { return pascal(n); }},
    {.name = "Vandermonde", .make = [](std::uint32_t n, Random&) { return vandermonde(n); }, .nearly_defective = true},
    {.name = "Wilkinson", .make = [](std::uint32_t n, Random&) { return n == 1 ? Matrix{{1}} : wilkinson(n); }},
    {.name = "Kahan", .make = [](std::uint32_t n, Random&) { return kahan(n); }},
    {.name = "badly scaled rows",
     .make = [](std::uint32_t n, Random& r) { return scaled(random(n, n, r), detail::down, detail::same); },
     .badly_scaled = true},
    {.name = "badly scaled columns",
     .make = [](std::uint32_t n, Random& r) { return scaled(random(n, n, r), detail::same, detail::down); },
     .badly_scaled = true},
    {.name = "random, times 1e150", .make = [](std::uint32_t n, Random& r) { return scaled(random(n, n, r), 1e150); }},
    {.name = "random, times 1e-150",
     .make = [](std::uint32_t n, Random& r) { return scaled(random(n, n, r), 1e-150); }},
};

inline const Kind complex_kinds[] = {
    {.name = "complex random", .make = detail::random_complex},
    {.name = "complex graded",
     .make = [](std::uint32_t n, Random& r) { return with_singular_values(n, n, graded_values(n), true, r); }},
    {.name = "complex clustered",
     .make = [](std::uint32_t n, Random& r) { return with_singular_values(n, n, clustered_values(n), true, r); }},
    {.name = "complex rank-deficient",
     .make = [](std::uint32_t n, Random& r) { return with_singular_values(n, n, deficient_values(n), true, r); },
     .singular = true},
    {.name = "Hilbert with phases", .make = [](std::uint32_t n, Random&) { return with_phases(hilbert(n)); }},
    {.name = "Frank with phases",
     .make = [](std::uint32_t n, Random&) { return with_phases(frank(n)); },
     .nearly_defective = true},
    {.name = "Vandermonde with phases",
     .make = [](std::uint32_t n, Random&) { return with_phases(vandermonde(n)); },
     .nearly_defective = true},
    {.name = "complex, badly scaled rows",
     .make = [](std::uint32_t n,
                Random& r) { return scaled(detail::random_complex(n, r), detail::down, detail::same); },
     .badly_scaled = true},
    {.name = "complex, badly scaled columns",
     .make = [](std::uint32_t n,
                Random& r) { return scaled(detail::random_complex(n, r), detail::same, detail::down); },
     .badly_scaled = true},
    {.name = "complex, times 1e150",
     .make = [](std::uint32_t n, Random& r) { return scaled(detail::random_complex(n, r), 1e150); }},
    {.name = "complex, times 1e-150",
     .make = [](std::uint32_t n, Random& r) { return scaled(detail::random_complex(n, r), 1e-150); }},
};

/// Symmetric and Hermitian, with positive and negative eigenvalues.
inline const Kind hermitian_kinds[] = {
    {.name = "symmetric, graded",
     .make = [](std::uint32_t n, Random& r) { return with_eigenvalues(graded_values(n), false, r); }},
    {.name = "Hermitian, graded",
     .make = [](std::uint32_t n, Random& r) { return with_eigenvalues(graded_values(n), true, r); }},
    {.name = "Hermitian, clustered",
     .make = [](std::uint32_t n, Random& r) { return with_eigenvalues(clustered_values(n), true, r); }},
    {.name = "Hermitian, rank-deficient",
     .make = [](std::uint32_t n, Random& r) { return with_eigenvalues(deficient_values(n), true, r); },
     .singular = true},
    {.name = "Wilkinson", .make = [](std::uint32_t n, Random&) { return wilkinson(n); }},
    {.name = "Hilbert", .make = [](std::uint32_t n, Random&) { return hilbert(n); }},
    {.name = "Lehmer", .make = [](std::uint32_t n, Random&) { return lehmer(n); }},
};

/// Positive definite so clearly that rounding does not change it.
inline const Kind positive_definite_kinds[] = {
    {.name = "symmetric, graded",
     .make = [](std::uint32_t n, Random& r) { return with_eigenvalues(graded_values(n), false, r); }},
    {.name = "symmetric, clustered",
     .make = [](std::uint32_t n, Random& r) { return with_eigenvalues(clustered_values(n), false, r); }},
    {.name = "Lehmer", .make = [](std::uint32_t n, Random&) { return lehmer(n); }, .large = true},
    {.name = "Lehmer, badly scaled",
     .make = [](std::uint32_t n, Random&) { return scaled(lehmer(n), detail::down, detail::down); }},
    {.name = "Lehmer, times 1e150", .make = [](std::uint32_t n, Random&) { return scaled(lehmer(n), 1e150); }},
    {.name = "Lehmer, times 1e-150", .make = [](std::uint32_t n, Random&) { return scaled(lehmer(n), 1e-150); }},
    {.name = "Hilbert, at most 10 rows", .make = [](std::uint32_t n, Random&) { return hilbert(std::min(n, 10U)); }},
    {.name = "Pascal, at most 10 rows", .make = [](std::uint32_t n, Random&) { return pascal(std::min(n, 10U)); }},
};

} // namespace gen
