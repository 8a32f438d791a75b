#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/qr.hpp"
#include "bailuxsko/qr.hpp"

namespace Efi::Matrix {

Qud::Handle qr(const Qud::Handle& A)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(A, 1);
        aMatrix* const QR = call.guarded(native::qr, call.view(M));
        return call.dv(QR, Qud::Dim::Pwr(M.m_dim, 0.5));
    });
}

} // namespace Efi::Matrix
