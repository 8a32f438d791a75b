// Eigenvalues by the library's own code beside LAPACK's zgeev without vectors.
#include "bailuxsko/comeval.hpp"
#include "bailuxsko/lapack/provider.hpp"

#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

using Complex = std::complex<double>;

extern "C" void zgeev_(const char* jobvl, const char* jobvr, const int* n, Complex* A, const int* lda, Complex* w,
                       Complex* vl, const int* ldvl, Complex* vr, const int* ldvr, Complex* work, const int* lwork,
                       double* rwork, int* info, std::size_t, std::size_t);

namespace {

/// Each of the peer's eigenvalues stands somewhere among ours.
bool agree(const Qud::Handle& ours, const std::vector<Complex>& peer)
{
    const Qud::MatVal& w = *Qud::matrix_of(ours);
    std::vector<Complex> left;
    for (std::size_t i = 0; i < w.Rows(); ++i)
        left.emplace_back(w.real(i, 0), w.imag(i, 0));
    for (const Complex& z : peer) {
        const auto nearest = std::min_element(left.begin(), left.end(), [&](const Complex& a, const Complex& b) {
            return std::abs(a - z) < std::abs(b - z);
        });
        if (nearest == left.end() || std::abs(*nearest - z) > 1e-9)
            return false;
        left.erase(nearest);
    }
    return left.empty();
}

void compare(const char* name, std::size_t n, bool is_complex, double at_most)
{
    const bench::Numbers re = bench::random_numbers(n * n, n);
    const bench::Numbers im = is_complex ? bench::random_numbers(n * n, n + 1) : bench::Numbers();
    const Qud::Handle a = bench::host_matrix(n, n, re, im);
    std::vector<Complex> A(n * n);
    bench::interleave(re, im, A);
    std::vector<Complex> copy(n * n);
    std::vector<Complex> w(n);
    std::vector<Complex> work(n * 66);
    std::vector<double> rwork(2 * n);
    const int size = static_cast<int>(n);
    const int lwork = static_cast<int>(work.size());
    const int one = 1;
    bench::compare(
        {.name = name, .n = n, .peer = "zgeev without vectors, A copied", .at_most = at_most},
        [&] { return Efi::Matrix::comeval(a); },
        [&]() -> const std::vector<Complex>& {
            std::copy(A.begin(), A.end(), copy.begin());
            int info = 0;
            zgeev_("N", "N", &size, copy.data(), &size, w.data(), nullptr, &one, nullptr, &one, work.data(), &lwork,
                   rwork.data(), &info, 1, 1);
            return w;
        },
        agree);
}

} // namespace

int main()
{
    lapack::MKL_Set_Num_Threads(1);
    bench::header("comeval");
    compare("comeval, complex", 50, true, 0.6);
    compare("comeval, complex", 200, true, 0.9);
    compare("comeval, complex", 500, true, 1.3);
    compare("comeval, real", 50, false, 0.6);
    compare("comeval, real", 200, false, 0.9);
    compare("comeval, real", 500, false, 1.3);
    return 0;
}
