#pragma once

#include <cmath>
#include <cstddef>
#include <limits>

/// What decides a sweep of rotations up a column, the same for rows in records and in strips.
namespace native {

struct Rotation {
    double c;
    double s;
};

/// The rotation of a row pair whose elements in the column are a above b, which gives the column sqrt(a^2 + b^2) with
/// the sign of the larger one, above 0.
[[gnu::always_inline]] inline Rotation rotation(double a, double b)
{
    if (b == 0.0)
        return {.c = 1.0, .s = 0.0};
    const bool below_is_larger = std::fabs(b) > std::fabs(a);
    const double t = (below_is_larger ? a : b) / (below_is_larger ? b : a);
    const double large = 1.0 / std::sqrt(t * t + 1.0);
    const double small = t * large;
    return {.c = below_is_larger ? small : large, .s = below_is_larger ? large : small};
}

/// Below what an element of a column counts as zero.
class Tolerance {
public:
    /// @param j1    the column, counted from 1
    /// @param norm  of all of the column
    /// @param rows  from the pivot row on
    Tolerance(std::size_t j1, double norm, std::size_t rows)
        : m_tolerance(static_cast<double>(j1) * (norm * std::numeric_limits<double>::epsilon()) /
                      std::sqrt(static_cast<double>(rows)))
    {
    }
    [[gnu::always_inline]] bool negligible(double x) const { return -m_tolerance < x && x < m_tolerance; }

private:
    double m_tolerance;
};

} // namespace native
