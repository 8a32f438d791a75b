#include "bailuxsko/lapack/inverse.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "bailuxsko/lapack/structure.hpp"
#include "efiutl/messages.hpp"

#include <algorithm>

namespace lapack {

namespace {

void check(int info)
{
    if (info != 0)
        Evl::Run::AppException::Raise(msg::singularity, -1);
}

struct Sizes {
    explicit Sizes(const Qud::MatVal& A)
    {
        refuse_empty(A);
        if (!A.is_square())
            Evl::Run::AppException::Raise(msg::must_be_square, -1);
        n = dimension(A.Rows());
        lwork = dimension(std::uint64_t{64} * A.Rows());
    }
    int n;
    int lwork;
};

/// Copies the upper triangle to the lower one, block by block, so that both stay in the nearest cache.
void complete_lower_triangle(double* a, std::size_t n)
{
    constexpr std::size_t tile = 32;
    for (std::size_t first_j = 0; first_j < n; first_j += tile)
        for (std::size_t first_i = 0; first_i <= first_j; first_i += tile)
            for (std::size_t j = first_j; j < std::min(first_j + tile, n); ++j)
                for (std::size_t i = first_i; i < std::min(first_i + tile, j); ++i)
                    a[j + i * n] = a[i + j * n];
}

} // namespace

Qud::Handle dinv(EfiCallContext* ctx, const Qud::MatVal& A)
{
    if (isSymRealMatrix(A))
        return dsinv(ctx, A);
    const DriverScope scope;
    const Sizes size(A);
    mkl_auto_ptr<int> ipiv;
    mkl_auto_ptr<double> work;
    Qud::FreshNumbers a = result_numbers(A.count());
    ipiv.allocate(A.Rows());
    work.allocate_uncleared(static_cast<unsigned>(size.lwork));
    packMatval(A, a.get(), 0);

    int info = 0;
    routines().dgetrf(&size.n, &size.n, a.get(), &size.n, ipiv.get(), &info);
    check(info);
    routines().dgetri(&size.n, a.get(), &size.n, ipiv.get(), work.get(), &size.lwork, &info);
    check(info);
    return Qud::MatVal::make(A.Rows(), A.Cols(), std::move(a));
}

Qud::Handle dsinv(EfiCallContext*, const Qud::MatVal& A)
{
    const DriverScope scope;
    const Sizes size(A);
    mkl_auto_ptr<int> ipiv;
    mkl_auto_ptr<double> work;
    Qud::FreshNumbers a = result_numbers(A.count());
    ipiv.allocate(A.Rows());
    work.allocate_uncleared(static_cast<unsigned>(size.lwork));
    packMatval(A, a.get(), 0);

    constexpr char uplo = 'U';
    int info = 0;
    routines().dsytrf(&uplo, &size.n, a.get(), &size.n, ipiv.get(), work.get(), &size.lwork, &info, 1);
    check(info);
    routines().dsytri(&uplo, &size.n, a.get(), &size.n, ipiv.get(), work.get(), &info, 1);
    check(info);
    complete_lower_triangle(a.get(), A.Rows());
    return Qud::MatVal::make(A.Rows(), A.Cols(), std::move(a));
}

Qud::Handle zinv(EfiCallContext*, const Qud::MatVal& A)
{
    const DriverScope scope;
    const Sizes size(A);
    mkl_auto_ptr<MKL_Complex16> buffer;
    mkl_auto_ptr<int> ipiv;
    mkl_auto_ptr<MKL_Complex16> work;
    MKL_Complex16* const a = complex_copy(A, buffer);
    ipiv.allocate(A.Rows());
    work.allocate_uncleared(static_cast<unsigned>(size.lwork));

    int info = 0;
    routines().zgetrf(&size.n, &size.n, a, &size.n, ipiv.get(), &info);
    check(info);
    routines().zgetri(&size.n, a, &size.n, ipiv.get(), work.get(), &size.lwork, &info);
    check(info);
    return complex_matrix(a, A.Rows(), A.Cols());
}

} // namespace lapack
