#include "tests/kernels/plain/lu.hpp"

#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"
#include "tests/kernels/plain/modulus.hpp"
#include "tests/kernels/plain/quotient.hpp"

#include <cmath>
#include <utility>
#include <vector>

namespace plain {
namespace {

using Efi::at;

constexpr double eps = 2.220446049250313e-16;

double imaginary(const aMatrix* A, std::size_t i, std::size_t j)
{
    return Efi::at_i(A, i, j);
}

double modulus_at(const aMatrix* A, std::size_t i, std::size_t j)
{
    return modulus(at(A, i, j), imaginary(A, i, j));
}

void store(EfiCallContext* ctx, aMatrix* A, std::size_t i, std::size_t j, aComplex z)
{
    at(A, i, j) = z.m_re;
    Efi::store_i(ctx, A, i, j, z.m_im);
}

void raise_maximum(double& maximum, double x)
{
    if (x > maximum)
        maximum = x;
}

[[noreturn]] void singular()
{
    Efi::Throw(msg::singular_matrix, -1);
}

} // namespace

void lu_decomp(EfiCallContext* /*ctx*/, aMatrix* A, double* pivots, double* sign, bool strict)
{
    *sign = 1.0;
    const std::size_t n = A->m_rows;
    std::vector<double> scale(n);
    for (std::size_t i = 0; i < n; ++i) {
        double maximum = 0.0;
        for (std::size_t j = 0; j < n; ++j)
            raise_maximum(maximum, std::fabs(at(A, i, j)));
        if (maximum == 0.0)
            singular();
        scale[i] = 1.0 / maximum;
    }
    double g = 0.0;
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t p = k;
        double best = std::fabs(at(A, k, k)) * scale[k];
        for (std::size_t i = k + 1; i < n; ++i) {
            const double t = std::fabs(at(A, i, k)) * scale[i];
            if (t >= best) {
                best = t;
                p = i;
            }
        }
        if (p != k) {
            for (std::size_t j = 0; j < n; ++j)
                std::swap(at(A, k, j), at(A, p, j));
            *sign = -*sign;
            scale[p] = scale[k];
        }
        if (pivots != nullptr)
            pivots[k] = static_cast<double>(p);
        if (at(A, k, k) == 0.0)
            singular();
        if (k >= 1) {
            for (std::size_t j = k - 1; j < n; ++j)
                raise_maximum(g, std::fabs(at(A, k - 1, j)) * scale[k - 1]);
            if (strict) {
                const double threshold = g * eps;
                for (std::size_t i = 1; i <= k; ++i)
                    if (std::fabs(at(A, i, i)) < threshold)
                        singular();
            }
        }
        scale[k] = 1.0;
        for (std::size_t i = k + 1; i < n; ++i) {
            at(A, i, k) = at(A, i, k) / at(A, k, k);
            raise_maximum(scale[k], std::fabs(at(A, i, k)));
            for (std::size_t j = k + 1; j < n; ++j)
                at(A, i, j) = at(A, i, j) - at(A, i, k) * at(A, k, j);
        }
    }
}

void clu_decomp(EfiCallContext* ctx, aMatrix* A, double* pivots, double* sign, bool strict)
{
    *sign = 1.0;
    const std::size_t n = A->m_rows;
    std::vector<double> scale(n);
    for (std::size_t i = 0; i < n; ++i) {
        double maximum = 0.0;
        for (std::size_t j = 0; j < n; ++j)
            raise_maximum(maximum, modulus_at(A, i, j));
        if (maximum == 0.0)
            singular();
        scale[i] = 1.0 / maximum;
    }
    double g = 0.0;
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t p = k;
        double best = -1.0;
        for (std::size_t i = k; i < n; ++i) {
            const double t = modulus_at(A, i, k) * scale[i];
            if (t > best) {
                best = t;
                p = i;
            }
        }
        if (p != k) {
            for (std::size_t j = 0; j < n; ++j) {
                const aComplex upper{.m_re = at(A, k, j), .m_im = imaginary(A, k, j)};
                store(ctx, A, k, j, {.m_re = at(A, p, j), .m_im = imaginary(A, p, j)});
                store(ctx, A, p, j, upper);
            }
            *sign = -*sign;
            scale[p] = scale[k];
        }
        if (pivots != nullptr)
            pivots[k] = static_cast<double>(p + 1);
        if (at(A, k, k) == 0.0 && imaginary(A, k, k) == 0.0)
            singular();
        if (k >= 1)
            for (std::size_t j = k - 1; j < n; ++j)
                raise_maximum(g, modulus_at(A, k - 1, j) * scale[k - 1]);
        if (strict)
            for (std::size_t i = 0; i <= k; ++i) {
                const double re = at(A, i, i);
                const double im = imaginary(A, i, i);
                if (std::sqrt(re * re + im * im) == 0.0)
                    singular();
            }
        scale[k] = 1.0;
        for (std::size_t i = k + 1; i < n; ++i) {
            store(ctx, A, i, k, quotient({at(A, i, k), imaginary(A, i, k)}, {at(A, k, k), imaginary(A, k, k)}));
            raise_maximum(scale[k], modulus_at(A, i, k));
            for (std::size_t j = k + 1; j < n; ++j) {
                const double re = at(A, i, k) * at(A, k, j) - imaginary(A, i, k) * imaginary(A, k, j);
                const double im = at(A, i, k) * imaginary(A, k, j) + imaginary(A, i, k) * at(A, k, j);
                store(ctx, A, i, j, {.m_re = at(A, i, j) - re, .m_im = imaginary(A, i, j) - im});
            }
        }
    }
}

} // namespace plain
