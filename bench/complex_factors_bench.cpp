// The complex forms of svds, SVD, LU, QR and Cholesky beside the bare routines on buffers that are ready, with the
// parts of the matrix brought together and those of the factors parted.
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lapack/pivoting.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "efiutl/thread_count.hpp"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

using bench::Complexes;
using bench::factor;
using bench::Numbers;
using Qud::Handle;
using Complex = lapack::MKL_Complex16;
namespace fortran = lapack::fortran;
namespace IntelMKL = Efi::IntelMKL;

using bench::at_most_beside_routine;
constexpr double tolerance = 1e-8;

/// Real and imaginary parts of a factor.
struct Parts {
    explicit Parts(std::size_t count) : re(count), im(count) {}
    void take(std::size_t k, Complex z)
    {
        re[k] = z.real();
        im[k] = z.imag();
    }
    void take_all(const Complexes& z) { bench::part(z, re, im); }
    Numbers re;
    Numbers im;
};

struct Problem {
    Problem(int order, Numbers real, Numbers imaginary)
        : n(order), size(static_cast<std::size_t>(order)), re(std::move(real)), im(std::move(imaginary)),
          host(bench::host_matrix(size, size, re, im)), lwork(16 * order), a(re.size()), u(re.size()), vt(re.size()),
          tau(size), work(16 * size), rwork(16 * size), values(size), P(re.size()), left(re.size()), right(re.size()),
          pivots(size)
    {
    }

    void copy_in() { bench::interleave(re, im, a); }

    void form_upper()
    {
        for (std::size_t j = 0; j < size; ++j)
            for (std::size_t i = 0; i < size; ++i)
                right.take(j * size + i, i <= j ? a[j * size + i] : Complex());
    }

    void form_unit_lower()
    {
        for (std::size_t j = 0; j < size; ++j)
            for (std::size_t i = 0; i < size; ++i)
                left.take(j * size + i, i > j ? a[j * size + i] : i == j ? Complex(1.0) : Complex());
    }

    void form_permutation()
    {
        std::fill(P.begin(), P.end(), 0.0);
        for (std::size_t j = 0; j < size; ++j)
            P[j * size + static_cast<std::size_t>(pivots[j]) - 1] = 1.0;
    }

    int n;
    std::size_t size;
    Numbers re, im;
    Handle host;
    int lwork;
    int info = 0;
    Complexes a, u, vt, tau, work;
    Numbers rwork, values, P;
    Parts left, right;
    std::vector<int> pivots;
};

void singular_values(Problem& p, const char* jobs)
{
    p.copy_in();
    fortran::zgesvd_(jobs, jobs, &p.n, &p.n, p.a.data(), &p.n, p.values.data(), p.u.data(), &p.n, p.vt.data(), &p.n,
                     p.work.data(), &p.lwork, p.rwork.data(), &p.info, 1, 1);
}

void svd(Problem& p)
{
    bench::compare(
        {.name = "svds, complex",
         .n = p.size,
         .peer = "zgesvd, A interleaved",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::svds(p.host); },
        [&]() -> const Numbers& {
            singular_values(p, "N");
            return p.values;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, ours, peer); });
    bench::compare(
        {.name = "SVD, complex",
         .n = p.size,
         .peer = "zgesvd with vectors, A interleaved, U, V parted",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::svd(p.host); },
        [&]() -> const Numbers& {
            singular_values(p, "S");
            p.left.take_all(p.u);
            p.right.take_all(p.vt);
            return p.right.re;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 2), peer); });
}

void lu(Problem& p)
{
    bench::compare(
        {.name = "LU, complex",
         .n = p.size,
         .peer = "zgetrf, A interleaved, P, L, U formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::LU(p.host); },
        [&]() -> const Numbers& {
            p.copy_in();
            fortran::zgetrf_(&p.n, &p.n, p.a.data(), &p.n, p.pivots.data(), &p.info);
            p.form_unit_lower();
            p.form_upper();
            p.form_permutation(); // as long as the exchanges take
            return p.right.re;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 2), peer); });
}

void qr(Problem& p)
{
    const Handle zero = Qud::NumVal::make(0.0);
    const auto form_q = [&] {
        fortran::zungqr_(&p.n, &p.n, &p.n, p.a.data(), &p.n, p.tau.data(), p.work.data(), &p.lwork, &p.info);
        p.left.take_all(p.a);
    };
    bench::compare(
        {.name = "QR(M, 0), complex",
         .n = p.size,
         .peer = "zgeqrf, zungqr, A interleaved, Q, R formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::QR(p.host, zero); },
        [&]() -> const Numbers& {
            p.copy_in();
            fortran::zgeqrf_(&p.n, &p.n, p.a.data(), &p.n, p.tau.data(), p.work.data(), &p.lwork, &p.info);
            p.form_upper();
            form_q();
            return p.right.re;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 1), peer); });
    bench::compare(
        {.name = "QR, complex",
         .n = p.size,
         .peer = "zgeqpf, zungqr, A interleaved, P, Q, R formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::QR(p.host); },
        [&]() -> const Numbers& {
            p.copy_in();
            std::fill(p.pivots.begin(), p.pivots.end(), 0);
            lapack::zgeqpf_of_provider(&p.n, &p.n, p.a.data(), &p.n, p.pivots.data(), p.tau.data(), p.work.data(),
                                       p.rwork.data(), &p.info);
            p.form_upper();
            form_q();
            p.form_permutation();
            return p.right.re;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 2), peer); });
}

void cholesky(Problem& p)
{
    const Handle zero = Qud::NumVal::make(0.0);
    const auto form_lower = [&] {
        for (std::size_t j = 0; j < p.size; ++j)
            for (std::size_t i = 0; i < p.size; ++i)
                p.left.take(j * p.size + i, i >= j ? p.a[j * p.size + i] : Complex());
    };
    bench::compare(
        {.name = "Cholesky(M, 0), complex",
         .n = p.size,
         .peer = "zpotrf, A interleaved, L parted",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::Cholesky(p.host, zero); },
        [&]() -> const Numbers& {
            p.copy_in();
            fortran::zpotrf_("L", &p.n, p.a.data(), &p.n, &p.info, 1);
            form_lower();
            return p.left.re;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, ours, peer); });
    bench::compare(
        {.name = "Cholesky, complex",
         .n = p.size,
         .peer = "zpstrf, A interleaved, L parted, P formed",
         .at_most = at_most_beside_routine(p.size)},
        [&] { return IntelMKL::Cholesky(p.host); },
        [&]() -> const Numbers& {
            p.copy_in();
            const double tol = -1.0;
            int rank = 0;
            fortran::zpstrf_("L", &p.n, p.a.data(), &p.n, p.pivots.data(), &rank, &tol, p.rwork.data(), &p.info, 1);
            form_lower();
            p.form_permutation();
            return p.left.re;
        },
        [](const Handle& ours, const Numbers& peer) { return bench::agree_within(tolerance, factor(ours, 1), peer); });
}

/// Real and symmetric in value, with imaginary parts of the other sign across the diagonal; its pivots are distinct.
Problem definite(int n)
{
    const auto size = static_cast<std::size_t>(n);
    Numbers re = bench::positive_definite(size, 2);
    Numbers im = bench::random_numbers(size * size, 3);
    bench::mirror(im, size, -1.0);
    for (std::size_t j = 0; j < size; ++j)
        im[j * size + j] = 0.0;
    return {n, std::move(re), std::move(im)};
}

} // namespace

int main()
{
    bench::header("complex factorisations by LAPACK");
    for (const unsigned threads : {1U, 2U})
        for (const int n : {3, 20, 200, 500}) {
            if (threads > 1 && n < 200)
                continue;
            Efi::MKL_NUM_THREADS = bench::threads_in_use = threads;
            const auto count = static_cast<std::size_t>(n) * static_cast<std::size_t>(n);
            Problem general(n, bench::random_numbers(count, 1), bench::random_numbers(count, 2));
            svd(general);
            lu(general);
            qr(general);
            Problem hermitian = definite(n);
            cholesky(hermitian);
        }
}
