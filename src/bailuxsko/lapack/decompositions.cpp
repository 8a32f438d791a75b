#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/intel_mkl.hpp"
#include "bailuxsko/lapack/cholesky.hpp"
#include "bailuxsko/lapack/lu.hpp"
#include "bailuxsko/lapack/qr.hpp"
#include "bailuxsko/lapack/svd.hpp"

#include <string>

namespace Efi::IntelMKL {

namespace {

Qud::Handle singular_values(const Qud::Handle& m, lapack::Vectors wanted)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(m, 1);
        if (M.Rows() < M.Cols())
            Evl::Run::AppException::Raise(msg::rows_less_than_columns, -1,
                                          "the matrix is " + std::to_string(M.Rows()) + " by " +
                                              std::to_string(M.Cols()));
        return M.HasImag() ? lapack::zgesvd(call.context(), M, wanted) : lapack::dgesvd(call.context(), M, wanted);
    });
}

/// A whole number counts as 0 or not, whatever its size. @throws "must be integer" (index)
bool flag(const Qud::Handle& value, bool when_absent, int index)
{
    return value ? Error::as_integer(value, index) != 0.0 : when_absent;
}

} // namespace

Qud::Handle svds(const Qud::Handle& m)
{
    return singular_values(m, lapack::Vectors::none);
}

Qud::Handle svd(const Qud::Handle& m)
{
    return singular_values(m, lapack::Vectors::both);
}

Qud::Handle LU(const Qud::Handle& m)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(m, 1);
        return M.HasImag() ? lapack::zlu(call.context(), M) : lapack::dlu(call.context(), M);
    });
}

Qud::Handle QR(const Qud::Handle& m, const Qud::Handle& pivot)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(m, 1);
        if (flag(pivot, true, 2))
            return M.HasImag() ? lapack::zqr_pvt(call.context(), M) : lapack::dqr_pvt(call.context(), M);
        return M.HasImag() ? lapack::zqr(call.context(), M) : lapack::dqr(call.context(), M);
    });
}

Qud::Handle Cholesky(const Qud::Handle& m, const Qud::Handle& pivot, const Qud::Handle& upper)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = Error::as_square_smatrix(m, 1);
        const bool is_pivoted = flag(pivot, true, 2);
        const lapack::Triangle side = flag(upper, false, 3) ? lapack::Triangle::upper : lapack::Triangle::lower;
        if (is_pivoted)
            return M.HasImag() ? lapack::zCholesky_pvt(call.context(), M, side)
                               : lapack::dCholesky_pvt(call.context(), M, side);
        return M.HasImag() ? lapack::zCholesky(call.context(), M, side) : lapack::dCholesky(call.context(), M, side);
    });
}

} // namespace Efi::IntelMKL
