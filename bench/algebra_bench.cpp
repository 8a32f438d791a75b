// Products, inverses and element-wise arithmetic as whole calls, beside Eigen, built for any x86-64
// processor as we are, on the same numbers.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/inverse.hpp"
#include "bench/compare.hpp"

#include <Eigen/Dense>
#include <cmath>

namespace {

using Eigen::Index;
using Eigen::MatrixXd;

MatrixXd some_matrix(Index rows, Index cols)
{
    MatrixXd A(rows, cols);
    for (Index j = 0; j < cols; ++j)
        for (Index i = 0; i < rows; ++i)
            A(i, j) = std::sin(static_cast<double>(1 + i * cols + j)) + (i == j ? 2.0 : 0.0);
    return A;
}

Qud::Handle host_value(const MatrixXd& A)
{
    Qud::FreshNumbers numbers = Qud::fresh_numbers(static_cast<std::size_t>(A.size()));
    std::copy(A.data(), A.data() + A.size(), numbers.get());
    return Qud::MatVal::make(static_cast<std::uint32_t>(A.rows()), static_cast<std::uint32_t>(A.cols()), numbers);
}

/// Close in the norm of Frobenius, with room for rounding that the condition of A amplifies.
bool agree(const Qud::Handle& ours, const MatrixXd& peer)
{
    const Qud::MatVal& M = *Qud::matrix_of(ours);
    const Eigen::Map<const MatrixXd> mine(M.m_rarr.get() + M.m_offset, M.Rows(), M.Cols());
    return (mine - peer).norm() <= 1e-9 * peer.norm();
}

void products(Index n)
{
    const MatrixXd A = some_matrix(n, n);
    const Qud::Handle a = host_value(A);
    const auto size = static_cast<std::size_t>(n);
    bench::compare(
        {.name = "A * A", .n = size, .peer = "Eigen"}, [&] { return Efi::Matrix::mult(a, a); },
        [&] { return MatrixXd(A * A); }, agree);
}

void inverses(Index n)
{
    const MatrixXd A = some_matrix(n, n);
    const Qud::Handle a = host_value(A);
    const auto size = static_cast<std::size_t>(n);
    bench::compare(
        {.name = "inv, strict", .n = size, .peer = "Eigen"}, [&] { return Efi::Matrix::inv(a); },
        [&] { return MatrixXd(A.partialPivLu().inverse()); }, agree);
}

void elements(Index n)
{
    const MatrixXd A = some_matrix(n, n);
    const Qud::Handle a = host_value(A);
    const Qud::Handle factor = Qud::NumVal::make(2.5);
    const auto size = static_cast<std::size_t>(n);
    bench::compare(
        {.name = "A * 2.5", .n = size, .peer = "Eigen"}, [&] { return Efi::Matrix::mult(a, factor); },
        [&] { return MatrixXd(A * 2.5); }, agree);
}

} // namespace

int main()
{
    Efi::IntelMKL::setNumThreads(Qud::NumVal::make(1.0)); // Eigen has one too
    bench::header("algebra");
    for (const Index n : {3, 10, 11, 50, 200, 500})
        products(n);
    for (const Index n : {3, 10, 50, 200, 500})
        inverses(n);
    for (const Index n : {3, 100, 1000})
        elements(n);
    return 0;
}
