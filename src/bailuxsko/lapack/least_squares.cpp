#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "bailuxsko/lapack/solve.hpp"

#include <algorithm>

namespace lapack {

namespace {

/// The reciprocal condition at which the rank of A ends.
constexpr double rcond = 1e-15;

struct Sizes {
    Sizes(const Qud::MatVal& A, const Qud::MatVal& B)
    {
        refuse_empty(A);
        refuse_empty(B);
        m = dimension(A.Rows());
        n = dimension(A.Cols());
        nrhs = dimension(B.Cols());
        ldb = std::max(m, n);
        // Enough for every shape: the routines need min(m, n) + max(2 min(m, n), n + 1, min(m, n) + nrhs).
        lwork = dimension(std::uint64_t{16} * static_cast<unsigned>(ldb) + B.Cols());
        solution_count = std::uint64_t{static_cast<unsigned>(ldb)} * B.Cols();
    }
    int m;
    int n;
    int nrhs;
    int ldb;
    int lwork;
    std::uint64_t solution_count;
};

/// B above the rows that only the solution has.
void pack_right_hand_side(const Qud::MatVal& B, double* x, std::size_t ldb)
{
    packMatval(B, x, ldb);
    for (std::size_t j = 0; j < B.Cols(); ++j)
        std::fill(x + j * ldb + B.Rows(), x + (j + 1) * ldb, 0.0);
}

} // namespace

Qud::Handle dgelss(EfiCallContext*, const Qud::MatVal& A, const Qud::MatVal& B)
{
    const DriverScope scope;
    const Sizes size(A, B);
    mkl_auto_ptr<double> factors;
    mkl_auto_ptr<int> jpvt;
    mkl_auto_ptr<double> work;
    double* const a = factors.allocate_uncleared(A.count());
    Qud::FreshNumbers x = result_numbers(size.solution_count);
    jpvt.allocate(A.Cols()); // zeros: every column is free to be a pivot
    work.allocate_uncleared(static_cast<unsigned>(size.lwork));
    packMatval(A, a, 0);
    pack_right_hand_side(B, x.get(), static_cast<std::size_t>(size.ldb));

    int rank = 0;
    int info = 0;
    routines().dgelsy(&size.m, &size.n, &size.nrhs, a, &size.m, x.get(), &size.ldb, jpvt.get(), &rcond, &rank,
                      work.get(), &size.lwork, &info);
    require_converged(info);
    return Qud::MatVal::make({.rows = A.Cols(),
                              .cols = B.Cols(),
                              .anr = static_cast<std::uint32_t>(size.ldb),
                              .real = std::move(x),
                              .imaginary = nullptr,
                              .units = {},
                              .entries = nullptr});
}

Qud::Handle zgelss(EfiCallContext*, const Qud::MatVal& A, const Qud::MatVal& B)
{
    const DriverScope scope;
    const Sizes size(A, B);
    const auto ldb = static_cast<std::size_t>(size.ldb);
    mkl_auto_ptr<MKL_Complex16> factors;
    mkl_auto_ptr<MKL_Complex16> solution;
    mkl_auto_ptr<int> jpvt;
    mkl_auto_ptr<MKL_Complex16> work;
    mkl_auto_ptr<double> rwork;
    MKL_Complex16* const a = complex_copy_and_a_column(A, factors);
    MKL_Complex16* const x = complex_copy(B, solution, ldb);
    jpvt.allocate(A.Cols());
    work.allocate_uncleared(static_cast<unsigned>(size.lwork));
    rwork.allocate_uncleared(std::uint64_t{5} * A.Cols());

    int rank = 0;
    int info = 0;
    routines().zgelsy(&size.m, &size.n, &size.nrhs, a, &size.m, x, &size.ldb, jpvt.get(), &rcond, &rank, work.get(),
                      &size.lwork, rwork.get(), &info);
    require_converged(info);
    return complex_matrix(x, A.Cols(), B.Cols(), ldb);
}

} // namespace lapack
