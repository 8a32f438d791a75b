#include "tests/kernels/plain/rref.hpp"

#include "efiutl/columns.hpp"

#include <cmath>
#include <utility>

namespace plain {

using Efi::at;

void gauss_jordan(aMatrix* A, double tol)
{
    const std::size_t m = A->m_rows;
    const std::size_t n = A->m_cols;
    for (std::size_t p = 0; p < m; ++p) {
        double big = 0.0;
        std::size_t q = p;
        std::size_t c = p;
        bool found = false;
        if (tol >= 0.0)
            for (; c < n; ++c) {
                for (std::size_t r = p; r < m; ++r)
                    if (std::fabs(at(A, r, c)) > big) {
                        big = std::fabs(at(A, r, c));
                        q = r;
                    }
                found = big > tol;
                if (found)
                    break;
            }
        if (!found)
            continue;
        if (q != p)
            for (std::size_t j = 0; j < n; ++j)
                std::swap(at(A, p, j), at(A, q, j));
        const double f = 1.0 / at(A, p, c);
        at(A, p, c) = 1.0;
        for (std::size_t j = c + 1; j < n; ++j)
            at(A, p, j) = at(A, p, j) * f;
        for (std::size_t r = 0; r < m; ++r) {
            if (r == p)
                continue;
            const double g = at(A, r, c);
            at(A, r, c) = 0.0;
            for (std::size_t j = c + 1; j < n; ++j)
                at(A, r, j) = at(A, r, j) - g * at(A, p, j);
        }
    }
}

double min_norm_1i(const aMatrix* A)
{
    double columns = 0.0;
    for (std::size_t j = 0; j < A->m_cols; ++j) {
        double sum = 0.0;
        for (std::size_t i = 0; i < A->m_rows; ++i)
            sum = sum + std::fabs(at(A, i, j));
        if (sum > columns)
            columns = sum;
    }
    double rows = 0.0;
    for (std::size_t i = 0; i < A->m_rows; ++i) {
        double sum = 0.0;
        for (std::size_t j = 0; j < A->m_cols; ++j)
            sum = sum + std::fabs(at(A, i, j));
        if (sum > rows)
            rows = sum;
    }
    return rows < columns ? rows : columns;
}

} // namespace plain
