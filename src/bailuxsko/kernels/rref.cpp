// The worker behind `rref`: a copy of the matrix, its tolerance, Gauss-Jordan elimination (rref_elimination.cpp).
#include "bailuxsko/kernels/rref.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstddef>

namespace native {
namespace {

/// What is at most this many times the larger dimension is no pivot.
constexpr double negligible = 1e-12;

/// The largest of some sums; a NaN is compared, which raises a flag, and never the largest.
double largest_of(const double* sums, std::size_t count, double least)
{
    for (std::size_t i = 0; i < count; ++i)
        if (sums[i] > least)
            least = sums[i];
    return least;
}

/// The largest absolute column sum, four columns side by side: every sum takes its terms in ascending order.
double norm_1(const aMatrix* A)
{
    constexpr std::size_t together = 4;
    const std::size_t last = A->m_cols - std::size_t{1};
    double norm = 0.0;
    for (std::size_t j = 0; j <= last; j += together) {
        const double* column[together];
        for (std::size_t t = 0; t < together; ++t)
            column[t] = Efi::column(A, std::min(j + t, last)); // beyond the edge the last one once more
        double sums[together] = {};
        for (std::size_t i = 0; i < A->m_rows; ++i)
            for (std::size_t t = 0; t < together; ++t)
                sums[t] += std::fabs(column[t][i]);
        norm = largest_of(sums, together, norm);
    }
    return norm;
}

/// The largest absolute row sum, many rows side by side.
double norm_i(const aMatrix* A)
{
    constexpr std::size_t together = 256;
    double norm = 0.0;
    for (std::size_t i = 0; i < A->m_rows; i += together) {
        const std::size_t rows = std::min(together, A->m_rows - i);
        double sums[together] = {};
        for (std::size_t j = 0; j < A->m_cols; ++j) {
            const double* const a = Efi::column(A, j) + i;
            for (std::size_t r = 0; r < rows; ++r)
                sums[r] += std::fabs(a[r]);
        }
        norm = largest_of(sums, rows, norm);
    }
    return norm;
}

} // namespace

double min_norm_1i(const aMatrix* A)
{
    if (A->m_cols == 0)
        return 0.0;
    return std::min(norm_1(A), norm_i(A));
}

double** rref_columns(EfiCallContext* ctx, int n, int m)
{
    const auto count = static_cast<std::size_t>(n);
    const auto rows = static_cast<std::size_t>(m);
    auto** const columns = static_cast<double**>(ctx->m_arena->allocate_uncleared((count + 1) * sizeof(double*)));
    double* const elements = Efi::uncleared_doubles(ctx, count * rows + 1); // one before the first is never used
    columns[0] = nullptr;
    for (std::size_t c = 0; c < count; ++c)
        columns[c + 1] = elements + c * rows;
    return columns;
}

aMatrix* rref(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_rows < 1 || A->m_cols < 1)
        Efi::Throw(msg::invalid_dimension, -1);
    if (A->m_rv == nullptr)
        return A;
    if (A->m_iv != nullptr)
        Efi::Throw(msg::must_be_real_matrix, 1);
    if (A->m_rows > INT_MAX || A->m_cols > INT_MAX)
        Efi::Throw(msg::matrix_too_big, 1);
    const auto m = static_cast<int>(A->m_rows);
    const auto n = static_cast<int>(A->m_cols);
    double** const columns = rref_columns(ctx, n, m);
    for (std::size_t j = 0; j < A->m_cols; ++j)
        std::copy_n(Efi::column(A, j), A->m_rows, columns[j + 1] + 1);
    double tol = std::max(m, n) * negligible;
    if (m == n) // the tolerance of any other shape is absolute
        tol *= min_norm_1i(A);
    gauss_jordan(columns, m, n, tol);
    return aMatrix::mk(ctx->m_arena, A->m_rows, A->m_cols, columns[1] + 1, nullptr);
}

} // namespace native
