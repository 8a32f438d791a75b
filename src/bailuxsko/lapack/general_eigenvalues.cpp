// Eigenvalues and eigenvectors of general square matrices.
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/eigen_results.hpp"
#include "bailuxsko/lapack/eigenvalues.hpp"
#include "bailuxsko/lapack/finite.hpp"
#include "bailuxsko/lapack/routines.hpp"

namespace lapack {

namespace {

constexpr unsigned work_columns = 16;
constexpr unsigned rwork_columns = 2;

} // namespace

Qud::Handle dgeev(EfiCallContext*, const Qud::MatVal& A, std::string_view mode)
{
    const DriverScope scope;
    refuse_empty(A);
    const Sides sides(mode);
    const std::uint32_t n = A.Rows();
    const int order = dimension(n);
    const int lwork = dimension(std::uint64_t{work_columns} * n);
    mkl_auto_ptr<double> copy;
    mkl_auto_ptr<double> work;
    mkl_auto_ptr<double> vectors;
    double* const a = copy.allocate_uncleared(A.count());
    Qud::FreshNumbers wr = result_numbers(n);
    Qud::FreshNumbers wi = result_numbers(n);
    work.allocate_uncleared(static_cast<unsigned>(lwork));
    double* const V = sides.wanted() ? vectors.allocate_uncleared(A.count()) : nullptr;
    refuse_not_finite(A);
    packMatval(A, a, 0);

    const int ldvl = Sides::leading(sides.left, order);
    const int ldvr = Sides::leading(sides.right, order);
    int info = 0;
    routines().dgeev(&sides.left, &sides.right, &order, a, &order, wr.get(), wi.get(), sides.left == 'V' ? V : nullptr,
                     &ldvl, sides.right == 'V' ? V : nullptr, &ldvr, work.get(), &lwork, &info, 1, 1);
    require_converged(info);
    if (!sides.wanted())
        return ordered_values(n, wr, wi);
    const Qud::Handle unpacked = unpacked_pairs(n, V, wi.get());
    return ordered_vectors(n, wr, *Qud::matrix_of(unpacked));
}

Qud::Handle zgeev(EfiCallContext*, const Qud::MatVal& A, std::string_view mode)
{
    const DriverScope scope;
    refuse_empty(A);
    const Sides sides(mode);
    const std::uint32_t n = A.Rows();
    const int order = dimension(n);
    const int lwork = dimension(std::uint64_t{work_columns} * n);
    mkl_auto_ptr<MKL_Complex16> copy;
    mkl_auto_ptr<MKL_Complex16> values;
    mkl_auto_ptr<MKL_Complex16> work;
    mkl_auto_ptr<MKL_Complex16> vectors;
    mkl_auto_ptr<double> rwork;
    MKL_Complex16* const a = complex_copy_and_a_column(A, copy);
    MKL_Complex16* const w = values.allocate_uncleared(n);
    work.allocate_uncleared(static_cast<unsigned>(lwork));
    rwork.allocate_uncleared(std::uint64_t{rwork_columns} * n);
    MKL_Complex16* const V = sides.wanted() ? vectors.allocate_uncleared(A.count()) : nullptr;
    refuse_not_finite(A);

    const int ldvl = Sides::leading(sides.left, order);
    const int ldvr = Sides::leading(sides.right, order);
    int info = 0;
    routines().zgeev(&sides.left, &sides.right, &order, a, &order, w, sides.left == 'V' ? V : nullptr, &ldvl,
                     sides.right == 'V' ? V : nullptr, &ldvr, work.get(), &lwork, rwork.get(), &info, 1, 1);
    require_converged(info);
    return ordered_complex(n, w, V);
}

} // namespace lapack
