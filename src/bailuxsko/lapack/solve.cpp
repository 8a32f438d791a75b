#include "bailuxsko/lapack/solve.hpp"

#include "bailuxhost/error.hpp"
#include "bailuxsko/lapack/copies.hpp"
#include "bailuxsko/lapack/driver.hpp"
#include "bailuxsko/lapack/routines.hpp"
#include "efiutl/messages.hpp"

#include <string>

namespace lapack {

namespace {

/// A singular A is no error of its own: the pivot that is zero is named for people only.
void check(int info)
{
    if (info > 0)
        Evl::Run::AppException::Raise(msg::not_converging, -1,
                                      "the matrix is singular: its column " + std::to_string(info) +
                                          " depends on those before it");
    require_converged(info);
}

struct Sizes {
    Sizes(const Qud::MatVal& A, const Qud::MatVal& B)
    {
        refuse_empty(A);
        refuse_empty(B);
        n = dimension(A.Rows());
        nrhs = dimension(B.Cols());
    }
    int n;
    int nrhs;
};

} // namespace

Qud::Handle dgesv(EfiCallContext*, const Qud::MatVal& A, const Qud::MatVal& B)
{
    const DriverScope scope;
    const Sizes size(A, B);
    mkl_auto_ptr<double> factors;
    mkl_auto_ptr<int> ipiv;
    double* const a = factors.allocate_uncleared(A.count());
    ipiv.allocate(A.Rows());
    Qud::FreshNumbers x = result_numbers(B.count());
    packMatval(A, a, 0);
    packMatval(B, x.get(), 0);

    int info = 0;
    routines().dgesv(&size.n, &size.nrhs, a, &size.n, ipiv.get(), x.get(), &size.n, &info);
    check(info);
    return Qud::MatVal::make(B.Rows(), B.Cols(), std::move(x));
}

Qud::Handle zgesv(EfiCallContext*, const Qud::MatVal& A, const Qud::MatVal& B)
{
    const DriverScope scope;
    const Sizes size(A, B);
    mkl_auto_ptr<MKL_Complex16> factors;
    mkl_auto_ptr<MKL_Complex16> solution;
    mkl_auto_ptr<int> ipiv;
    MKL_Complex16* const a = complex_copy(A, factors);
    MKL_Complex16* const x = complex_copy(B, solution);
    ipiv.allocate(A.Rows());

    int info = 0;
    routines().zgesv(&size.n, &size.nrhs, a, &size.n, ipiv.get(), x, &size.n, &info);
    check(info);
    return complex_matrix(x, B.Rows(), B.Cols());
}

} // namespace lapack
