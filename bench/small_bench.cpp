// Calls on small matrices, where the way to the kernel costs more than the kernel, beside Eigen's dynamic matrices and
// NumPy.
#include "bailuxsko/arithmetic.hpp"
#include "bailuxsko/determinant.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/inverse.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"
#include "bench/python_peer.hpp"

#include <Eigen/Dense>

#include <cmath>
#include <string>
#include <type_traits>

namespace {

using bench::Numbers;
using Eigen::MatrixXd;

constexpr double of_numpy = 0.2; ///< a fifth of NumPy's time

/// Sizes without a ratio of their own have 0.
double at_most(std::size_t n)
{
    return n == 3 ? 3.0 : n == 10 ? 1.5 : 0.0;
}

/// One function of a matrix A, and perhaps a right-hand side b, in three worlds.
template <class Ours, class WithEigen>
void row(const char* name, std::size_t n, Ours ours, WithEigen with_eigen, const std::string& with_numpy)
{
    Numbers A = bench::random_numbers(n * n, 7);
    for (std::size_t i = 0; i < n; ++i)
        A[i + i * n] += 2.0;
    const Numbers b = bench::random_numbers(n, 8);
    const auto size = static_cast<Eigen::Index>(n);
    const MatrixXd M = Eigen::Map<const MatrixXd>(A.data(), size, size);
    const Eigen::VectorXd v = Eigen::Map<const Eigen::VectorXd>(b.data(), size);
    const Qud::Handle a = bench::host_matrix(n, n, A);
    const Qud::Handle right = bench::host_matrix(n, 1, b);
    const auto call = [&] { return ours(a, right); };
    bench::compare(
        {.name = name, .n = n, .peer = "Eigen, dynamic matrices", .at_most = at_most(n)}, call,
        [&] { return with_eigen(M, v); },
        [](const Qud::Handle& mine, const auto& peers) {
            if constexpr (std::is_same_v<std::decay_t<decltype(peers)>, double>)
                return std::fabs(Qud::as_number(mine)->re() - peers) <= 1e-9 * std::fabs(peers);
            else
                return bench::agree_within(1e-9, mine, {peers.data(), static_cast<std::size_t>(peers.size())});
        });
    bench::compare_with_python(
        {.name = name, .n = n, .peer = "NumPy", .at_most = of_numpy},
        [&](bench::PythonPeer& peer) { return peer.load("A", n, n, A) && peer.load("b", n, 1, b); }, with_numpy, call,
        [](const Qud::Handle& mine, const Numbers& peers) {
            if (const Qud::NumVal* const x = Qud::as_number(mine))
                return std::fabs(x->re() - peers.at(0)) <= 1e-9 * std::fabs(peers.at(0));
            return bench::agree_within(1e-9, mine, peers);
        });
}

} // namespace

int main()
{
    Efi::IntelMKL::setNumThreads(Qud::NumVal::make(1.0));
    bench::header("small");
    using Eigen::VectorXd;
    using Qud::Handle;
    for (const std::size_t n : {2U, 3U, 4U, 10U}) {
        row(
            "mult", n, [](const Handle& a, const Handle&) { return Efi::Matrix::mult(a, a); },
            [](const MatrixXd& A, const VectorXd&) { return MatrixXd(A * A); }, "A @ A");
        row(
            "inv", n, [](const Handle& a, const Handle&) { return Efi::Matrix::inv(a); },
            [](const MatrixXd& A, const VectorXd&) { return MatrixXd(A.partialPivLu().inverse()); },
            "np.linalg.inv(A)");
        row(
            "det", n, [](const Handle& a, const Handle&) { return Efi::Matrix::det(a); },
            [](const MatrixXd& A, const VectorXd&) { return A.partialPivLu().determinant(); }, "np.linalg.det(A)");
        row(
            "lsolve", n, [](const Handle& a, const Handle& b) { return Efi::IntelMKL::lsolve(a, b); },
            [](const MatrixXd& A, const VectorXd& b) { return VectorXd(A.partialPivLu().solve(b)); },
            "np.linalg.solve(A, b)");
    }
    return 0;
}
