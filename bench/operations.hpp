#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/cholesky.hpp"
#include "bailuxsko/comeval.hpp"
#include "bailuxsko/construction.hpp"
#include "bailuxsko/determinant.hpp"
#include "bailuxsko/eigenvalues.hpp"
#include "bailuxsko/eigenvec.hpp"
#include "bailuxsko/extremes.hpp"
#include "bailuxsko/gcd.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/inverse.hpp"
#include "bailuxsko/lookup.hpp"
#include "bailuxsko/lu.hpp"
#include "bailuxsko/norms.hpp"
#include "bailuxsko/qr.hpp"
#include "bailuxsko/rref.hpp"
#include "bailuxsko/shape.hpp"
#include "bailuxsko/skew.hpp"
#include "bailuxsko/small_functions.hpp"
#include "bailuxsko/sorting.hpp"
#include "bailuxsko/svd.hpp"
#include "bench/inputs.hpp"

#include <array>
#include <cmath>
#include <cstddef>

/// Operations by name, for benchmarks that go through all of them.
namespace bench {

using Qud::Handle;

/// An operation on one square matrix, with the order that its work is said to have.
struct MatrixOperation {
    const char* name;
    Handle (*call)(const Handle& M);
    double power = 3.0;    ///< of n, in the time
    bool positive = false; ///< the matrix must be symmetric and positive definite
    bool takes_units = true;
};

inline constexpr MatrixOperation matrix_operations[] = {
    {.name = "mult", .call = [](const Handle& M) { return Efi::Matrix::mult(M, M); }},
    {.name = "lu", .call = [](const Handle& M) { return Efi::Matrix::lu(M); }},
    {.name = "inv", .call = [](const Handle& M) { return Efi::Matrix::inv(M); }},
    {.name = "det", .call = [](const Handle& M) { return Efi::Matrix::det(M); }, .takes_units = false},
    {.name = "M^5", .call = [](const Handle& M) { return Efi::Matrix::pwr(M, Qud::NumVal::make(5.0)); }},
    {.name = "cholesky", .call = [](const Handle& M) { return Efi::Matrix::cholesky(M); }, .positive = true},
    {.name = "qr", .call = [](const Handle& M) { return Efi::Matrix::qr(M); }, .takes_units = false},
    {.name = "rref", .call = [](const Handle& M) { return Efi::Matrix::rref(M); }, .takes_units = false},
    {.name = "svd", .call = [](const Handle& M) { return Efi::Matrix::svd(M); }, .takes_units = false},
    {.name = "rank", .call = [](const Handle& M) { return Efi::Matrix::rank(M); }},
    {.name = "norm2", .call = [](const Handle& M) { return Efi::Matrix::norm2(M); }},
    {.name = "comeval", .call = [](const Handle& M) { return Efi::Matrix::comeval(M); }},
    {.name = "lsolve", .call = [](const Handle& M) { return Efi::IntelMKL::lsolve(M, M); }},
    {.name = "eigenvals", .call = [](const Handle& M) { return Efi::IntelMKL::eigenvals(M); }},
    {.name = "svds", .call = [](const Handle& M) { return Efi::IntelMKL::svds(M); }},
    {.name = "LU", .call = [](const Handle& M) { return Efi::IntelMKL::LU(M); }},
    {.name = "QR", .call = [](const Handle& M) { return Efi::IntelMKL::QR(M); }},
    {.name = "Cholesky", .call = [](const Handle& M) { return Efi::IntelMKL::Cholesky(M); }, .positive = true},
    {.name = "norm1", .call = [](const Handle& M) { return Efi::Matrix::norm1(M); }, .power = 2.0},
    {.name = "transpose", .call = [](const Handle& M) { return Efi::Matrix::transpose(M); }, .power = 2.0},
};

/// A square matrix of order n, far from singular ones; symmetric and positive definite on demand.
inline Numbers matrix_for(const MatrixOperation& operation, std::size_t n)
{
    if (operation.positive)
        return positive_definite(n, n);
    Numbers A = random_numbers(n * n, n);
    for (std::size_t j = 0; j < n; ++j)
        A[j + j * n] += 2.0 * std::sqrt(static_cast<double>(n));
    return A;
}

/// An operation on a column.
struct ColumnOperation {
    const char* name;
    Handle (*call)(const Handle& v);
    bool whole_numbers = false;
    bool takes_units = true;
};

inline constexpr ColumnOperation column_operations[] = {
    {.name = "column * 2.5", .call = [](const Handle& v) { return Efi::Matrix::mult(v, Qud::NumVal::make(2.5)); }},
    {.name = "column / column", .call = [](const Handle& v) { return Efi::Matrix::div(v, v); }},
    {.name = "sqr", .call = [](const Handle& v) { return Efi::Matrix::sqr(v); }},
    {.name = "sort", .call = [](const Handle& v) { return Efi::Matrix::sort(v); }},
    {.name = "reverse", .call = [](const Handle& v) { return Efi::Matrix::reverse(v); }},
    {.name = "augment",
     .call =
         [](const Handle& v) {
             return Efi::Matrix::augment(std::array{v, v});
         }},
    {.name = "stack",
     .call =
         [](const Handle& v) {
             return Efi::Matrix::stack(std::array{v, v});
         }},
    {.name = "min", .call = [](const Handle& v) { return Efi::Matrix::min(std::array{v}); }},
    {.name = "max", .call = [](const Handle& v) { return Efi::Matrix::max(std::array{v}); }},
    {.name = "sigmasum", .call = [](const Handle& v) { return Efi::Matrix::sigmasum(v); }},
    {.name = "skew", .call = [](const Handle& v) { return Efi::Matrix::skew(std::array{v}); }},
    {.name = "norm_f", .call = [](const Handle& v) { return Efi::Matrix::norm_f(v); }},
    {.name = "gcd",
     .call = [](const Handle& v) { return Efi::Matrix::gcd(std::array{v}); },
     .whole_numbers = true,
     .takes_units = false},
    {.name = "match",
     .call =
         [](const Handle& v) { return Efi::Matrix::Match({0}, {1e-3}, Qud::matrix_of(v)->element(0, 0), v, nullptr); }},
};

inline Numbers column_for(const ColumnOperation& operation, std::size_t n)
{
    Numbers v = random_numbers(n, n);
    if (operation.whole_numbers)
        for (double& x : v)
            x = std::round(1e9 * std::fabs(x)) * 6.0;
    return v;
}

} // namespace bench
