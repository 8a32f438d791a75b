// Gaussian elimination with partial pivoting by outer products, and substitution column by column (Golub and Van Loan,
// Matrix Computations, sections 3.1, 3.2 and 3.4): the steps of LAPACK's unblocked routines.
// Ours: multipliers are quotients and not products with a reciprocal, one rounding instead of two.
#include "bailuxsko/lapack/small_systems.hpp"

#include "bailuxsko/lapack/fortran.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace lapack {

namespace {

struct Columns {
    double* m_first;
    std::size_t m_ld;

    double* operator[](std::size_t j) const noexcept { return m_first + j * m_ld; }
};

/// The first row of the largest magnitude in a column, from row k on.
std::size_t find_pivot(const double* column, std::size_t k, std::size_t rows)
{
    std::size_t p = k;
    double largest = std::fabs(column[k]);
    for (std::size_t i = k + 1; i < rows; ++i)
        if (const double x = std::fabs(column[i]); x > largest) {
            largest = x;
            p = i;
        }
    return p;
}

void exchange_rows(const Columns& A, std::size_t cols, std::size_t k, std::size_t p)
{
    for (std::size_t j = 0; j < cols; ++j)
        std::swap(A[j][k], A[j][p]);
}

/// c(i) -= l(i) * u for one column, or two at a time, which halves the loads.
void subtract_multiple(const double* l, std::size_t count, double u, double* __restrict c)
{
    for (std::size_t i = 0; i < count; ++i)
        c[i] -= l[i] * u;
}

void subtract_multiples(const double* l, std::size_t count, double u, double* __restrict c, double v,
                        double* __restrict d)
{
    for (std::size_t i = 0; i < count; ++i) {
        c[i] -= l[i] * u;
        d[i] -= l[i] * v;
    }
}

/// L and U in the place of A. Rows are counted from 1 in ipiv and in the answer: the first step without a pivot, or 0.
int factor(const Columns& A, std::size_t rows, std::size_t cols, int* ipiv)
{
    int first_zero = 0;
    for (std::size_t k = 0; k < std::min(rows, cols); ++k) {
        double* const l = A[k] + k + 1;
        const std::size_t below = rows - k - 1;
        const std::size_t p = find_pivot(A[k], k, rows);
        ipiv[k] = static_cast<int>(p) + 1;
        if (p != k)
            exchange_rows(A, cols, k, p);
        const double pivot = A[k][k];
        if (pivot != 0.0)
            for (std::size_t i = 0; i < below; ++i)
                l[i] /= pivot;
        else if (first_zero == 0)
            first_zero = static_cast<int>(k) + 1;
        std::size_t j = k + 1;
        for (; j + 1 < cols; j += 2)
            subtract_multiples(l, below, A[j][k], A[j] + k + 1, A[j + 1][k], A[j + 1] + k + 1);
        if (j < cols)
            subtract_multiple(l, below, A[j][k], A[j] + k + 1);
    }
    return first_zero;
}

/// b becomes the solution of A x = b, of whose factors A consists.
void solve(const Columns& A, std::size_t n, const int* ipiv, double* b)
{
    for (std::size_t k = 0; k < n; ++k)
        std::swap(b[k], b[ipiv[k] - 1]);
    for (std::size_t k = 0; k < n; ++k)
        subtract_multiple(A[k] + k + 1, n - k - 1, b[k], b + k + 1);
    for (std::size_t k = n; k-- > 0;) {
        b[k] /= A[k][k];
        subtract_multiple(A[k], k, b[k], b);
    }
}

/// Arguments that make no sense are the provider's to judge.
bool is_small(int rows, int cols, int ld)
{
    return rows >= 0 && cols >= 0 && rows <= largest_small_system && cols <= largest_small_system && ld >= rows;
}

} // namespace

void dgetrf_of_any_size(const int* m, const int* n, double* A, const int* lda, int* ipiv, int* info)
{
    if (!is_small(*m, *n, *lda))
        fortran::dgetrf_(m, n, A, lda, ipiv, info);
    else
        *info = factor({A, static_cast<std::size_t>(*lda)}, static_cast<std::size_t>(*m), static_cast<std::size_t>(*n),
                       ipiv);
}

void dgesv_of_any_size(const int* n, const int* nrhs, double* A, const int* lda, int* ipiv, double* B, const int* ldb,
                       int* info)
{
    if (!is_small(*n, *n, *lda) || *nrhs < 0 || *ldb < *n) {
        fortran::dgesv_(n, nrhs, A, lda, ipiv, B, ldb, info);
        return;
    }
    const Columns a{A, static_cast<std::size_t>(*lda)};
    const Columns b{B, static_cast<std::size_t>(*ldb)};
    const auto size = static_cast<std::size_t>(*n);
    *info = factor(a, size, size, ipiv);
    if (*info != 0)
        return;
    for (std::size_t j = 0; j < static_cast<std::size_t>(*nrhs); ++j)
        solve(a, size, ipiv, b[j]);
}

} // namespace lapack
