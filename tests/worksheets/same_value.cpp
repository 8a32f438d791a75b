#include "same_value.hpp"

#include "bailuxhost/matval.hpp"

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>

namespace {

bool same_bits(double x, double y)
{
    return (std::isnan(x) && std::isnan(y)) || std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
}

using Complex = std::complex<double>;

bool is_finite(Complex z)
{
    return std::isfinite(z.real()) && std::isfinite(z.imag());
}

/// How far apart two numbers may be; nothing: to the bit.
using Allowed = std::optional<double>;

bool same_number(Complex x, Complex y, Allowed allowed)
{
    if (!allowed || !is_finite(x) || !is_finite(y))
        return same_bits(x.real(), y.real()) && same_bits(x.imag(), y.imag());
    return std::abs(x - y) <= *allowed;
}

Complex number_at(const Qud::MatVal& M, std::size_t i, std::size_t j)
{
    return {M.real(i, j), M.imag(i, j)};
}

/// Calls visit(i, j) for every element; false as soon as one call gives false.
template <class Visit>
bool all_elements(const Qud::MatVal& M, Visit visit)
{
    for (std::size_t j = 0; j < M.Cols(); ++j)
        for (std::size_t i = 0; i < M.Rows(); ++i)
            if (!visit(i, j))
                return false;
    return true;
}

Allowed allowed_for(double largest, std::optional<double> tolerance)
{
    if (!tolerance)
        return std::nullopt;
    return *tolerance * (largest == 0.0 ? 1.0 : largest);
}

double largest_number(const Qud::MatVal& M)
{
    double largest = 0.0;
    all_elements(M, [&](std::size_t i, std::size_t j) {
        if (const Complex z = number_at(M, i, j); M.entry(i, j) == nullptr && is_finite(z))
            largest = std::max(largest, std::abs(z));
        return true;
    });
    return largest;
}

bool same_matrix(const Qud::MatVal& M, const Qud::MatVal& expected, std::optional<double> tolerance)
{
    if (M.Rows() != expected.Rows() || M.Cols() != expected.Cols() || M.HasImag() != expected.HasImag())
        return false;
    const Allowed allowed = allowed_for(largest_number(expected), tolerance);
    return all_elements(M, [&](std::size_t i, std::size_t j) {
        const Qud::Handle* const a = M.entry(i, j);
        const Qud::Handle* const b = expected.entry(i, j);
        if (a != nullptr || b != nullptr)
            return a != nullptr && b != nullptr && same_value(*a, *b, tolerance);
        return M.unit(i, j) == expected.unit(i, j) &&
               same_number(number_at(M, i, j), number_at(expected, i, j), allowed);
    });
}

} // namespace

bool same_value(const Qud::Handle& value, const Qud::Handle& expected, std::optional<double> tolerance)
{
    if (value->kind() != expected->kind())
        return false;
    if (const Qud::NumVal* const x = Qud::as_number(value)) {
        const Qud::NumVal& y = *Qud::as_number(expected);
        const Complex wanted{y.re(), y.im()};
        return x->m_dim == y.m_dim && same_number({x->re(), x->im()}, wanted, allowed_for(std::abs(wanted), tolerance));
    }
    if (const Qud::MatVal* const M = Qud::matrix_of(value))
        return same_matrix(*M, *Qud::matrix_of(expected), tolerance);
    if (const Qud::StrVal* const text = Qud::as_text(value))
        return text->text() == Qud::as_text(expected)->text();
    return value == expected;
}
