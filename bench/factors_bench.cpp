// svds, SVD, LU, QR and Cholesky beside the bare routines on buffers that are ready, with the copies of the matrix in
// and the forming of the factors.
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lapack/pivoting.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "efiutl/thread_count.hpp"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace {

using bench::factor;
using bench::Numbers;
using Qud::Handle;
namespace fortran = lapack::fortran;
namespace IntelMKL = Efi::IntelMKL;

using bench::at_most_beside_routine;
constexpr double tolerance = 1e-8;

/// A matrix of n by n, the peer's buffers, and what the peer makes of them.
struct Problem {
    explicit Problem(int order, Numbers numbers)
        : n(order), size(static_cast<std::size_t>(order)), A(std::move(numbers)),
          host(bench::host_matrix(size, size, A)), lwork(16 * order), a(A.size()), P(A.size()), left(A.size()),
          right(A.size()), values(size), tau(size), work(16 * size), pivots(size)
    {
    }

    void copy_in() { std::copy(A.begin(), A.end(), a.begin()); }

    /// The upper triangle of a into `right`, zeros below.
    void form_upper()
    {
        for (std::size_t j = 0; j < size; ++j) {
            std::copy_n(&a[j * size], j + 1, &right[j * size]);
            std::fill_n(&right[j * size + j + 1], size - j - 1, 0.0);
        }
    }

    /// The lower triangle of a with a unit diagonal into `left`.
    void form_unit_lower()
    {
        for (std::size_t j = 0; j < size; ++j) {
            std::fill_n(&left[j * size], j, 0.0);
            left[j * size + j] = 1.0;
            std::copy_n(&a[j * size + j + 1], size - j - 1, &left[j * size + j + 1]);
        }
    }

    void form_columns_in_order()
    {
        std::fill(P.begin(), P.end(), 0.0);
        for (std::size_t j = 0; j < size; ++j)
            P[j * size + static_cast<std::size_t>(pivots[j]) - 1] = 1.0;
    }

    int n;
    std::size_t size;
    Numbers A;
    Handle host;
    int lwork;
    int info = 0;
    Numbers a, P, left, right, values, tau, work;
    std::vector<int> pivots;
};

void singular_values(Problem& p, const char* jobs)
{
    p.copy_in();
    fortran::dgesvd_(jobs, jobs, &p.n, &p.n, p.a.data(), &p.n, p.values.data(), p.left.data(), &p.n, p.right.data(),
                     &p.n, p.work.data(), &p.lwork, &p.info, 1, 1);
}

void svd(Problem& p)
{
    bench::compare(
        {.name = "svds", .n = p.size, .peer = "dgesvd, A copied", .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::svds(p.host); },
        [&]() -> const Numbers& {
            singular_values(p, "N");
            return p.values;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, ours, peer); });
    bench::compare(
        {.name = "SVD",
         .n = p.size,
         .peer = "dgesvd with vectors, A copied",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::svd(p.host); },
        [&]() -> const Numbers& {
            singular_values(p, "S");
            return p.right;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 2), peer); });
}

void lu(Problem& p)
{
    std::vector<std::size_t> rows(p.size);
    bench::compare(
        {.name = "LU",
         .n = p.size,
         .peer = "dgetrf, A copied, P, L, U formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::LU(p.host); },
        [&]() -> const Numbers& {
            p.copy_in();
            fortran::dgetrf_(&p.n, &p.n, p.a.data(), &p.n, p.pivots.data(), &p.info);
            p.form_unit_lower();
            p.form_upper();
            std::fill(p.P.begin(), p.P.end(), 0.0);
            for (std::size_t i = 0; i < p.size; ++i)
                rows[i] = i;
            for (std::size_t i = 0; i < p.size; ++i)
                std::swap(rows[i], rows[static_cast<std::size_t>(p.pivots[i]) - 1]);
            for (std::size_t i = 0; i < p.size; ++i)
                p.P[rows[i] * p.size + i] = 1.0;
            return p.right;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 2), peer); });
}

void qr(Problem& p)
{
    const Handle zero = Qud::NumVal::make(0.0);
    const auto form_q = [&] {
        fortran::dorgqr_(&p.n, &p.n, &p.n, p.a.data(), &p.n, p.tau.data(), p.work.data(), &p.lwork, &p.info);
        std::copy(p.a.begin(), p.a.end(), p.left.begin());
    };
    bench::compare(
        {.name = "QR(M, 0)",
         .n = p.size,
         .peer = "dgeqrf, dorgqr, A copied, Q, R formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::QR(p.host, zero); },
        [&]() -> const Numbers& {
            p.copy_in();
            fortran::dgeqrf_(&p.n, &p.n, p.a.data(), &p.n, p.tau.data(), p.work.data(), &p.lwork, &p.info);
            p.form_upper();
            form_q();
            return p.right;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 1), peer); });
    bench::compare(
        {.name = "QR",
         .n = p.size,
         .peer = "dgeqpf, dorgqr, A copied, P, Q, R formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::QR(p.host); },
        [&]() -> const Numbers& {
            p.copy_in();
            std::fill(p.pivots.begin(), p.pivots.end(), 0);
            lapack::dgeqpf_of_provider(&p.n, &p.n, p.a.data(), &p.n, p.pivots.data(), p.tau.data(), p.work.data(),
                                       &p.info);
            p.form_upper();
            form_q();
            p.form_columns_in_order();
            return p.right;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 2), peer); });
}

void cholesky(Problem& p)
{
    const Handle zero = Qud::NumVal::make(0.0);
    const auto form_lower = [&] {
        for (std::size_t j = 0; j < p.size; ++j)
            std::fill_n(&p.a[j * p.size], j, 0.0);
    };
    bench::compare(
        {.name = "Cholesky(M, 0)",
         .n = p.size,
         .peer = "dpotrf, A copied, zeros",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::Cholesky(p.host, zero); },
        [&]() -> const Numbers& {
            p.copy_in();
            fortran::dpotrf_("L", &p.n, p.a.data(), &p.n, &p.info, 1);
            form_lower();
            return p.a;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, ours, peer); });
    bench::compare(
        {.name = "Cholesky",
         .n = p.size,
         .peer = "dpstrf, A copied, zeros, P formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::Cholesky(p.host); },
        [&]() -> const Numbers& {
            p.copy_in();
            const double tol = -1.0;
            int rank = 0;
            fortran::dpstrf_("L", &p.n, p.a.data(), &p.n, p.pivots.data(), &rank, &tol, p.work.data(), &p.info, 1);
            form_lower();
            p.form_columns_in_order();
            return p.a;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 1), peer); });
}

} // namespace

int main()
{
    bench::header("factorisations by LAPACK");
    for (const unsigned threads : {1U, 2U})
        for (const int n : {3, 20, 200, 500}) {
            if (threads > 1 && n < 200)
                continue;
            Efi::MKL_NUM_THREADS = bench::threads_in_use = threads;
            const auto size = static_cast<std::size_t>(n);
            Problem general(n, bench::random_numbers(size * size, 1));
            svd(general);
            lu(general);
            qr(general);
            Problem symmetric(n, bench::positive_definite(size, 2));
            cholesky(symmetric);
        }
}
