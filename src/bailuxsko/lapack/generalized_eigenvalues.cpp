// Eigenvalues and eigenvectors of a pair of square matrices: A x = lambda B x.
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/eigen_results.hpp"
#include "bailuxsko/lapack/eigenvalues.hpp"
#include "bailuxsko/lapack/finite.hpp"
#include "bailuxsko/lapack/routines.hpp"

namespace lapack {

namespace {

constexpr unsigned work_columns = 16;
constexpr unsigned rwork_columns = 8;

} // namespace

Qud::Handle dggev(EfiCallContext*, const Qud::MatVal& A, const Qud::MatVal& B, std::string_view mode)
{
    const DriverScope scope;
    refuse_empty(A);
    const Sides sides(mode);
    const std::uint32_t n = A.Rows();
    const int order = dimension(n);
    const int lwork = dimension(std::uint64_t{work_columns} * (std::uint64_t{n} + 1));
    mkl_auto_ptr<double> copy_A;
    mkl_auto_ptr<double> copy_B;
    mkl_auto_ptr<double> denominators;
    mkl_auto_ptr<double> work;
    mkl_auto_ptr<double> vectors;
    double* const a = copy_A.allocate_uncleared(A.count());
    double* const b = copy_B.allocate_uncleared(B.count());
    Qud::FreshNumbers alphar = result_numbers(n);
    Qud::FreshNumbers alphai = result_numbers(n);
    double* const beta = denominators.allocate_uncleared(n);
    work.allocate_uncleared(static_cast<unsigned>(lwork));
    double* const V = sides.wanted() ? vectors.allocate_uncleared(A.count()) : nullptr;
    refuse_not_finite(A);
    refuse_not_finite(B);
    packMatval(A, a, 0);
    packMatval(B, b, 0);

    const int ldvl = Sides::leading(sides.left, order);
    const int ldvr = Sides::leading(sides.right, order);
    int info = 0;
    routines().dggev(&sides.left, &sides.right, &order, a, &order, b, &order, alphar.get(), alphai.get(), beta,
                     sides.left == 'V' ? V : nullptr, &ldvl, sides.right == 'V' ? V : nullptr, &ldvr, work.get(),
                     &lwork, &info, 1, 1);
    require_converged(info);
    divide_by_beta({alphar.get(), n}, {alphai.get(), n}, {beta, n});
    if (!sides.wanted())
        return ordered_values(n, alphar, alphai);
    const Qud::Handle unpacked = unpacked_pairs(n, V, alphai.get());
    return ordered_vectors(n, alphar, *Qud::matrix_of(unpacked));
}

Qud::Handle zggev(EfiCallContext*, const Qud::MatVal& A, const Qud::MatVal& B, std::string_view mode)
{
    const DriverScope scope;
    refuse_empty(A);
    const Sides sides(mode);
    const std::uint32_t n = A.Rows();
    const int order = dimension(n);
    const int lwork = dimension(std::uint64_t{work_columns} * n);
    mkl_auto_ptr<MKL_Complex16> copy_A;
    mkl_auto_ptr<MKL_Complex16> copy_B;
    mkl_auto_ptr<MKL_Complex16> numerators;
    mkl_auto_ptr<MKL_Complex16> denominators;
    mkl_auto_ptr<MKL_Complex16> work;
    mkl_auto_ptr<MKL_Complex16> vectors;
    mkl_auto_ptr<double> rwork;
    MKL_Complex16* const a = complex_copy_and_a_column(A, copy_A);
    MKL_Complex16* const b = complex_copy_and_a_column(B, copy_B);
    MKL_Complex16* const alpha = numerators.allocate_uncleared(n);
    MKL_Complex16* const beta = denominators.allocate_uncleared(n);
    work.allocate_uncleared(static_cast<unsigned>(lwork));
    rwork.allocate_uncleared(std::uint64_t{rwork_columns} * n);
    MKL_Complex16* const V = sides.wanted() ? vectors.allocate_uncleared(A.count()) : nullptr;
    refuse_not_finite(A);
    refuse_not_finite(B);

    const int ldvl = Sides::leading(sides.left, order);
    const int ldvr = Sides::leading(sides.right, order);
    int info = 0;
    routines().zggev(&sides.left, &sides.right, &order, a, &order, b, &order, alpha, beta,
                     sides.left == 'V' ? V : nullptr, &ldvl, sides.right == 'V' ? V : nullptr, &ldvr, work.get(),
                     &lwork, rwork.get(), &info, 1, 1);
    require_converged(info);
    for (std::uint32_t i = 0; i < n; ++i)
        alpha[i] = quotient(alpha[i], beta[i]);
    return ordered_complex(n, alpha, V);
}

} // namespace lapack
