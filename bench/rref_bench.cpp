// rref, as a whole call, beside Gauss-Jordan elimination with partial pivoting written on Eigen, built for any x86-64
// processor as we are: a rank-one update a step.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/rref.hpp"
#include "bench/compare.hpp"
#include "bench/inputs.hpp"

#include <Eigen/Dense>
#include <cstddef>

namespace {

const Eigen::MatrixXd& reduce(Eigen::MatrixXd& M, double tolerance)
{
    for (Eigen::Index c = 0, p = 0; c < M.cols() && p < M.rows(); ++c) {
        Eigen::Index q;
        if (M.col(c).tail(M.rows() - p).cwiseAbs().maxCoeff(&q) <= tolerance)
            continue;
        M.row(p).swap(M.row(p + q));
        M.row(p).tail(M.cols() - c) /= M(p, c);
        Eigen::VectorXd multipliers = M.col(c);
        multipliers(p) = 0.0;
        const Eigen::RowVectorXd pivot_row = M.row(p).tail(M.cols() - c);
        M.rightCols(M.cols() - c).noalias() -= multipliers * pivot_row;
        ++p;
    }
    return M;
}

/// n rows, the last columns a right-hand side, so that the result is more than the identity.
void rref(std::size_t n)
{
    const std::size_t cols = n + 1;
    const bench::Numbers numbers = bench::random_numbers(n * cols, n);
    const Eigen::MatrixXd A = Eigen::Map<const Eigen::MatrixXd>(numbers.data(), static_cast<Eigen::Index>(n),
                                                                static_cast<Eigen::Index>(cols));
    const Qud::Handle a = bench::host_matrix(n, cols, numbers);
    Eigen::MatrixXd M;
    bench::compare(
        {.name = "rref", .n = n, .peer = "Eigen", .at_most = n == 200 || n == 500 ? 1.0 : 0.0},
        [&] { return Efi::Matrix::rref(a); },
        [&]() -> const Eigen::MatrixXd& {
            M = A;
            return reduce(M, 1e-12 * static_cast<double>(cols));
        },
        [](const Qud::Handle& ours, const Eigen::MatrixXd& peer) {
            return bench::agree_within(1e-8, ours, {peer.data(), static_cast<std::size_t>(peer.size())});
        });
}

} // namespace

int main()
{
    bench::header("rref");
    for (const std::size_t n : {3, 10, 50, 200, 500, 1000})
        rref(n);
    return 0;
}
