#include "tests/kernels/plain/inverse_iteration.hpp"

#include "efiutl/complex_division.hpp"

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

namespace plain {
namespace {

/// A matrix in rows, both parts.
struct Rows {
    double* const* m_re;
    double* const* m_im;
};

/// a(i, j) loses l(i, k) * u(k, j) for k = 0 to before `end`, in ascending k.
void subtract_products(const Rows& A, std::size_t i, std::size_t j, std::size_t end)
{
    double re = A.m_re[i][j];
    double im = A.m_im[i][j];
    for (std::size_t k = 0; k < end; ++k) {
        re -= A.m_re[i][k] * A.m_re[k][j] - A.m_im[i][k] * A.m_im[k][j];
        im -= A.m_re[i][k] * A.m_im[k][j] + A.m_im[i][k] * A.m_re[k][j];
    }
    A.m_re[i][j] = re;
    A.m_im[i][j] = im;
}

} // namespace

int Lludcmp(double** re, double** im, std::uint32_t n, int* exchanged, double* parity)
{
    std::vector<double> scale(n);
    *parity = 1.0;
    for (std::size_t i = 0; i < n; ++i) {
        double big = 0.0;
        for (std::size_t j = 0; j < n; ++j) {
            const double m = std::sqrt(re[i][j] * re[i][j] + im[i][j] * im[i][j]);
            if (m > big)
                big = m;
        }
        if (big == 0.0)
            return 1;
        scale[i] = 1.0 / big;
    }
    for (std::size_t j = 0; j < n; ++j) {
        for (std::size_t i = 0; i < j; ++i)
            subtract_products({.m_re = re, .m_im = im}, i, j, i);
        double best = 0.0;
        std::size_t p = j;
        for (std::size_t i = j; i < n; ++i) {
            subtract_products({.m_re = re, .m_im = im}, i, j, j);
            const double t = scale[i] * std::sqrt(re[i][j] * re[i][j] + im[i][j] * im[i][j]);
            if (t >= best) {
                best = t;
                p = i;
            }
        }
        if (p != j) {
            std::swap(re[p], re[j]);
            std::swap(im[p], im[j]);
            std::swap(scale[p], scale[j]);
            *parity = -*parity;
        }
        exchanged[j] = static_cast<int>(p);
        if (re[j][j] == 0.0 && im[j][j] == 0.0)
            re[j][j] = 1e-20;
        if (j + 1 == n)
            break;
        double r_re;
        double r_im;
        Efi::cpxd(1.0, 0.0, re[j][j], im[j][j], r_re, r_im);
        for (std::size_t i = j + 1; i < n; ++i) {
            const double a_re = re[i][j];
            const double a_im = im[i][j];
            re[i][j] = a_re * r_re - a_im * r_im;
            im[i][j] = a_re * r_im + a_im * r_re;
        }
    }
    return 0;
}

int Llubksb(double* const* re, double* const* im, std::uint32_t n, const int* exchanged, double* b_re, double* b_im)
{
    std::size_t first = 7777;
    for (std::size_t i = 0; i < n; ++i) {
        const auto p = static_cast<std::size_t>(exchanged[i]);
        double s_re = b_re[p];
        double s_im = b_im[p];
        b_re[p] = b_re[i];
        b_im[p] = b_im[i];
        if (first != 7777)
            for (std::size_t j = first; j < i; ++j) {
                s_re -= re[i][j] * b_re[j] - im[i][j] * b_im[j];
                s_im -= re[i][j] * b_im[j] + im[i][j] * b_re[j];
            }
        else if (s_re != 0.0 || s_im != 0.0)
            first = i;
        b_re[i] = s_re;
        b_im[i] = s_im;
    }
    for (std::size_t i = n; i-- > 0;) {
        double s_re = b_re[i];
        double s_im = b_im[i];
        for (std::size_t j = i + 1; j < n; ++j) {
            s_re -= re[i][j] * b_re[j] - im[i][j] * b_im[j];
            s_im -= re[i][j] * b_im[j] + im[i][j] * b_re[j];
        }
        if (re[i][i] == 0.0 && im[i][i] == 0.0)
            return 2;
        Efi::cpxd(s_re, s_im, re[i][i], im[i][i], b_re[i], b_im[i]);
    }
    return 0;
}

} // namespace plain
