// qr, as a whole call, by rotations, beside LAPACK's dgeqrf and dorgqr, by reflectors, on a fresh copy.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/lapack/provider.hpp"
#include "bailuxsko/qr.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

extern "C" void dgeqrf_(const int* m, const int* n, double* A, const int* lda, double* tau, double* work,
                        const int* lwork, int* info);
extern "C" void dorgqr_(const int* m, const int* n, const int* k, double* A, const int* lda, const double* tau,
                        double* work, const int* lwork, int* info);

namespace {

/// Q and R by LAPACK, of an n by n matrix.
class Reflectors {
public:
    explicit Reflectors(std::size_t n) : m_n(n), m_Q(n * n), m_R(n * n), m_tau(n), m_work(64 * n) {}

    const Reflectors& factorise(const bench::Numbers& A)
    {
        const int n = static_cast<int>(m_n);
        const int lwork = static_cast<int>(m_work.size());
        int info;
        std::copy(A.begin(), A.end(), m_Q.begin());
        dgeqrf_(&n, &n, m_Q.data(), &n, m_tau.data(), m_work.data(), &lwork, &info);
        for (std::size_t j = 0; j < m_n; ++j) {
            const auto column = static_cast<std::ptrdiff_t>(j * m_n);
            const auto end = std::copy_n(m_Q.begin() + column, j + 1, m_R.begin() + column);
            std::fill_n(end, m_n - j - 1, 0.0);
        }
        dorgqr_(&n, &n, &n, m_Q.data(), &n, m_tau.data(), m_work.data(), &lwork, &info);
        return *this;
    }

    /// The magnitudes of our factors are LAPACK's: signs are free, column by column of Q and row by row of R.
    bool agree(const Qud::Handle& ours) const
    {
        const Qud::MatVal& QR = *Qud::matrix_of(ours);
        double difference = 0.0;
        for (std::size_t j = 0; j < m_n; ++j)
            for (std::size_t i = 0; i < m_n; ++i)
                difference = std::max({difference, std::fabs(std::fabs(QR.real(i, j)) - std::fabs(m_Q[i + j * m_n])),
                                       std::fabs(std::fabs(QR.real(i, m_n + j)) - std::fabs(m_R[i + j * m_n]))});
        return difference < 1e-10;
    }

private:
    std::size_t m_n;
    bench::Numbers m_Q, m_R, m_tau, m_work;
};

void qr(std::size_t n, double at_most)
{
    const bench::Numbers A = bench::random_numbers(n * n, n);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    Reflectors peer(n);
    bench::compare(
        {.name = "qr", .n = n, .peer = "dgeqrf + dorgqr", .at_most = at_most}, [&] { return Efi::Matrix::qr(a); },
        [&]() -> const Reflectors& { return peer.factorise(A); },
        [](const Qud::Handle& ours, const Reflectors& theirs) { return theirs.agree(ours); });
}

} // namespace

int main()
{
    lapack::MKL_Set_Num_Threads(1);
    bench::header("qr");
    qr(3, 0.0);
    qr(10, 0.0);
    qr(50, 1.3);
    qr(100, 0.0);
    qr(200, 1.8);
    qr(500, 2.6);
    return 0;
}
