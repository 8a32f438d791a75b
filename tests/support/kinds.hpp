#pragma once

#include "tests/support/matrix.hpp"

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

/// Named kinds of matrices, on which a kernel must give the bits of its plain form.
namespace support {

using Random = std::mt19937_64;

inline double uniform(Random& random)
{
    return std::uniform_real_distribution<double>(-1.0, 1.0)(random);
}

inline double small_integer(Random& random)
{
    return std::uniform_int_distribution<int>(-2, 2)(random);
}

inline double scaled_by_power_of_2(Random& random, int least, int span)
{
    return std::ldexp(uniform(random), least + static_cast<int>(random() % static_cast<unsigned>(span)));
}

/// Each draws one element.
struct Kind {
    const char* name;
    double (*element)(Random&);
};
inline const Kind kinds[] = {
    {.name = "uniform", .element = uniform},
    {.name = "small integers, with ties and exact zeros", .element = small_integer},
    {.name = "signed zeros",
     .element =
         [](Random& random) {
             const double zero = random() % 2 == 0 ? 0.0 : -0.0;
             return random() % 3 == 0 ? uniform(random) : zero;
         }},
    {.name = "far apart", .element = [](Random& random) { return scaled_by_power_of_2(random, -700, 1400); }},
    {.name = "far apart, with overflow",
     .element = [](Random& random) { return scaled_by_power_of_2(random, -1020, 2040); }},
    {.name = "tiny, with underflow", .element = [](Random& random) { return scaled_by_power_of_2(random, -1073, 74); }},
    {.name = "an infinity here and there",
     .element =
         [](Random& random) {
             return random() % 37 == 0 ? std::numeric_limits<double>::infinity() : small_integer(random);
         }},
    {.name = "a NaN here and there",
     .element =
         [](Random& random) {
             return random() % 61 == 0 ? std::numeric_limits<double>::quiet_NaN() : uniform(random);
         }},
};

/// m by n real elements, drawn column by column.
inline Matrix drawn(double (*element)(Random&), std::uint32_t m, std::uint32_t n, std::uint32_t ld, Random& random)
{
    Matrix A(m, n, ld);
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < m; ++i)
            A.re(i, j) = element(random);
    return A;
}

/// n by n elements of a kind.
inline Matrix draw(const Kind& kind, std::uint32_t n, std::uint32_t ld, bool with_imaginary, Random& random)
{
    Matrix A(n, n, ld);
    if (with_imaginary)
        A.make_complex();
    for (std::uint32_t j = 0; j < n; ++j)
        for (std::uint32_t i = 0; i < n; ++i) {
            A.re(i, j) = kind.element(random);
            if (with_imaginary)
                A.im(i, j) = kind.element(random);
        }
    return A;
}

} // namespace support
