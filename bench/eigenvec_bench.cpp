// An eigenvector by inverse iteration beside the factorisation and the eleven solutions that it consists of.
#include "bailuxsko/comeval.hpp"
#include "bailuxsko/eigenvec.hpp"
#include "bailuxsko/lapack/provider.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <vector>

using Complex = std::complex<double>;

extern "C" {
void zgetrf_(const int* m, const int* n, Complex* A, const int* lda, int* ipiv, int* info);
void zgetrs_(const char* trans, const int* n, const int* nrhs, const Complex* A, const int* lda, const int* ipiv,
             Complex* B, const int* ldb, int* info, std::size_t);
}

namespace {

constexpr int solutions = 11;

/// The same direction: the inner product of two vectors of length 1 has modulus 1.
bool agree(const Qud::Handle& ours, const std::vector<Complex>& peer)
{
    const Qud::MatVal& v = *Qud::matrix_of(ours);
    Complex product = 0.0;
    for (std::size_t i = 0; i < v.Rows(); ++i)
        product += std::conj(Complex(v.real(i, 0), v.imag(i, 0))) * peer[i];
    return std::fabs(std::abs(product) - 1.0) < 1e-9;
}

void compare(std::size_t n)
{
    const bench::Numbers re = bench::random_numbers(n * n, n);
    const bench::Numbers im = bench::random_numbers(n * n, n + 1);
    const Qud::Handle a = bench::host_matrix(n, n, re, im);
    const Qud::Handle w = Efi::Matrix::comeval(a);
    const Complex z(Qud::matrix_of(w)->real(0, 0), Qud::matrix_of(w)->imag(0, 0));
    const Qud::Handle eigenvalue = Qud::NumVal::make(z.real(), z.imag());
    std::vector<Complex> shifted(n * n);
    std::vector<Complex> factors(n * n);
    std::vector<Complex> x(n);
    std::vector<int> pivots1(n);
    for (std::size_t i = 0; i < n * n; ++i)
        shifted[i] = Complex(re[i], im[i]) - (i % (n + 1) == 0 ? z - 1e-12 : 0.0);
    const int size = static_cast<int>(n);
    const int one = 1;
    bench::compare(
        {.name = "eigenvec", .n = n, .peer = "zgetrf and 11 zgetrs", .at_most = 2.0},
        [&] { return Efi::Matrix::eigenvec(a, eigenvalue); },
        [&]() -> const std::vector<Complex>& {
            std::copy(shifted.begin(), shifted.end(), factors.begin());
            int info = 0;
            zgetrf_(&size, &size, factors.data(), &size, pivots1.data(), &info);
            std::fill(x.begin(), x.end(), 1.0);
            for (int k = 0; k < solutions; ++k) {
                zgetrs_("N", &size, &one, factors.data(), &size, pivots1.data(), x.data(), &size, &info, 1);
                double squares = 0.0;
                for (const Complex& element : x)
                    squares += std::norm(element);
                for (Complex& element : x)
                    element /= std::sqrt(squares);
            }
            return x;
        },
        agree);
}

} // namespace

int main()
{
    lapack::MKL_Set_Num_Threads(1);
    bench::header("eigenvec");
    for (const std::size_t n : {50, 200, 500})
        compare(n);
    return 0;
}
