// Balancing of a general matrix (Parlett and Reinsch, Handbook for Automatic Computation II, contribution II/11), for
// complex ones with |re| + |im| in place of the modulus.
// Ours: the radix is 2; neither what is not finite nor what is too small to be halved can keep a loop going.
#include "bailuxsko/kernels/balance.hpp"

#include "efiutl/columns.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace native {
namespace {

constexpr double radix = 2.0;
constexpr double radix_squared = radix * radix;
constexpr double worthwhile = 0.95; // what the sum of a row and a column must fall below to be worth a scaling

bool is_zero(const aMatrix* A, std::size_t i, std::size_t j)
{
    return Efi::at(A, i, j) == 0.0 && Efi::at_i(A, i, j) == 0.0;
}

double size_of(const aMatrix* A, std::size_t i, std::size_t j)
{
    return std::fabs(Efi::at(A, i, j)) + std::fabs(Efi::at_i(A, i, j));
}

/// Calls `operation` with the real array of A and, where there is one, with the imaginary one.
template <typename Operation>
void for_both_parts(aMatrix* A, Operation operation)
{
    operation(A->m_rv);
    if (A->m_iv != nullptr)
        operation(A->m_iv);
}

/// Rows and columns p and q change places, in what can hold other elements than zeros.
void exchange(aMatrix* A, const BalancedBlock& B, std::size_t p, std::size_t q)
{
    if (p == q)
        return;
    const std::size_t ld = A->m_anr;
    for_both_parts(A, [&](double* a) {
        std::swap_ranges(a + p * ld, a + p * ld + B.m_end, a + q * ld);
        for (std::size_t j = B.m_low; j < A->m_cols; ++j)
            std::swap(a[p + j * ld], a[q + j * ld]);
    });
}

bool is_row_alone(const aMatrix* A, const BalancedBlock& B, std::size_t i)
{
    for (std::size_t j = 0; j < B.m_end; ++j)
        if (j != i && !is_zero(A, i, j))
            return false;
    return true;
}

bool is_column_alone(const aMatrix* A, const BalancedBlock& B, std::size_t j)
{
    for (std::size_t i = B.m_low; i < B.m_end; ++i)
        if (i != j && !is_zero(A, i, j))
            return false;
    return true;
}

/// Moves a row that has only its diagonal element to the end of the block and takes it off; false when there is none.
bool isolate_row(aMatrix* A, BalancedBlock& B, double* record)
{
    for (std::size_t i = B.m_end; i-- > 0;) {
        if (!is_row_alone(A, B, i))
            continue;
        exchange(A, B, i, B.m_end - 1);
        record[B.m_end - 1] = static_cast<double>(i + 1);
        if (B.m_end == 1) // a last element stays as the block
            return false;
        --B.m_end;
        return true;
    }
    return false;
}

/// The same for a column and the beginning of the block.
bool isolate_column(aMatrix* A, BalancedBlock& B, double* record)
{
    for (std::size_t j = B.m_low; j < B.m_end; ++j) {
        if (!is_column_alone(A, B, j))
            continue;
        exchange(A, B, j, B.m_low);
        record[B.m_low] = static_cast<double>(j + 1);
        ++B.m_low;
        return true;
    }
    return false;
}

/// The power of 2 that brings column and row of these sizes nearest to each other; 1 where that gains too little, and
/// for infinite sizes, which nothing brings anywhere. The gain is that of the sizes themselves: the square of a power
/// takes the smallest numbers to zero, and two rows and columns that both seem to gain would be scaled for ever.
double scaling(double column, double row)
{
    if (std::isinf(column) || std::isinf(row))
        return 1.0;
    const double before = column + row;
    const double least = row / radix;
    const double bound = row * radix;
    double nearer = column;
    double f = 1.0;
    if (column < least)
        for (; nearer < least; nearer *= radix_squared)
            f *= radix;
    else
        for (; nearer >= bound; nearer /= radix_squared)
            f /= radix;
    return column * f + row / f < worthwhile * before ? f : 1.0;
}

/// Scales row i by 1/f and column i by f.
void scale(aMatrix* A, const BalancedBlock& B, std::size_t i, double f)
{
    const std::size_t ld = A->m_anr;
    const double reciprocal = 1.0 / f;
    for_both_parts(A, [&](double* a) {
        for (std::size_t j = B.m_low; j < A->m_cols; ++j)
            a[i + j * ld] *= reciprocal;
        for (std::size_t j = 0; j < B.m_end; ++j)
            a[j + i * ld] *= f;
    });
}

/// Scales each row and column of the block once where that pays; false when it paid nowhere.
bool scale_block(aMatrix* A, const BalancedBlock& B, double* record)
{
    bool changed = false;
    for (std::size_t i = B.m_low; i < B.m_end; ++i) {
        double column = 0.0;
        double row = 0.0;
        for (std::size_t j = B.m_low; j < B.m_end; ++j)
            if (j != i) {
                column += size_of(A, j, i);
                row += size_of(A, i, j);
            }
        if (column == 0.0 || row == 0.0)
            continue;
        const double f = scaling(column, row);
        if (f == 1.0)
            continue;
        scale(A, B, i, f);
        record[i] *= f;
        changed = true;
    }
    return changed;
}

} // namespace

BalancedBlock balance(aMatrix* A, double* record)
{
    BalancedBlock B{.m_low = 0, .m_end = A->m_rows};
    while (isolate_row(A, B, record)) {
    }
    if (B.m_end == 1)
        return B;
    while (isolate_column(A, B, record)) {
    }
    std::fill(record + B.m_low, record + B.m_end, 1.0);
    while (scale_block(A, B, record)) {
    }
    return B;
}

} // namespace native
