#include "bailuxsko/lapack/svd.hpp"

#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/factors.hpp"
#include "bailuxsko/lapack/finite.hpp"
#include "bailuxsko/lapack/routines.hpp"

#include <algorithm>
#include <cblas.h>
#include <utility>

namespace lapack {

namespace {

struct Sizes {
    explicit Sizes(const Qud::MatVal& M)
    {
        refuse_empty(M);
        m = dimension(M.Rows());
        n = dimension(M.Cols());
        // Enough for every shape: the routines need max(3 k + max(m, n), 5 k), with k = min(m, n).
        lwork = dimension(std::uint64_t{16} * std::max(M.Rows(), M.Cols()));
        k = std::min(M.Rows(), M.Cols());
        u_count = std::uint64_t{M.Rows()} * k;
        vt_count = std::uint64_t{M.Cols()} * M.Cols();
    }
    int m;
    int n;
    int lwork;
    std::uint32_t k; ///< number of singular values
    std::uint64_t u_count;
    std::uint64_t vt_count;
};

/// 'N' for none, 'S' for as many left and right vectors as there are singular values.
char job(Vectors wanted)
{
    return wanted == Vectors::none ? 'N' : 'S';
}

} // namespace

Qud::Handle dgesvd(EfiCallContext*, const Qud::MatVal& M, Vectors wanted)
{
    const DriverScope scope;
    const Sizes size(M);
    mkl_auto_ptr<double> copy;
    mkl_auto_ptr<double> work;
    double* const a = copy.allocate_uncleared(M.count());
    work.allocate_uncleared(static_cast<unsigned>(size.lwork));
    Qud::FreshNumbers s = result_numbers(size.k);
    Qud::FreshNumbers u = wanted == Vectors::both ? result_numbers(size.u_count) : nullptr;
    Qud::FreshNumbers vt = wanted == Vectors::both ? result_numbers(size.vt_count) : nullptr;
    refuse_not_finite(M);
    packMatval(M, a, 0);

    const char jobs = job(wanted);
    int info = 0;
    routines().dgesvd(&jobs, &jobs, &size.m, &size.n, a, &size.m, s.get(), u.get(), &size.m, vt.get(), &size.n,
                      work.get(), &size.lwork, &info, 1, 1);
    require_converged(info);
    Qud::Handle values = Qud::MatVal::make(size.k, 1, std::move(s));
    if (wanted == Vectors::none)
        return values;
    if (M.Cols() == 1) { // a convention of ours, not LAPACK's
        cblas_dscal(size.m, -1.0, u.get(), 1);
        cblas_dscal(1, -1.0, vt.get(), 1);
    }
    return nested_column({std::move(values), Qud::MatVal::make(M.Rows(), size.k, std::move(u)),
                          Qud::MatVal::make(M.Cols(), M.Cols(), std::move(vt))});
}

Qud::Handle zgesvd(EfiCallContext*, const Qud::MatVal& M, Vectors wanted)
{
    const DriverScope scope;
    const Sizes size(M);
    mkl_auto_ptr<MKL_Complex16> copy;
    mkl_auto_ptr<MKL_Complex16> left;
    mkl_auto_ptr<MKL_Complex16> right;
    mkl_auto_ptr<MKL_Complex16> work;
    mkl_auto_ptr<double> rwork;
    // A column to spare in both matrices whose rows are multiplied: OpenBLAS loads the element behind a row's last one.
    MKL_Complex16* const a = copy.allocate_uncleared(M.count() + M.Rows());
    work.allocate_uncleared(static_cast<unsigned>(size.lwork));
    rwork.allocate_uncleared(static_cast<unsigned>(size.lwork));
    Qud::FreshNumbers s = result_numbers(size.k);
    MKL_Complex16* const u = wanted == Vectors::both ? left.allocate_uncleared(size.u_count) : nullptr;
    MKL_Complex16* const vt = wanted == Vectors::both ? right.allocate_uncleared(size.vt_count + M.Cols()) : nullptr;
    refuse_not_finite(M);
    cmat2mkl(M, a, 0);

    const char jobs = job(wanted);
    int info = 0;
    routines().zgesvd(&jobs, &jobs, &size.m, &size.n, a, &size.m, s.get(), u, &size.m, vt, &size.n, work.get(),
                      &size.lwork, rwork.get(), &info, 1, 1);
    require_converged(info);
    Qud::Handle values = Qud::MatVal::make(size.k, 1, std::move(s));
    if (wanted == Vectors::none)
        return values;
    if (M.Cols() == 1) {
        constexpr MKL_Complex16 minus_one = -1.0;
        cblas_zscal(size.m, &minus_one, u, 1);
        cblas_zscal(1, &minus_one, vt, 1);
    }
    return nested_column(
        {std::move(values), complex_matrix(u, M.Rows(), size.k), complex_matrix(vt, M.Cols(), M.Cols())});
}

} // namespace lapack
