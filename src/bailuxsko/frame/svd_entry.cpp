#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/rank.hpp"
#include "bailuxsko/kernels/svd.hpp"
#include "bailuxsko/svd.hpp"

namespace Efi::Matrix {

Qud::Handle svd(const Qud::Handle& A)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(A, 1);
        aMatrix* const UV = call.guarded(native::svd2, call.view(M));
        return call.dv(UV, Qud::Dim::Id(M.m_dim, 1)); // the decomposition's own refusals come first
    });
}

Qud::Handle geninv(Qud::Tol tol, const Qud::Handle& A)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(A, 1);
        aMatrix* const X = call.guarded(native::geninv, call.view(M), tol.value);
        return call.dv(X, Qud::Dim::Pwr(M.m_dim, -1.0));
    });
}

Qud::Handle rank(const Qud::Handle& A)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asRealMatrix(A, 1);
        return Qud::NumVal::make(call.guarded(native::rank, call.view(M)));
    });
}

} // namespace Efi::Matrix
