#include "tests/kernels/plain/svd.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/throw.hpp"

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace plain {
namespace {

using Efi::at;
using std::fabs;
using std::sqrt;
using Doubles = std::vector<double>;

constexpr double eps = 2.220446049250313e-16;

/// w and e from A, which keeps the reflections; the tolerance is returned.
double bidiagonalise(aMatrix* A, Doubles& w, Doubles& e, bool may_be_nested)
{
    const std::size_t m = A->m_rows;
    const std::size_t n = A->m_cols;
    double g = 0.0;
    double scale = 0.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t l = i + 1;
        e[i] = scale * g;

        g = scale = 0.0;
        for (std::size_t k = i; k < m; ++k) {
            if (!may_be_nested && std::bit_cast<std::uint64_t>(at(A, k, i)) >> 32 == 0xFFFFFFFF)
                Efi::Throw("may not be nested", -1);
            scale += fabs(at(A, k, i));
        }
        if (scale != 0.0) {
            double s = 0.0;
            for (std::size_t k = i; k < m; ++k) {
                at(A, k, i) /= scale;
                s += at(A, k, i) * at(A, k, i);
            }
            double f = at(A, i, i);
            g = f < 0.0 ? sqrt(s) : -sqrt(s);
            const double h = f * g - s;
            at(A, i, i) = f - g;
            for (std::size_t j = l; j < n; ++j) {
                s = 0.0;
                for (std::size_t k = i; k < m; ++k)
                    s += at(A, k, i) * at(A, k, j);
                f = s / h;
                for (std::size_t k = i; k < m; ++k)
                    at(A, k, j) += f * at(A, k, i);
            }
            for (std::size_t k = i; k < m; ++k)
                at(A, k, i) *= scale;
        }
        w[i] = scale * g;

        g = scale = 0.0;
        for (std::size_t k = l; k < n; ++k)
            scale += fabs(at(A, i, k));
        if (l < n && scale != 0.0) {
            double s = 0.0;
            for (std::size_t k = l; k < n; ++k) {
                at(A, i, k) /= scale;
                s += at(A, i, k) * at(A, i, k);
            }
            const double f = at(A, i, l);
            g = f < 0.0 ? sqrt(s) : -sqrt(s);
            const double h = f * g - s;
            at(A, i, l) = f - g;
            for (std::size_t k = l; k < n; ++k)
                e[k] = at(A, i, k) / h;
            for (std::size_t j = l; j < m; ++j) {
                s = 0.0;
                for (std::size_t k = l; k < n; ++k)
                    s += at(A, j, k) * at(A, i, k);
                for (std::size_t k = l; k < n; ++k)
                    at(A, j, k) += s * e[k];
            }
            for (std::size_t k = l; k < n; ++k)
                at(A, i, k) *= scale;
        }
        const double x = fabs(w[i]) + fabs(e[i]);
        if (x > largest)
            largest = x;
    }
    return eps * largest;
}

void accumulate_V(const aMatrix* A, const Doubles& e, aMatrix* V)
{
    const std::size_t n = A->m_cols;
    for (std::size_t i = n; i-- > 0;) {
        const std::size_t l = i + 1;
        if (l < n && e[l] != 0.0) {
            for (std::size_t j = l; j < n; ++j)
                at(V, j, i) = (at(A, i, j) / at(A, i, l)) / e[l];
            for (std::size_t j = l; j < n; ++j) {
                double s = 0.0;
                for (std::size_t k = l; k < n; ++k)
                    s += at(A, i, k) * at(V, k, j);
                for (std::size_t k = l; k < n; ++k)
                    at(V, k, j) += s * at(V, k, i);
            }
        }
        for (std::size_t j = l; j < n; ++j) {
            at(V, i, j) = 0.0;
            at(V, j, i) = 0.0;
        }
        at(V, i, i) = 1.0;
    }
}

void accumulate_U(aMatrix* A, const Doubles& w)
{
    const std::size_t m = A->m_rows;
    const std::size_t n = A->m_cols;
    for (std::size_t i = n; i-- > 0;) {
        const std::size_t l = i + 1;
        for (std::size_t j = l; j < n; ++j)
            at(A, i, j) = 0.0;
        if (w[i] != 0.0) {
            for (std::size_t j = l; j < n; ++j) {
                double s = 0.0;
                for (std::size_t k = l; k < m; ++k)
                    s += at(A, k, i) * at(A, k, j);
                const double f = (s / at(A, i, i)) / w[i];
                for (std::size_t k = i; k < m; ++k)
                    at(A, k, j) += f * at(A, k, i);
            }
            for (std::size_t k = i; k < m; ++k)
                at(A, k, i) /= w[i];
        } else {
            for (std::size_t k = i; k < m; ++k)
                at(A, k, i) = 0.0;
        }
        at(A, i, i) += 1.0;
    }
}

/// Columns i and j of M, if there is one.
void rotate(aMatrix* M, std::size_t i, std::size_t j, double c, double s)
{
    if (M == nullptr)
        return;
    for (std::size_t k = 0; k < M->m_rows; ++k) {
        const double x = at(M, k, i);
        const double z = at(M, k, j);
        at(M, k, i) = x * c + z * s;
        at(M, k, j) = z * c - x * s;
    }
}

double length(double a, double b)
{
    constexpr double largest = std::numeric_limits<double>::max();
    if (fabs(a * a) > largest || fabs(b * b) > largest)
        Efi::Throw("overflow", -1);
    return sqrt(a * a + b * b);
}

/// Tiny elements are brought up by a power of two; the rest of the iteration does not know.
double brought_up(Doubles& w, Doubles& e, double& negligible)
{
    double power = 1.0;
    while (std::isless(negligible, 0x1p-452)) {
        double x = 0.0;
        for (std::size_t k = 0; k < w.size(); ++k) {
            w[k] *= 0x1p500;
            e[k] *= 0x1p500;
            if (std::isgreater(fabs(w[k]) + fabs(e[k]), x))
                x = fabs(w[k]) + fabs(e[k]);
        }
        if (x == 0.0)
            break;
        power *= 0x1p500;
        negligible = 2.220446049250313e-16 * x;
    }
    return power;
}

/// U and V may be absent.
void diagonalise(Doubles& w, Doubles& e, double negligible, aMatrix* U, aMatrix* V)
{
    const double power = brought_up(w, e, negligible);
    for (std::size_t k = w.size(); k-- > 0;) {
        for (int its = 0;; ++its) {
            std::size_t l = k;
            bool cancel = false;
            for (; l > 0; --l) {
                if (fabs(e[l]) <= negligible)
                    break;
                if (fabs(w[l - 1]) <= negligible) {
                    cancel = true;
                    break;
                }
            }
            if (cancel) {
                double c = 0.0;
                double s = 1.0;
                for (std::size_t i = l; i <= k; ++i) {
                    const double f = s * e[i];
                    e[i] = c * e[i];
                    if (fabs(f) <= negligible)
                        break;
                    const double g = w[i];
                    const double h = length(f, g);
                    w[i] = h;
                    c = g / h;
                    s = -f / h;
                    rotate(U, l - 1, i, c, s);
                }
            }
            double z = w[k];
            if (l == k) {
                if (z < 0.0) {
                    w[k] = -z;
                    for (std::size_t j = 0; V != nullptr && j < V->m_rows; ++j)
                        at(V, j, k) = -at(V, j, k);
                }
                break;
            }
            if (its == 100)
                Efi::Throw("too many iterations", -1);
            double x = w[l];
            double y = w[k - 1];
            double g = e[k - 1];
            double h = e[k];
            double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2.0 * h * y);
            g = sqrt(f * f + 1.0);
            f = ((x - z) * (x + z) + h * (y / (f + (f < 0.0 ? -g : g)) - h)) / x;
            double c = 1.0;
            double s = 1.0;
            for (std::size_t i = l + 1; i <= k; ++i) {
                g = e[i];
                y = w[i];
                h = s * g;
                g = c * g;
                z = length(f, h);
                e[i - 1] = z;
                c = f / z;
                s = h / z;
                f = x * c + g * s;
                g = g * c - x * s;
                h = y * s;
                y = y * c;
                rotate(V, i - 1, i, c, s);
                z = length(f, h);
                w[i - 1] = z;
                if (z != 0.0) {
                    c = f / z;
                    s = h / z;
                }
                f = c * g + s * y;
                x = c * y - s * g;
                rotate(U, i - 1, i, c, s);
            }
            e[l] = 0.0;
            e[k] = f;
            w[k] = x;
        }
    }
    for (std::size_t k = 0; power != 1.0 && k < w.size(); ++k)
        w[k] /= power;
}

/// Sorts w into descending order and returns where each value stood.
std::vector<std::size_t> sort(Doubles& w)
{
    std::vector<std::size_t> from;
    for (std::size_t i = 0; i < w.size(); ++i)
        from.push_back(i);
    for (std::size_t i = 0; i < w.size(); ++i)
        for (std::size_t j = i + 1; j < w.size(); ++j)
            if (w[j] > w[i]) {
                std::swap(w[i], w[j]);
                std::swap(from[i], from[j]);
            }
    return from;
}

void rearrange(aMatrix* M, const std::vector<std::size_t>& from)
{
    for (std::size_t i = 0; i < M->m_rows; ++i) {
        Doubles row;
        for (std::size_t j = 0; j < M->m_cols; ++j)
            row.push_back(at(M, i, from[j]));
        for (std::size_t j = 0; j < M->m_cols; ++j)
            at(M, i, j) = row[j];
    }
}

} // namespace

void svd_decompose(EfiCallContext*, aMatrix* A, aMatrix* V, aMatrix* w)
{
    if (A->m_rows < A->m_cols)
        Efi::Throw("number of rows less than number of columns", -1);
    Doubles values(A->m_cols);
    Doubles e(A->m_cols);
    const double negligible = bidiagonalise(A, values, e, true);
    accumulate_V(A, e, V);
    accumulate_U(A, values);
    diagonalise(values, e, negligible, A, V);
    const std::vector<std::size_t> from = sort(values);
    rearrange(A, from);
    rearrange(V, from);
    for (std::size_t i = 0; i < A->m_cols; ++i)
        w->m_rv[i] = values[i];
}

void svd_values(EfiCallContext*, aMatrix* A)
{
    if (A->m_rows < A->m_cols)
        Efi::Throw("number of rows less than number of columns", 1);
    Doubles values(A->m_cols);
    Doubles e(A->m_cols);
    const double negligible = bidiagonalise(A, values, e, false);
    diagonalise(values, e, negligible, nullptr, nullptr);
    sort(values);
    for (std::size_t i = 0; i < A->m_cols; ++i)
        at(A, i, i) = values[i];
}

void pinv_from_svd(EfiCallContext* ctx, aMatrix* A, double tol, aMatrix** result)
{
    const std::size_t m = A->m_rows;
    const std::size_t n = A->m_cols;
    aMatrix* const V = aMatrix::mk(ctx->m_arena, A->m_cols, A->m_cols, Efi::doubles(ctx, n * n), nullptr);
    aMatrix* const w = aMatrix::mk(ctx->m_arena, A->m_cols, 1, Efi::doubles(ctx, n), nullptr);
    aMatrix* const X = aMatrix::mk(ctx->m_arena, A->m_cols, A->m_rows, Efi::doubles(ctx, m * n), nullptr);
    plain::svd_decompose(ctx, A, V, w);
    for (std::size_t j = 0; j < n; ++j) {
        const bool counts = w->m_rv[j] > tol;
        for (std::size_t i = 0; i < n; ++i)
            at(V, i, j) = counts ? at(V, i, j) / w->m_rv[j] : 0.0;
    }
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t k = 0; k < m; ++k) {
            double s = 0.0;
            for (std::size_t j = 0; j < n; ++j)
                s += at(V, i, j) * at(A, k, j);
            at(X, i, k) = s;
        }
    *result = X;
}

} // namespace plain
