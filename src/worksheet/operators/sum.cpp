#include "worksheet/operators/sum.hpp"

#include "worksheet/operators/elementwise.hpp"

namespace worksheet {

namespace {

struct Add {
    static constexpr bool always_imaginary = false;
    static Qud::Dim unit(const Qud::Dim& u, const Qud::Dim& v) { return Qud::Dim::Eq(u, v, -1); }
    // the zero imaginary part of a real operand, of whatever sign, takes no part
    static aComplex of(aComplex x, aComplex y)
    {
        const double im = x.m_im == 0.0 ? (y.m_im == 0.0 ? 0.0 : y.m_im) : (y.m_im == 0.0 ? x.m_im : x.m_im + y.m_im);
        return {x.m_re + y.m_re, im};
    }
};

struct Subtract {
    static constexpr bool always_imaginary = false;
    static Qud::Dim unit(const Qud::Dim& u, const Qud::Dim& v) { return Qud::Dim::Eq(u, v, -1); }
    static aComplex of(aComplex x, aComplex y)
    {
        const double im = x.m_im == 0.0 ? (y.m_im == 0.0 ? 0.0 : -y.m_im) : (y.m_im == 0.0 ? x.m_im : x.m_im - y.m_im);
        return {x.m_re - y.m_re, im};
    }
};

struct Negate {
    static constexpr bool always_imaginary = false;
    static Qud::Dim unit(const Qud::Dim& u) { return u; }
    static aComplex of(aComplex x) { return {-x.m_re, x.m_im == 0.0 ? 0.0 : -x.m_im}; }
};

} // namespace

Qud::Handle sum(const Qud::Handle& a, const Qud::Handle& b)
{
    return map(Add{}, a, b);
}

Qud::Handle difference(const Qud::Handle& a, const Qud::Handle& b)
{
    return map(Subtract{}, a, b);
}

Qud::Handle negation(const Qud::Handle& a)
{
    return map(Negate{}, a, 1);
}

} // namespace worksheet
