// `lu` as whole calls beside LAPACK's factorisation with the same forming of P, L and U.
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bailuxsko/lu.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numeric>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using bench::Numbers;
using Complex = std::complex<double>;

/// P, L and U side by side, as `lu` packs them, from what LAPACK leaves. The arrays are kept between calls.
template <typename Element>
class Peer {
public:
    Peer(std::size_t n, std::vector<Element> A) : m_n(n), m_A(std::move(A)), m_LU(m_A.size()), m_packed(3 * m_A.size())
    {
    }

    const std::vector<Element>& factorise()
    {
        std::copy(m_A.begin(), m_A.end(), m_LU.begin());
        std::vector<int> pivots1(m_n);
        const int size = static_cast<int>(m_n);
        int info = 0;
        if constexpr (std::is_same_v<Element, double>)
            lapack::fortran::dgetrf_(&size, &size, m_LU.data(), &size, pivots1.data(), &info);
        else
            lapack::fortran::zgetrf_(&size, &size, m_LU.data(), &size, pivots1.data(), &info);
        form(pivots1);
        return m_packed;
    }

private:
    void form(const std::vector<int>& pivots1)
    {
        const std::size_t area = m_n * m_n;
        std::vector<std::size_t> where(m_n);
        std::iota(where.begin(), where.end(), std::size_t{0});
        for (std::size_t k = 0; k < m_n; ++k)
            std::swap(where[k], where[static_cast<std::size_t>(pivots1[k] - 1)]);
        std::fill_n(m_packed.begin(), area, Element{0.0});
        for (std::size_t v = 0; v < m_n; ++v)
            m_packed[v + where[v] * m_n] = 1.0;
        for (std::size_t j = 0; j < m_n; ++j) {
            Element* const l = m_packed.data() + area + j * m_n;
            Element* const u = l + area;
            const Element* const both = m_LU.data() + j * m_n;
            std::fill_n(l, j, Element{0.0});
            l[j] = 1.0;
            std::copy(both + j + 1, both + m_n, l + j + 1);
            std::copy(both, both + j + 1, u);
            std::fill(u + j + 1, u + m_n, Element{0.0});
        }
    }

    std::size_t m_n;
    std::vector<Element> m_A;
    std::vector<Element> m_LU;
    std::vector<Element> m_packed;
};

/// The largest element of P * A - L * U against that of A; the pivoting rules differ, so the factors may.
template <typename Element, typename At>
double residual(std::size_t n, const std::vector<Element>& A, At at)
{
    double off = 0.0;
    double largest = 0.0;
    for (std::size_t i = 0; i < n; i += std::max<std::size_t>(n / 8, 1)) {
        std::size_t row = 0;
        while (std::abs(at(i, row)) == 0.0)
            ++row;
        for (std::size_t j = 0; j < n; ++j) {
            Element sum = A[row + j * n];
            for (std::size_t k = 0; k < n; ++k)
                sum -= at(i, n + k) * at(k, 2 * n + j);
            off = std::max(off, std::abs(sum));
            largest = std::max(largest, std::abs(A[row + j * n]));
        }
    }
    return off / largest;
}

constexpr double enough = 1e-10;

void compare_real(std::size_t n, double at_most)
{
    const Numbers A = bench::random_numbers(n * n, n);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    Peer<double> peer(n, A);
    bench::compare(
        {.name = "lu", .n = n, .peer = "dgetrf, P, L and U formed", .at_most = at_most},
        [&] { return Efi::Matrix::lu(a); }, [&]() -> const Numbers& { return peer.factorise(); },
        [&](const Qud::Handle& ours, const Numbers& peers) {
            const Qud::MatVal& packed = *Qud::matrix_of(ours);
            return residual(n, A, [&](std::size_t i, std::size_t j) { return packed.real(i, j); }) < enough &&
                   residual(n, A, [&](std::size_t i, std::size_t j) { return peers[i + j * n]; }) < enough;
        });
}

void compare_complex(std::size_t n, double at_most)
{
    const Numbers re = bench::random_numbers(n * n, n);
    const Numbers im = bench::random_numbers(n * n, n + 1);
    const Qud::Handle a = bench::host_matrix(n, n, re, im);
    std::vector<Complex> A(n * n);
    bench::interleave(re, im, A);
    Peer<Complex> peer(n, A);
    bench::compare(
        {.name = "lu, complex", .n = n, .peer = "zgetrf, P, L and U formed", .at_most = at_most},
        [&] { return Efi::Matrix::lu(a); }, [&]() -> const std::vector<Complex>& { return peer.factorise(); },
        [&](const Qud::Handle& ours, const std::vector<Complex>& peers) {
            const Qud::MatVal& packed = *Qud::matrix_of(ours);
            const auto at = [&](std::size_t i, std::size_t j) { return Complex{packed.real(i, j), packed.imag(i, j)}; };
            return residual(n, A, at) < enough &&
                   residual(n, A, [&](std::size_t i, std::size_t j) { return peers[i + j * n]; }) < enough;
        });
}

} // namespace

int main()
{
    Efi::IntelMKL::setNumThreads(Qud::NumVal::make(1.0));
    bench::header("lu");
    compare_real(100, 0.0);
    for (const std::size_t n : {50U, 200U, 500U, 1000U})
        compare_real(n, 1.05);
    compare_complex(50, 0.0);
    for (const std::size_t n : {200U, 500U})
        compare_complex(n, 1.4);
    return 0;
}
