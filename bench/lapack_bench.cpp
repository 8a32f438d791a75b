// Calls that hand their work to LAPACK, beside the bare routine on buffers that are ready, with the copies that it
// needs in and out.
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/determinant.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lapack/inverse.hpp"
#include "bailuxsko/lapack/product.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "efiutl/thread_count.hpp"

#include <cblas.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

namespace {

using bench::at_most_beside_routine;
using Complex = lapack::MKL_Complex16;
using bench::Complexes;
using bench::interleave;
using bench::Numbers;
using bench::part;
using bench::random_numbers;

/// Whether both differ by rounding only; the peer's columns are ld apart.
bool agree(const Qud::Handle& ours, const Numbers& peer, std::size_t ld)
{
    const Qud::MatVal& X = *Qud::matrix_of(ours);
    double difference = 0.0;
    double norm = 0.0;
    for (std::size_t j = 0; j < X.Cols(); ++j)
        for (std::size_t i = 0; i < X.Rows(); ++i) {
            difference = std::max(difference, std::fabs(X.real(i, j) - peer[j * ld + i]));
            norm = std::max(norm, std::fabs(peer[j * ld + i]));
        }
    return difference <= 1e-8 * norm;
}

void solve(int n, int nrhs)
{
    const auto order = static_cast<std::size_t>(n);
    const Numbers A = random_numbers(order * order, 1);
    const Numbers B = random_numbers(order * static_cast<std::size_t>(nrhs), 2);
    const Qud::Handle a = bench::host_matrix(order, order, A);
    const Qud::Handle b = bench::host_matrix(order, static_cast<std::size_t>(nrhs), B);
    Numbers factors(A.size());
    Numbers x(B.size());
    std::vector<int> ipiv(order);
    bench::compare(
        {.name = nrhs == 1 ? "lsolve, a column" : "lsolve, n columns",
         .n = order,
         .peer = "dgesv, A and B copied",
         .at_most = at_most_beside_routine(order)},
        [&] { return Efi::IntelMKL::lsolve(a, b); },
        [&]() -> const Numbers& {
            std::copy(A.begin(), A.end(), factors.begin());
            std::copy(B.begin(), B.end(), x.begin());
            int info = 0;
            lapack::fortran::dgesv_(&n, &nrhs, factors.data(), &n, ipiv.data(), x.data(), &n, &info);
            return x;
        },
        [&](const Qud::Handle& ours, const Numbers& peer) { return agree(ours, peer, order); });
}

void solve_complex(int n)
{
    const auto order = static_cast<std::size_t>(n);
    const Numbers re = random_numbers(order * order, 1);
    const Numbers im = random_numbers(order * order, 2);
    const Numbers right = random_numbers(order, 3);
    const Qud::Handle a = bench::host_matrix(order, order, re, im);
    const Qud::Handle b = bench::host_matrix(order, 1, right, right);
    Complexes factors(re.size());
    Complexes solution(order);
    Numbers x(order);
    Numbers x_im(order);
    std::vector<int> ipiv(order);
    bench::compare(
        {.name = "lsolve, complex",
         .n = order,
         .peer = "zgesv, A and B interleaved",
         .at_most = at_most_beside_routine(order)},
        [&] { return Efi::IntelMKL::lsolve(a, b); },
        [&]() -> const Numbers& {
            interleave(re, im, factors);
            interleave(right, right, solution);
            const int one = 1;
            int info = 0;
            lapack::fortran::zgesv_(&n, &one, factors.data(), &n, ipiv.data(), solution.data(), &n, &info);
            part(solution, x, x_im);
            return x;
        },
        [&](const Qud::Handle& ours, const Numbers& peer) { return agree(ours, peer, order); });
}

void least_squares(int n)
{
    const auto cols = static_cast<std::size_t>(n);
    const std::size_t rows = 2 * cols;
    const Numbers A = random_numbers(rows * cols, 1);
    const Numbers B = random_numbers(rows, 2);
    const Qud::Handle a = bench::host_matrix(rows, cols, A);
    const Qud::Handle b = bench::host_matrix(rows, 1, B);
    const int m = 2 * n;
    const int one = 1;
    const int lwork = 16 * m + 1;
    Numbers factors(A.size());
    Numbers x(rows);
    Numbers work(static_cast<std::size_t>(lwork));
    std::vector<int> jpvt(cols);
    bench::compare(
        {.name = "lsolve, 2n by n",
         .n = cols,
         .peer = "dgelsy, A and B copied",
         .at_most = at_most_beside_routine(cols)},
        [&] { return Efi::IntelMKL::lsolve(a, b); },
        [&]() -> const Numbers& {
            std::copy(A.begin(), A.end(), factors.begin());
            std::copy(B.begin(), B.end(), x.begin());
            std::fill(jpvt.begin(), jpvt.end(), 0);
            const double rcond = 1e-15;
            int rank = 0;
            int info = 0;
            lapack::fortran::dgelsy_(&m, &n, &one, factors.data(), &m, x.data(), &m, jpvt.data(), &rcond, &rank,
                                     work.data(), &lwork, &info);
            return x;
        },
        [&](const Qud::Handle& ours, const Numbers& peer) { return agree(ours, peer, rows); });
}

void inverse(int n)
{
    const auto order = static_cast<std::size_t>(n);
    const Numbers A = random_numbers(order * order, 1);
    const Qud::Handle a = bench::host_matrix(order, order, A);
    const int lwork = 64 * n;
    Numbers Y(A.size());
    Numbers work(static_cast<std::size_t>(lwork));
    std::vector<int> ipiv(order);
    EfiCallContext context;
    bench::compare(
        {.name = "dinv", .n = order, .peer = "dgetrf and dgetri, A copied", .at_most = at_most_beside_routine(order)},
        [&] { return lapack::dinv(&context, *Qud::matrix_of(a)); },
        [&]() -> const Numbers& {
            std::copy(A.begin(), A.end(), Y.begin());
            int info = 0;
            lapack::fortran::dgetrf_(&n, &n, Y.data(), &n, ipiv.data(), &info);
            lapack::fortran::dgetri_(&n, Y.data(), &n, ipiv.data(), work.data(), &lwork, &info);
            return Y;
        },
        [&](const Qud::Handle& ours, const Numbers& peer) { return agree(ours, peer, order); });
}

void symmetric_inverse(int n)
{
    const auto order = static_cast<std::size_t>(n);
    Numbers A = random_numbers(order * order, 1);
    bench::mirror(A, order);
    const Qud::Handle a = bench::host_matrix(order, order, A);
    const int lwork = 64 * n;
    Numbers Y(A.size());
    Numbers work(static_cast<std::size_t>(lwork));
    std::vector<int> ipiv(order);
    EfiCallContext context;
    bench::compare(
        {.name = "dinv, symmetric",
         .n = order,
         .peer = "dsytrf and dsytri, A copied, triangle completed",
         .at_most = at_most_beside_routine(order)},
        [&] { return lapack::dinv(&context, *Qud::matrix_of(a)); },
        [&]() -> const Numbers& {
            std::copy(A.begin(), A.end(), Y.begin());
            int info = 0;
            lapack::fortran::dsytrf_("U", &n, Y.data(), &n, ipiv.data(), work.data(), &lwork, &info, 1);
            lapack::fortran::dsytri_("U", &n, Y.data(), &n, ipiv.data(), work.data(), &info, 1);
            bench::mirror(Y, order);
            return Y;
        },
        [&](const Qud::Handle& ours, const Numbers& peer) { return agree(ours, peer, order); });
}

void determinant(int n)
{
    const auto order = static_cast<std::size_t>(n);
    Numbers A = random_numbers(order * order, 1);
    for (std::size_t i = 0; i < order; ++i)
        A[i * (order + 1)] += 4.0; // keeps the determinant of a large matrix finite and away from 0
    for (double& x : A)
        x /= 0.4 * std::sqrt(static_cast<double>(order));
    const Qud::Handle a = bench::host_matrix(order, order, A);
    Numbers U(A.size());
    std::vector<int> ipiv(order);
    EfiCallContext context;
    bench::compare(
        {.name = "_determinant", .n = order, .peer = "dgetrf, A copied", .at_most = at_most_beside_routine(order)},
        [&] { return Qud::as_number(lapack::_determinant(&context, *Qud::matrix_of(a)))->re(); },
        [&] {
            std::copy(A.begin(), A.end(), U.begin());
            int info = 0;
            lapack::fortran::dgetrf_(&n, &n, U.data(), &n, ipiv.data(), &info);
            double d = 1.0;
            for (std::size_t i = 0; i < order; ++i)
                d *= ipiv[i] == static_cast<int>(i) + 1 ? U[i * (order + 1)] : -U[i * (order + 1)];
            return d;
        },
        [](double ours, double peer) { return std::fabs(ours - peer) <= 1e-8 * std::fabs(peer) || ours == peer; });
}

void product(int n)
{
    const auto order = static_cast<std::size_t>(n);
    const Numbers A = random_numbers(order * order, 1);
    const Numbers B = random_numbers(order * order, 2);
    const Qud::Handle a = bench::host_matrix(order, order, A);
    const Qud::Handle b = bench::host_matrix(order, order, B);
    Numbers C(A.size());
    EfiCallContext context;
    bench::compare(
        {.name = "_gemm", .n = order, .peer = "dgemm", .at_most = at_most_beside_routine(order)},
        [&] { return lapack::_gemm(&context, *Qud::matrix_of(a), *Qud::matrix_of(b)); },
        [&]() -> const Numbers& {
            cblas_dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, n, n, n, 1.0, A.data(), n, B.data(), n, 0.0,
                        C.data(), n);
            return C;
        },
        [&](const Qud::Handle& ours, const Numbers& peer) { return agree(ours, peer, order); });
}

void product_complex(int n)
{
    const auto order = static_cast<std::size_t>(n);
    const Numbers re = random_numbers(order * order, 1);
    const Numbers im = random_numbers(order * order, 2);
    const Qud::Handle a = bench::host_matrix(order, order, re, im);
    Complexes A(re.size());
    Complexes B(re.size());
    Complexes C(re.size());
    Numbers c(re.size());
    Numbers c_im(re.size());
    EfiCallContext context;
    bench::compare(
        {.name = "_gemm, complex",
         .n = order,
         .peer = "zgemm, A and B interleaved, C parted",
         .at_most = at_most_beside_routine(order)},
        [&] { return lapack::_gemm(&context, *Qud::matrix_of(a), *Qud::matrix_of(a)); },
        [&]() -> const Numbers& {
            interleave(re, im, A);
            interleave(re, im, B);
            const Complex one = 1.0;
            const Complex zero = 0.0;
            cblas_zgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, n, n, n, &one, A.data(), n, B.data(), n, &zero,
                        C.data(), n);
            part(C, c, c_im);
            return c;
        },
        [&](const Qud::Handle& ours, const Numbers& peer) { return agree(ours, peer, order); });
}

} // namespace

int main()
{
    bench::header("calls on LAPACK and BLAS");
    for (const unsigned threads : {1U, 2U}) {
        Efi::MKL_NUM_THREADS = bench::threads_in_use = threads;
        for (const int n : {3, 20, 200, 500, 1000}) {
            if (threads > 1 && (n < 200 || n > 500))
                continue;
            solve(n, 1);
            solve(n, n);
            solve_complex(n);
            least_squares(n);
            inverse(n);
            symmetric_inverse(n);
            determinant(n);
            product(n);
            product_complex(n);
        }
    }
}
