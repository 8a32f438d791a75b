#include "bailuxsko/lapack/eigen_results.hpp"

#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lapack/sort_vector.hpp"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace lapack {

namespace {

constexpr double largest_finite = std::numeric_limits<double>::max();

double sign(double x)
{
    return x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : 0.0;
}

} // namespace

Qud::Handle ordered_values(std::uint32_t n, const Qud::SharedNumbers& real, const Qud::SharedNumbers& imaginary)
{
    const Qud::Handle values = Qud::MatVal::make(n, 1, real, imaginary);
    return rearrangeVRows(*Qud::matrix_of(values), sortVector({real.get(), n}));
}

Qud::Handle ordered_vectors(std::uint32_t n, const Qud::SharedNumbers& real, const Qud::MatVal& V)
{
    return rearrangeMColumns(V, sortVector({real.get(), n}));
}

Qud::Handle ordered_complex(std::uint32_t n, const MKL_Complex16* values, const MKL_Complex16* V)
{
    const Qud::Handle column = complex_matrix(values, n, 1);
    const Qud::MatVal& w = *Qud::matrix_of(column);
    const std::vector<std::uint32_t> p = sortVector({w.m_rarr, n});
    if (V == nullptr)
        return rearrangeVRows(w, p);
    const Qud::Handle vectors = complex_matrix(V, n, n);
    return rearrangeMColumns(*Qud::matrix_of(vectors), p);
}

MKL_Complex16 quotient(MKL_Complex16 x, MKL_Complex16 y)
{
    const double a = x.real();
    const double b = x.imag();
    const double c = y.real();
    const double d = y.imag();
    double re = 0.0;
    double im = 0.0;
    fortran::dladiv_(&a, &b, &c, &d, &re, &im); // what zladiv is made of
    return {re, im};
}

Qud::Handle unpacked_pairs(std::uint32_t n, const double* V, const double* imaginary)
{
    const std::size_t rows = n;
    Qud::FreshNumbers re = Qud::fresh_numbers(rows * rows);
    Qud::FreshNumbers im = Qud::fresh_numbers(rows * rows);
    for (std::size_t j = 0; j < rows; ++j) {
        const double* const first = V + j * rows;
        double* const to_re = re.get() + j * rows;
        double* const to_im = im.get() + j * rows;
        std::copy_n(first, rows, to_re);
        if (imaginary[j] == 0.0 || j + 1 == rows) {
            std::fill_n(to_im, rows, 0.0);
            continue;
        }
        const double* const second = first + rows;
        std::copy_n(second, rows, to_im);
        std::copy_n(first, rows, to_re + rows);
        std::transform(second, second + rows, to_im + rows, [](double x) { return -x; });
        ++j;
    }
    return Qud::MatVal::make(n, n, std::move(re), std::move(im));
}

void divide_by_beta(std::span<double> alphar, std::span<double> alphai, std::span<const double> beta)
{
    for (std::size_t i = 0; i < beta.size(); ++i) {
        if (beta[i] != 0.0) {
            alphar[i] /= beta[i];
            alphai[i] /= beta[i];
            continue;
        }
        if (alphar[i] != 0.0)
            alphar[i] = sign(alphar[i]) * largest_finite;
        if (alphai[i] != 0.0) // by the sign of the real part, not its own
            alphai[i] = sign(alphar[i]) * largest_finite;
    }
}

} // namespace lapack
