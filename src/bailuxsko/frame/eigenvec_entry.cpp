#include "bailuxsko/eigenvec.hpp"

#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/inverse_iteration.hpp"

namespace Efi::Matrix {

Qud::Handle eigenvec(const Qud::Handle& A, const Qud::Handle& z)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(A, 1);
        const Qud::NumVal& eigenvalue = Error::as_scalar(z, msg::must_be_scalar, 2);
        Qud::Dim::Eq(M.m_dim, eigenvalue.m_dim, 2);
        aComplex number{.m_re = eigenvalue.re(), .m_im = eigenvalue.im()};
        return call.dv(call.guarded(native::eigenvec, call.view(M), &number));
    });
}

} // namespace Efi::Matrix
