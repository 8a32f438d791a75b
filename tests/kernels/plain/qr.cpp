#include "tests/kernels/plain/qr.hpp"

#include "efiutl/columns.hpp"

#include <cmath>
#include <utility>

namespace plain {
namespace {

using Efi::at;

void rotate_rows(double c, double s, std::size_t p, std::size_t q, aMatrix* M)
{
    for (std::size_t j = 0; j < M->m_cols; ++j) {
        const double u = at(M, p, j);
        const double w = at(M, q, j);
        at(M, p, j) = u * c + w * s;
        at(M, q, j) = w * c - u * s;
    }
}

double norm(const aMatrix* M, std::size_t j)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < M->m_rows; ++i)
        sum = sum + at(M, i, j) * at(M, i, j);
    return std::sqrt(sum);
}

} // namespace

void qr_givens(aMatrix* Q, aMatrix* R)
{
    const std::size_t m = R->m_rows;
    const std::size_t n = R->m_cols;
    for (std::size_t i = 0; i < m; ++i)
        for (std::size_t j = 0; j < m; ++j)
            at(Q, i, j) = i == j ? 1.0 : 0.0;
    std::size_t r = 0;
    std::size_t k = m;
    for (std::size_t j = 0; j < n && r < m; ++j) {
        const double nrm = norm(R, j);
        if (nrm == 0.0)
            continue;
        const double tol =
            static_cast<double>(j + 1) * (nrm * 2.220446049250313e-16) / std::sqrt(static_cast<double>(k));
        const auto negligible = [tol](double x) { return -tol < x && x < tol; };
        bool pivot = !negligible(at(R, r, j));
        for (std::size_t i = m - 1; i > r; --i) {
            const double a = at(R, i - 1, j);
            const double b = at(R, i, j);
            if (negligible(b))
                continue;
            pivot = true;
            double c;
            double s;
            if (b == 0.0) {
                c = 1.0;
                s = 0.0;
            } else if (std::fabs(b) > std::fabs(a)) {
                const double t = a / b;
                s = 1.0 / std::sqrt(t * t + 1.0);
                c = t * s;
            } else {
                const double t = b / a;
                c = 1.0 / std::sqrt(t * t + 1.0);
                s = t * c;
            }
            rotate_rows(c, s, i - 1, i, R);
            rotate_rows(c, s, i - 1, i, Q);
        }
        if (pivot) {
            --k;
            ++r;
        }
        for (std::size_t i = r; i < m; ++i)
            at(R, i, j) = 0.0;
    }
    for (std::size_t i = 0; i < m; ++i)
        for (std::size_t j = i + 1; j < m; ++j)
            std::swap(at(Q, i, j), at(Q, j, i));
}

} // namespace plain
