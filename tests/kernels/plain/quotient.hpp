#pragma once

#include "efiutl/records.hpp"

#include <cmath>

namespace plain {

/// x / d by Smith's method.
inline aComplex quotient(aComplex x, aComplex d)
{
    if (std::fabs(d.m_re) >= std::fabs(d.m_im)) {
        const double r = d.m_im / d.m_re;
        const double den = d.m_re + r * d.m_im;
        return {.m_re = (x.m_re + r * x.m_im) / den, .m_im = (x.m_im - r * x.m_re) / den};
    }
    const double r = d.m_re / d.m_im;
    const double den = r * d.m_re + d.m_im;
    return {.m_re = (r * x.m_re + x.m_im) / den, .m_im = (r * x.m_im - x.m_re) / den};
}

} // namespace plain
