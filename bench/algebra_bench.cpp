// Inverses, powers and element-wise arithmetic as whole calls, beside LAPACK, BLAS and NumPy.
#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/inverse.hpp"
#include "bailuxsko/lapack/fortran.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "bench/python_peer.hpp"

#include <algorithm>
#include <cblas.h>
#include <string>
#include <utility>
#include <vector>

namespace {

using bench::Numbers;

bool agree(const Qud::Handle& ours, const Numbers& peer)
{
    return bench::agree_within(1e-9, ours, peer);
}

/// Random numbers with a diagonal that keeps the matrix far from singular ones.
Numbers regular_matrix(std::size_t n)
{
    Numbers A = bench::random_numbers(n * n, n);
    for (std::size_t i = 0; i < n; ++i)
        A[i + i * n] += 4.0;
    return A;
}

void inverse(std::size_t n)
{
    const Numbers A = regular_matrix(n);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    const int size = static_cast<int>(n);
    const int lwork = size * 64;
    Numbers X(n * n);
    Numbers work(static_cast<std::size_t>(lwork));
    std::vector<int> pivots1(n);
    bench::compare(
        {.name = "inv, strict", .n = n, .peer = "dgetrf and dgetri, A copied", .at_most = 1.3},
        [&] { return Efi::Matrix::inv(a); },
        [&]() -> const Numbers& {
            std::copy(A.begin(), A.end(), X.begin());
            int info = 0;
            lapack::fortran::dgetrf_(&size, &size, X.data(), &size, pivots1.data(), &info);
            lapack::fortran::dgetri_(&size, X.data(), &size, pivots1.data(), work.data(), &lwork, &info);
            return X;
        },
        agree);
}

/// A^37 by the products that 37 = 100101 in binary asks for.
class Chain {
public:
    explicit Chain(std::size_t n) : m_n(static_cast<int>(n)), m_square(n * n), m_power(n * n), m_next(n * n) {}

    const Numbers& power37(const Numbers& A)
    {
        m_square = A;
        m_power = A;
        for (int bit = 2; bit <= 32; bit *= 2) {
            multiply(m_square, m_square, m_square);
            if ((37 & bit) != 0)
                multiply(m_power, m_square, m_power);
        }
        return m_power;
    }

private:
    void multiply(const Numbers& A, const Numbers& B, Numbers& C)
    {
        cblas_dgemm(CblasColMajor, CblasNoTrans, CblasNoTrans, m_n, m_n, m_n, 1.0, A.data(), m_n, B.data(), m_n, 0.0,
                    m_next.data(), m_n);
        std::swap(C, m_next);
    }

    int m_n;
    Numbers m_square, m_power, m_next;
};

void power(std::size_t n)
{
    Numbers A = bench::random_numbers(n * n, n);
    for (double& x : A)
        x *= 1.7 / std::sqrt(static_cast<double>(n)); // so that the power neither vanishes nor overflows
    const Qud::Handle a = bench::host_matrix(n, n, A);
    const Qud::Handle exponent = Qud::NumVal::make(37.0);
    Chain chain(n);
    bench::compare(
        {.name = "M^37", .n = n, .peer = "the same products by dgemm", .at_most = 1.2},
        [&] { return Efi::Matrix::pwr(a, exponent); }, [&]() -> const Numbers& { return chain.power37(A); }, agree);
}

template <class Ours>
void elements(const char* name, std::size_t count, const std::string& expression, Ours ours)
{
    const Numbers x = bench::random_numbers(count, 1);
    Numbers y = bench::random_numbers(count, 2);
    for (double& value : y)
        value += 2.0;
    const Qud::Handle a = bench::host_matrix(count, 1, x);
    const Qud::Handle b = bench::host_matrix(count, 1, y);
    bench::compare_with_python(
        {.name = name, .n = count, .peer = "NumPy", .at_most = 1.2},
        [&](bench::PythonPeer& peer) { return peer.load("x", count, 1, x) && peer.load("y", count, 1, y); }, expression,
        [&] { return ours(a, b); }, agree);
}

} // namespace

int main()
{
    using Qud::Handle;
    Efi::IntelMKL::setNumThreads(Qud::NumVal::make(1.0));
    bench::header("algebra");
    for (const std::size_t n : {50U, 200U, 500U, 1000U})
        inverse(n);
    for (const std::size_t n : {50U, 200U, 500U})
        power(n);
    const Handle factor = Qud::NumVal::make(2.5);
    elements("column * 2.5", 1'000'000, "x * 2.5",
             [&](const Handle& a, const Handle&) { return Efi::Matrix::mult(a, factor); });
    elements("column / column", 1'000'000, "x / y",
             [](const Handle& a, const Handle& b) { return Efi::Matrix::div(a, b); });
    elements("sqr of a column", 1'000'000, "x * x", [](const Handle& a, const Handle&) { return Efi::Matrix::sqr(a); });
    return 0;
}
