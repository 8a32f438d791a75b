#include "bailuxsko/arrays/index_sort.hpp"

#include <cstring>

namespace Efi {

namespace {

/// As memory, because a number on its way through a register of the old floating-point unit could change its bits.
void copy_word(const double* source, double* destination)
{
    std::memcpy(destination, source, sizeof(double));
}

void gather(std::size_t count, const double* source, double* destination, const std::uint32_t* p)
{
    std::size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        copy_word(source + p[i], destination + i);
        copy_word(source + p[i + 1], destination + i + 1);
        copy_word(source + p[i + 2], destination + i + 2);
        copy_word(source + p[i + 3], destination + i + 3);
    }
    for (; i < count; ++i)
        copy_word(source + p[i], destination + i);
}

} // namespace

void indexSort(std::size_t rows, std::size_t stride, std::size_t cols, const double* source, double* destination,
               const std::uint32_t* p, int d)
{
    if (rows == 0)
        return;
    for (std::size_t j = 0; j < cols; ++j) {
        if (d != 0)
            gather(rows, source + j * stride, destination + j * stride, p);
        else
            std::memcpy(destination + j * stride, source + p[j] * stride, rows * sizeof(double));
    }
}

} // namespace Efi
