#pragma once

#include "efiutl/records.hpp"

#include <cmath>

namespace native {

/// Division by c + i d, which neither overflows nor underflows on the way as the textbook's squares do.
/// @see R. L. Smith, Algorithm 116: Complex division, CACM 5 (1962)
struct SmithDivisor {
    bool m_by_real; // the real part is the larger one
    double m_ratio;
    double m_den;

    SmithDivisor(double c, double d) : m_by_real(std::fabs(c) >= std::fabs(d))
    {
        m_ratio = m_by_real ? d / c : c / d;
        m_den = m_by_real ? c + m_ratio * d : m_ratio * c + d;
    }
    /// (x + i y) / (c + i d)
    aComplex quotient(double x, double y) const { return m_by_real ? quotient<true>(x, y) : quotient<false>(x, y); }

    template <bool by_real>
    [[gnu::always_inline]] aComplex quotient(double x, double y) const
    {
        if constexpr (by_real)
            return {.m_re = (x + m_ratio * y) / m_den, .m_im = (y - m_ratio * x) / m_den};
        else
            return {.m_re = (m_ratio * x + y) / m_den, .m_im = (m_ratio * y - x) / m_den};
    }
};

} // namespace native
