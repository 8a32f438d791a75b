#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/lu.hpp"
#include "bailuxsko/lu.hpp"

namespace Efi::Matrix {

Qud::Handle lu(const Qud::Handle& A)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = call.asScalarMatrix(A, 1);
        return call.dv(call.guarded(native::lu, call.view(M)));
    });
}

} // namespace Efi::Matrix
