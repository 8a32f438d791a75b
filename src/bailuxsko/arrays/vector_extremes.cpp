#include "bailuxsko/arrays/extremes.hpp"

#include <cmath>

namespace Efi {

namespace {

template <class Wins>
double extreme(const double* a, std::size_t cols, std::size_t rows, std::size_t stride, Wins wins)
{
    double best = std::isnan(*a) ? 0.0 : *a;
    for (std::size_t j = 0; j < cols; ++j)
        for (std::size_t i = 0; i < rows; ++i)
            if (wins(a[j * stride + i], best))
                best = a[j * stride + i];
    return best;
}

} // namespace

double vecmin(const double* a, std::size_t offset, std::size_t cols, std::size_t rows, std::size_t stride)
{
    return extreme(a + offset, cols, rows, stride, [](double x, double best) { return x < best; });
}

double vecmax(const double* a, std::size_t offset, std::size_t cols, std::size_t rows, std::size_t stride)
{
    return extreme(a + offset, cols, rows, stride, [](double x, double best) { return x > best; });
}

} // namespace Efi
