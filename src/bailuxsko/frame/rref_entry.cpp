#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/rref.hpp"
#include "bailuxsko/rref.hpp"

namespace Efi::Matrix {

Qud::Handle rref(const Qud::Handle& A)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(A, 1);
        aMatrix* const reduced = call.guarded(native::rref, call.view(M));
        return call.dv(reduced, Qud::Dim::Id(M.m_dim, 1));
    });
}

} // namespace Efi::Matrix
