// The library's own factorisations beside LAPACK's, each on a fresh copy of the matrix.
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lapack/provider.hpp"
#include "bench/compare.hpp"
#include "efiutl/context.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace {

using Complex = std::complex<double>;

std::vector<double> random_numbers(std::size_t count, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::vector<double> numbers(count);
    for (double& x : numbers)
        x = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
    return numbers;
}

/// A factored matrix, and the row, counted from 0, that each step exchanged its own with.
template <typename Element>
struct Factored {
    std::vector<Element> m_LU;
    std::vector<std::size_t> m_pivots;
};

/// The solution of A x = b with b all ones: both pivoting rules must come to the same one.
template <typename Element>
std::vector<Element> solution(const Factored<Element>& F)
{
    const std::size_t n = F.m_pivots.size();
    const auto at = [&](std::size_t i, std::size_t j) { return F.m_LU[i + j * n]; };
    std::vector<Element> x(n, 1.0);
    for (std::size_t k = 0; k < n; ++k)
        std::swap(x[k], x[F.m_pivots[k]]);
    for (std::size_t k = 0; k < n; ++k)
        for (std::size_t i = k + 1; i < n; ++i)
            x[i] -= at(i, k) * x[k];
    for (std::size_t k = n; k-- > 0;) {
        x[k] /= at(k, k);
        for (std::size_t i = 0; i < k; ++i)
            x[i] -= at(i, k) * x[k];
    }
    return x;
}

template <typename Element>
bool solve_alike(const Factored<Element>& ours, const Factored<Element>& peer)
{
    const std::vector<Element> a = solution(ours);
    const std::vector<Element> b = solution(peer);
    double difference = 0.0;
    double norm = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        difference = std::max(difference, std::abs(a[i] - b[i]));
        norm = std::max(norm, std::abs(b[i]));
    }
    return difference <= 1e-8 * norm; // the matrices are random, some of them are not well conditioned
}

void compare_real(std::uint32_t n)
{
    const std::vector<double> A = random_numbers(std::size_t{n} * n, n);
    std::vector<double> ours = A;
    std::vector<double> peer = A;
    std::vector<double> pivots(n);
    std::vector<int> pivots1(n);
    bench::compare(
        {.name = "lu_decomp", .n = n, .peer = "dgetrf"},
        [&] {
            std::copy(A.begin(), A.end(), ours.begin());
            EfiCallContext ctx;
            double sign;
            native::lu_decomp(&ctx, aMatrix::mk(ctx.m_arena, n, n, ours.data(), nullptr), pivots.data(), &sign, false);
            return 0;
        },
        [&] {
            std::copy(A.begin(), A.end(), peer.begin());
            const int size = static_cast<int>(n);
            int info;
            lapack::fortran::dgetrf_(&size, &size, peer.data(), &size, pivots1.data(), &info);
            return 0;
        },
        [&](int, int) {
            Factored<double> a{.m_LU = ours, .m_pivots = {}};
            Factored<double> b{.m_LU = peer, .m_pivots = {}};
            for (std::size_t k = 0; k < n; ++k) {
                a.m_pivots.push_back(static_cast<std::size_t>(pivots[k]));
                b.m_pivots.push_back(static_cast<std::size_t>(pivots1[k] - 1));
            }
            return solve_alike(a, b);
        });
}

void compare_complex(std::uint32_t n)
{
    const std::size_t area = std::size_t{n} * n;
    const std::vector<double> re = random_numbers(area, n);
    const std::vector<double> im = random_numbers(area, n + 1);
    std::vector<Complex> A(area);
    for (std::size_t i = 0; i < area; ++i)
        A[i] = {re[i], im[i]};
    std::vector<double> ours_re = re;
    std::vector<double> ours_im = im;
    std::vector<Complex> peer = A;
    std::vector<double> our_pivots1(n);
    std::vector<int> pivots1(n);
    bench::compare(
        {.name = "clu_decomp", .n = n, .peer = "zgetrf"},
        [&] {
            std::copy(re.begin(), re.end(), ours_re.begin());
            std::copy(im.begin(), im.end(), ours_im.begin());
            EfiCallContext ctx;
            double sign;
            native::clu_decomp(&ctx, aMatrix::mk(ctx.m_arena, n, n, ours_re.data(), ours_im.data()), our_pivots1.data(),
                               &sign, false);
            return 0;
        },
        [&] {
            std::copy(A.begin(), A.end(), peer.begin());
            const int size = static_cast<int>(n);
            int info;
            lapack::fortran::zgetrf_(&size, &size, peer.data(), &size, pivots1.data(), &info);
            return 0;
        },
        [&](int, int) {
            Factored<Complex> a{.m_LU = A, .m_pivots = {}};
            Factored<Complex> b{.m_LU = peer, .m_pivots = {}};
            for (std::size_t i = 0; i < area; ++i)
                a.m_LU[i] = {ours_re[i], ours_im[i]};
            for (std::size_t k = 0; k < n; ++k) {
                a.m_pivots.push_back(static_cast<std::size_t>(our_pivots1[k] - 1.0));
                b.m_pivots.push_back(static_cast<std::size_t>(pivots1[k] - 1));
            }
            return solve_alike(a, b);
        });
}

} // namespace

int main()
{
    lapack::MKL_Set_Num_Threads(1);
    bench::header("lu");
    for (const std::uint32_t n : {3U, 10U, 50U, 100U, 200U, 500U, 1000U})
        compare_real(n);
    for (const std::uint32_t n : {3U, 10U, 50U, 200U, 500U})
        compare_complex(n);
    return 0;
}
