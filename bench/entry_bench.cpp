// The cost of a call: the guard around a worker that does nothing, a shape query, and `lu` of small matrices beside
// Eigen's dynamic matrices.
#include "bailuxhost/matval.hpp"
#include "bailuxsko/frame/guard.hpp"
#include "bailuxsko/lu.hpp"
#include "bailuxsko/shape.hpp"
#include "bench/compare.hpp"
#include "efiutl/context.hpp"

#include <Eigen/Dense>
#include <cmath>

namespace {

double passes_through(EfiCallContext*, double x)
{
    return x;
}

Eigen::MatrixXd some_matrix(Eigen::Index n)
{
    Eigen::MatrixXd A(n, n);
    for (Eigen::Index j = 0; j < n; ++j)
        for (Eigen::Index i = 0; i < n; ++i)
            A(i, j) = std::sin(static_cast<double>(1 + i * n + j)) + (i == j ? 2.0 : 0.0);
    return A;
}

struct Factors {
    Eigen::MatrixXd P, L, U;
};

Factors eigen_lu(const Eigen::MatrixXd& A)
{
    const Eigen::PartialPivLU<Eigen::MatrixXd> lu(A);
    Factors f;
    f.P = lu.permutationP();
    f.L = lu.matrixLU().triangularView<Eigen::UnitLower>();
    f.U = lu.matrixLU().triangularView<Eigen::Upper>();
    return f;
}

/// Both factorisations reproduce A; the pivoting rules differ, so the factors themselves may.
bool both_factorise(const Eigen::MatrixXd& A, const Qud::Handle& ours, const Factors& peer)
{
    const Qud::MatVal& packed = *Qud::matrix_of(ours);
    const Eigen::Map<const Eigen::MatrixXd> all(packed.m_rarr, packed.Rows(), packed.Cols());
    const Eigen::Index n = A.rows();
    const double ours_off = (all.leftCols(n) * A - all.middleCols(n, n) * all.rightCols(n)).norm();
    const double peer_off = (peer.P * A - peer.L * peer.U).norm();
    const double enough = 1e-14 * static_cast<double>(n) * A.norm();
    return ours_off < enough && peer_off < enough;
}

} // namespace

int main()
{
    bench::header("entry");
    EfiCallContext context;
    double (*volatile worker)(EfiCallContext*, double) = passes_through;
    bench::compare(
        {.name = "guard", .n = 1, .peer = "the bare call"},
        [&] {
            double result = 0.0;
            Efi::native_call2<double, EfiCallContext*, double>(result, worker, &context, 1.0);
            return result;
        },
        [&] { return worker(&context, 1.0); }, [](double a, double b) { return a == b; });

    const Qud::Handle M = Qud::MatVal::make(3, 4, Qud::zero_numbers(12));
    bench::compare(
        {.name = "rows", .n = 3, .peer = "making a number"}, [&] { return Efi::Matrix::rows(M); },
        [] { return Qud::NumVal::make(3.0); },
        [](const Qud::Handle& a, const Qud::Handle& b) { return Qud::as_number(a)->re() == Qud::as_number(b)->re(); });

    for (const Eigen::Index n : {1, 2, 3, 5, 10, 20}) {
        const Eigen::MatrixXd A = some_matrix(n);
        Qud::FreshNumbers numbers = Qud::fresh_numbers(static_cast<std::size_t>(n * n));
        std::copy(A.data(), A.data() + n * n, numbers.get());
        const auto size = static_cast<std::uint32_t>(n);
        const Qud::Handle value = Qud::MatVal::make(size, size, numbers);
        bench::compare(
            {.name = "lu, the whole call", .n = size, .peer = "Eigen PartialPivLU with P, L, U"},
            [&] { return Efi::Matrix::lu(value); }, [&] { return eigen_lu(A); },
            [&](const Qud::Handle& ours, const Factors& peer) { return both_factorise(A, ours, peer); });
    }
    return 0;
}
