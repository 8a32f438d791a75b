#include "bailuxsko/kernels/crossprod.hpp"

#include <cmath>
#include <cstddef>

namespace native {
namespace {

aComplex element(const aMatrix* v, std::size_t k)
{
    return {.m_re = v->m_rv != nullptr ? v->m_rv[k] : 0.0, .m_im = v->m_iv != nullptr ? v->m_iv[k] : 0.0};
}

aComplex times(aComplex x, aComplex y)
{
    return {.m_re = x.m_re * y.m_re - x.m_im * y.m_im, .m_im = x.m_re * y.m_im + x.m_im * y.m_re};
}

/// Whether the imaginary parts are worth an array; those of positions without a number are set to 0 on the way.
bool needs_imaginary(const double* re, double* im)
{
    if (im[0] == 0.0 && im[1] == 0.0 && im[2] == 0.0)
        return false;
    int without_number = 0;
    for (std::size_t k = 0; k < 3; ++k)
        if (std::isnan(re[k]) && std::isnan(im[k])) {
            im[k] = 0.0;
            ++without_number;
        }
    return without_number < 3;
}

} // namespace

aMatrix* crossprod(EfiCallContext* ctx, aMatrix* a, aMatrix* b)
{
    double* const re = Efi::uncleared_doubles(ctx, 3);
    double* const im = Efi::uncleared_doubles(ctx, 3);
    for (std::size_t k = 0; k < 3; ++k) {
        const std::size_t i = (k + 1) % 3;
        const std::size_t j = (k + 2) % 3;
        const aComplex minuend = times(element(a, i), element(b, j));
        const aComplex subtrahend = times(element(a, j), element(b, i));
        re[k] = minuend.m_re - subtrahend.m_re;
        im[k] = minuend.m_im - subtrahend.m_im;
    }
    return aMatrix::mk(ctx->m_arena, 3, 1, re, needs_imaginary(re, im) ? im : nullptr);
}

} // namespace native
