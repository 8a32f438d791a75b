#pragma once

#include "efiutl/records.hpp"

#include <cstddef>

/// One step of the QR algorithm on a complex upper Hessenberg matrix whose subdiagonal is real.
namespace native {

/// Rows and columns m_first to m_last of the matrix, which the step turns into R * Q, and the rotations of the step:
/// rotation k turns rows, and later columns, k and k + 1, by x(k) and sine(k).
struct QrStep {
    double* m_re;
    double* m_im;
    std::size_t m_ld;
    std::size_t m_first;
    std::size_t m_last;
    double* m_x_re;
    double* m_x_im;
    double* m_sines;

    double& re(std::size_t i, std::size_t j) const { return m_re[i + j * m_ld]; }
    double& im(std::size_t i, std::size_t j) const { return m_im[i + j * m_ld]; }
};

/// re + i im becomes its product with y.
[[gnu::always_inline]] inline void multiply(double& re, double& im, aComplex y)
{
    const double product_im = y.m_re * im + y.m_im * re;
    re = y.m_re * re - y.m_im * im;
    im = product_im;
}

/// At either level.
void qr_step_baseline(const QrStep& S);
void qr_step_avx2(const QrStep& S);

} // namespace native
