// Many lanes side by side find the value of the one-after-another search, which waits for every comparison. Only among
// zeros can the two differ, in the sign: then the first zero is looked for.
#include "bailuxsko/arrays/extremes.hpp"

#include <cmath>

namespace Efi {

namespace {

/// Two doubles side by side; the choice between them by a comparison is one instruction, which takes the second operand
/// when they are equal or one is a NaN.
using Two [[gnu::vector_size(16), gnu::aligned(8), gnu::may_alias]] = double;
constexpr std::size_t pairs = 8;
constexpr std::size_t lanes = 2 * pairs;

struct Smaller {
    static Two better(Two x, Two best) { return x < best ? x : best; }
    static double better(double x, double best) { return x < best ? x : best; }
};
struct Larger {
    static Two better(Two x, Two best) { return x > best ? x : best; }
    static double better(double x, double best) { return x > best ? x : best; }
};

template <class Wins>
double extreme_of_run(const double* a, std::size_t count, double best)
{
    std::size_t i = 0;
    if (count >= 2 * lanes) {
        Two lane[pairs];
        for (Two& l : lane)
            l = Two{best, best};
        for (; i + lanes <= count; i += lanes)
            for (std::size_t l = 0; l < pairs; ++l)
                lane[l] = Wins::better(reinterpret_cast<const Two*>(a + i)[l], lane[l]);
        for (const Two& l : lane)
            best = Wins::better(l[1], Wins::better(l[0], best));
    }
    for (; i < count; ++i)
        best = Wins::better(a[i], best);
    return best;
}

double first_zero(const double* a, std::size_t cols, std::size_t rows, std::size_t stride)
{
    for (std::size_t j = 0; j < cols; ++j)
        for (std::size_t i = 0; i < rows; ++i)
            if (a[j * stride + i] == 0.0)
                return a[j * stride + i];
    return 0.0;
}

template <class Wins>
double extreme(const double* a, std::size_t cols, std::size_t rows, std::size_t stride)
{
    const bool starts_at_zero = std::isnan(*a);
    double best = starts_at_zero ? 0.0 : *a;
    if (rows == stride)
        best = extreme_of_run<Wins>(a, rows * cols, best);
    else
        for (std::size_t j = 0; j < cols; ++j)
            best = extreme_of_run<Wins>(a + j * stride, rows, best);
    if (best != 0.0)
        return best;
    return starts_at_zero ? 0.0 : first_zero(a, cols, rows, stride);
}

} // namespace

double vecmin(const double* a, std::size_t offset, std::size_t cols, std::size_t rows, std::size_t stride)
{
    return extreme<Smaller>(a + offset, cols, rows, stride);
}

double vecmax(const double* a, std::size_t offset, std::size_t cols, std::size_t rows, std::size_t stride)
{
    return extreme<Larger>(a + offset, cols, rows, stride);
}

} // namespace Efi
