// rank, norm2, cond2, svd and geninv on host values, beside dgesvd without vectors, with vectors, and NumPy's pinv.
#include "bailuxsko/lapack/provider.hpp"
#include "bailuxsko/norms.hpp"
#include "bailuxsko/svd.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "bench/python_peer.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

extern "C" void dgesvd_(const char* jobu, const char* jobvt, const int* m, const int* n, double* a, const int* lda,
                        double* s, double* u, const int* ldu, double* vt, const int* ldvt, double* work,
                        const int* lwork, int* info);

namespace {

using bench::Numbers;

/// dgesvd on a fresh copy of a square matrix, with everything it needs at hand.
class Peer {
public:
    Peer(const Numbers& A, std::size_t n, char job) : m_A(A), m_n(static_cast<int>(n)), m_job(job), m_s(n)
    {
        m_factored = A;
        if (job == 'S') {
            m_U.resize(n * n);
            m_Vt.resize(n * n);
        }
        double best = 0.0;
        m_lwork = -1;
        decompose(&best);
        m_lwork = static_cast<int>(best);
        m_work.resize(static_cast<std::size_t>(m_lwork));
    }

    const Numbers& operator()()
    {
        std::copy(m_A.begin(), m_A.end(), m_factored.begin());
        decompose(m_work.data());
        return m_s;
    }

private:
    void decompose(double* work)
    {
        int info = 0;
        dgesvd_(&m_job, &m_job, &m_n, &m_n, m_factored.data(), &m_n, m_s.data(), m_U.data(), &m_n, m_Vt.data(), &m_n,
                work, &m_lwork, &info);
    }

    const Numbers& m_A;
    int m_n;
    char m_job;
    Numbers m_s, m_factored, m_U, m_Vt, m_work;
    int m_lwork = 0;
};

void rank(std::size_t n)
{
    const Numbers A = bench::random_numbers(n * n, 1);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    Peer peer(A, n, 'N');
    bench::compare(
        {.name = "rank", .n = n, .peer = "dgesvd without vectors", .at_most = 1.7},
        [&] { return Efi::Matrix::rank(a); }, [&]() -> const Numbers& { return peer(); },
        [&](const Qud::Handle& ours, const Numbers& s) {
            const double tol = static_cast<double>(n) * s[0] * std::numeric_limits<double>::epsilon();
            const auto above = std::count_if(s.begin(), s.end(), [&](double x) { return x > tol; });
            return static_cast<const Qud::NumVal&>(*ours).re() == static_cast<double>(above);
        });
}

/// A function of the singular values: ours as a call, the peer's from what dgesvd leaves.
template <class OfValues>
void of_values(const char* name, std::size_t n, Qud::Handle (*ours)(const Qud::Handle&), OfValues of_values)
{
    const Numbers A = bench::random_numbers(n * n, 1);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    Peer peer(A, n, 'N');
    bench::compare(
        {.name = name, .n = n, .peer = "dgesvd without vectors", .at_most = 1.7}, [&] { return ours(a); },
        [&] { return of_values(peer()); },
        [](const Qud::Handle& x, double y) {
            return std::fabs(static_cast<const Qud::NumVal&>(*x).re() - y) <= 1e-8 * y;
        });
}

/// Whether U * diag(s) * V' is A.
bool reproduces(const Qud::Handle& UV, const Numbers& s, const Numbers& A)
{
    const Qud::MatVal& M = *Qud::matrix_of(UV);
    const std::size_t n = s.size();
    double difference = 0.0;
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            double sum = 0.0;
            for (std::size_t k = 0; k < n; ++k)
                sum += M.real(i, k) * s[k] * M.real(n + j, k);
            difference = std::max(difference, std::fabs(sum - A[i + j * n]));
        }
    return difference <= 1e-12 * s[0];
}

void svd(std::size_t n)
{
    const Numbers A = bench::random_numbers(n * n, 1);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    Peer peer(A, n, 'S');
    bench::compare(
        {.name = "svd", .n = n, .peer = "dgesvd with vectors", .at_most = 0.8}, [&] { return Efi::Matrix::svd(a); },
        [&]() -> const Numbers& { return peer(); },
        [&](const Qud::Handle& ours, const Numbers& s) { return reproduces(ours, s, A); });
}

void geninv(std::size_t n)
{
    const Numbers A = bench::random_numbers(n * n, 1);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    bench::compare_with_python(
        {.name = "geninv", .n = n, .peer = "NumPy pinv", .at_most = 2.5},
        [&](bench::PythonPeer& peer) { return peer.load("A", n, n, A); }, "np.linalg.pinv(A)",
        [&] { return Efi::Matrix::geninv({.value = 1e-12}, a); },
        [](const Qud::Handle& ours, const Numbers& peer) { return bench::agree_within(1e-9, ours, peer); });
}

} // namespace

int main()
{
    lapack::MKL_Set_Num_Threads(1);
    bench::header("svd");
    for (const std::size_t n : {50U, 100U, 200U, 500U, 1000U})
        rank(n);
    for (const std::size_t n : {200U, 500U}) {
        of_values("norm2", n, Efi::Matrix::norm2, [](const Numbers& s) { return s.front(); });
        of_values("cond2", n, Efi::Matrix::cond2, [](const Numbers& s) { return s.front() / s.back(); });
    }
    for (const std::size_t n : {50U, 100U, 200U, 500U})
        svd(n);
    for (const std::size_t n : {50U, 200U, 300U})
        geninv(n);
    return 0;
}
