#include "tests/kernels/plain/norms.hpp"

#include "efiutl/columns.hpp"
#include "tests/kernels/plain/modulus.hpp"

#include <cmath>
#include <cstddef>

namespace plain {
namespace {

double magnitude(const aMatrix* A, std::size_t i, std::size_t j)
{
    return A->m_iv == nullptr ? std::fabs(Efi::at(A, i, j)) : modulus(Efi::at(A, i, j), Efi::at_i(A, i, j));
}

} // namespace

double norm1(const aMatrix* A)
{
    double largest = 0.0;
    for (std::size_t j = 0; j < A->m_rows; ++j) {
        double sum = 0.0;
        for (std::size_t i = 0; i < A->m_rows; ++i)
            sum += magnitude(A, i, j);
        if (sum > largest)
            largest = sum;
    }
    return largest;
}

double normi(const aMatrix* A)
{
    double largest = 0.0;
    for (std::size_t i = 0; i < A->m_rows; ++i) {
        double sum = 0.0;
        for (std::size_t j = 0; j < A->m_rows; ++j)
            sum += magnitude(A, i, j);
        if (sum > largest)
            largest = sum;
    }
    return largest;
}

double norme(const aMatrix* A)
{
    double total = 0.0;
    for (std::size_t j = 0; j < A->m_rows; ++j) {
        double sum = 0.0;
        for (std::size_t i = 0; i < A->m_rows; ++i) {
            const double x = Efi::at(A, i, j);
            const double y = Efi::at_i(A, i, j);
            sum += A->m_iv == nullptr ? x * x : x * x + y * y;
        }
        total += sum;
    }
    return std::sqrt(total);
}

} // namespace plain
