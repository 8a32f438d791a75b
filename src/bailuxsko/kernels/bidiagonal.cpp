#include "bailuxsko/kernels/bidiagonal.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace native {
namespace {

using Efi::at;

constexpr double eps = std::numeric_limits<double>::epsilon();

/// The high half of the element is all ones: the slot holds no number.
bool is_nested(double x)
{
    return std::bit_cast<std::uint64_t>(x) >> 32 == 0xFFFFFFFFU;
}

double opposite_root(double f, double s)
{
    const double root = std::sqrt(s);
    return f < 0.0 ? root : -root;
}

/// Reflects column i onto its diagonal element, which is returned.
double reflect_column(aMatrix* A, std::size_t i, NestedElements nested)
{
    const std::size_t m = A->m_rows;
    double scale = 0.0;
    for (std::size_t k = i; k < m; ++k) {
        if (nested == NestedElements::refused && is_nested(at(A, k, i)))
            Efi::Throw(msg::may_not_be_nested, -1);
        scale += std::fabs(at(A, k, i));
    }
    if (scale == 0.0)
        return 0.0;
    double s = 0.0;
    for (std::size_t k = i; k < m; ++k) {
        at(A, k, i) /= scale;
        s += at(A, k, i) * at(A, k, i);
    }
    double f = at(A, i, i);
    const double g = opposite_root(f, s);
    const double h = f * g - s;
    at(A, i, i) = f - g;
    for (std::size_t j = i + 1; j < A->m_cols; ++j) {
        s = 0.0;
        for (std::size_t k = i; k < m; ++k)
            s += at(A, k, i) * at(A, k, j);
        f = s / h;
        for (std::size_t k = i; k < m; ++k)
            at(A, k, j) += f * at(A, k, i);
    }
    for (std::size_t k = i; k < m; ++k)
        at(A, k, i) *= scale;
    return scale * g;
}

/// Reflects row i, from column i + 1 on, onto its superdiagonal element, which is returned. Uses e from there on.
double reflect_row(aMatrix* A, std::size_t i, double* e)
{
    const std::size_t n = A->m_cols;
    const std::size_t l = i + 1;
    double scale = 0.0;
    for (std::size_t k = l; k < n; ++k)
        scale += std::fabs(at(A, i, k));
    if (scale == 0.0)
        return 0.0;
    double s = 0.0;
    for (std::size_t k = l; k < n; ++k) {
        at(A, i, k) /= scale;
        s += at(A, i, k) * at(A, i, k);
    }
    const double f = at(A, i, l);
    const double g = opposite_root(f, s);
    const double h = f * g - s;
    at(A, i, l) = f - g;
    for (std::size_t k = l; k < n; ++k)
        e[k] = at(A, i, k) / h;
    for (std::size_t j = l; j < A->m_rows; ++j) {
        s = 0.0;
        for (std::size_t k = l; k < n; ++k)
            s += at(A, j, k) * at(A, i, k);
        for (std::size_t k = l; k < n; ++k)
            at(A, j, k) += s * e[k];
    }
    for (std::size_t k = l; k < n; ++k)
        at(A, i, k) *= scale;
    return scale * g;
}

} // namespace

Bidiagonal bidiagonalise(EfiCallContext*, aMatrix* A, double* w, double* e, NestedElements nested)
{
    const std::size_t n = A->m_cols;
    double largest = 0.0;
    double above = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        e[i] = above;
        w[i] = reflect_column(A, i, nested);
        above = i + 1 < n ? reflect_row(A, i, e) : 0.0;
        const double x = std::fabs(w[i]) + std::fabs(e[i]);
        if (x > largest)
            largest = x;
    }
    return {.m_n = n, .m_w = w, .m_e = e, .m_negligible = eps * largest};
}

void accumulate_V(const aMatrix* A, const Bidiagonal& B, aMatrix* V)
{
    const std::size_t n = B.m_n;
    for (std::size_t i = n; i-- > 0;) {
        const std::size_t l = i + 1;
        if (l < n && B.m_e[l] != 0.0) {
            for (std::size_t j = l; j < n; ++j)
                at(V, j, i) = at(A, i, j) / at(A, i, l) / B.m_e[l]; // one after the other: their product can underflow
            for (std::size_t j = l; j < n; ++j) {
                double s = 0.0;
                for (std::size_t k = l; k < n; ++k)
                    s += at(A, i, k) * at(V, k, j);
                for (std::size_t k = l; k < n; ++k)
                    at(V, k, j) += s * at(V, k, i);
            }
        }
        for (std::size_t j = l; j < n; ++j)
            at(V, i, j) = at(V, j, i) = 0.0;
        at(V, i, i) = 1.0;
    }
}

void accumulate_U(aMatrix* A, const Bidiagonal& B)
{
    const std::size_t m = A->m_rows;
    const std::size_t n = B.m_n;
    for (std::size_t i = n; i-- > 0;) {
        const std::size_t l = i + 1;
        const double g = B.m_w[i];
        for (std::size_t j = l; j < n; ++j)
            at(A, i, j) = 0.0;
        if (g != 0.0) {
            for (std::size_t j = l; j < n; ++j) {
                double s = 0.0;
                for (std::size_t k = l; k < m; ++k)
                    s += at(A, k, i) * at(A, k, j);
                const double f = s / at(A, i, i) / g; // one after the other: their product can underflow
                for (std::size_t k = i; k < m; ++k)
                    at(A, k, j) += f * at(A, k, i);
            }
            for (std::size_t k = i; k < m; ++k)
                at(A, k, i) /= g;
        } else {
            for (std::size_t k = i; k < m; ++k)
                at(A, k, i) = 0.0;
        }
        at(A, i, i) += 1.0;
    }
}

} // namespace native
