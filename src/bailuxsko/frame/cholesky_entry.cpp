#include "bailuxsko/cholesky.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/cholesky.hpp"

namespace Efi::Matrix {

Qud::Handle cholesky(const Qud::Handle& M)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& matrix = call.asRealMatrix(M, 1);
        aMatrix* const L = call.guarded(native::cholesky, call.view(matrix));
        return call.dv(L, Qud::Dim::Pwr(matrix.m_dim, 0.5));
    });
}

} // namespace Efi::Matrix
