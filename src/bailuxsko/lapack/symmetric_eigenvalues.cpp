// Eigenvalues and eigenvectors of symmetric and Hermitian matrices.
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/eigen_results.hpp"
#include "bailuxsko/lapack/eigenvalues.hpp"
#include "bailuxsko/lapack/finite.hpp"
#include "bailuxsko/lapack/routines.hpp"

namespace lapack {

namespace {

constexpr char upper = 'U'; // the triangle that is read
constexpr unsigned work_columns = 16;
constexpr unsigned rwork_columns = 3;

char job(std::string_view mode)
{
    return mode == "E" ? 'N' : 'V';
}

} // namespace

Qud::Handle dsyev(EfiCallContext*, const Qud::MatVal& A, std::string_view mode)
{
    const DriverScope scope;
    refuse_empty(A);
    const std::uint32_t n = A.Rows();
    const int order = dimension(n);
    const int lwork = dimension(std::uint64_t{work_columns} * n);
    mkl_auto_ptr<double> work;
    Qud::FreshNumbers a = result_numbers(A.count());
    Qud::FreshNumbers w = result_numbers(n);
    work.allocate_uncleared(static_cast<unsigned>(lwork));
    refuse_not_finite(A);
    packMatval(A, a.get(), 0);

    const char jobz = job(mode);
    int info = 0;
    routines().dsyev(&jobz, &upper, &order, a.get(), &order, w.get(), work.get(), &lwork, &info, 1, 1);
    require_converged(info);
    if (jobz == 'N')
        return ordered_values(n, w, nullptr);
    const Qud::Handle vectors = Qud::MatVal::make(n, n, std::move(a));
    return ordered_vectors(n, w, *Qud::matrix_of(vectors));
}

Qud::Handle zheev(EfiCallContext*, const Qud::MatVal& A, std::string_view mode)
{
    const DriverScope scope;
    refuse_empty(A);
    const std::uint32_t n = A.Rows();
    const int order = dimension(n);
    const int lwork = dimension(std::uint64_t{work_columns} * n);
    mkl_auto_ptr<MKL_Complex16> copy;
    mkl_auto_ptr<MKL_Complex16> work;
    mkl_auto_ptr<double> rwork;
    MKL_Complex16* const a = complex_copy_and_a_column(A, copy);
    Qud::FreshNumbers w = result_numbers(n);
    work.allocate(std::uint64_t{work_columns + 1} * n); // rows of its blocks are taken as vectors, as those of A are
    rwork.allocate_uncleared(std::uint64_t{rwork_columns} * n);
    refuse_not_finite(A);

    const char jobz = job(mode);
    int info = 0;
    routines().zheev(&jobz, &upper, &order, a, &order, w.get(), work.get(), &lwork, rwork.get(), &info, 1, 1);
    require_converged(info);
    if (jobz == 'N')
        return ordered_values(n, w, nullptr);
    const Qud::Handle vectors = complex_matrix(a, n, n);
    return ordered_vectors(n, w, *Qud::matrix_of(vectors));
}

} // namespace lapack
