#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/conditions.hpp"
#include "bailuxsko/kernels/norms.hpp"
#include "bailuxsko/norms.hpp"

namespace Efi::Matrix {

namespace {

using Worker = double (*)(EfiCallContext*, aMatrix*);

Qud::Handle norm(Worker worker, const Qud::Handle& M)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& matrix = Error::as_square_smatrix(M, 1);
        return Qud::NumVal::make(call.guarded(worker, call.view(matrix)), 0.0, matrix.m_dim);
    });
}

Qud::Handle condition(Worker worker, const Qud::Handle& M)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& matrix = Error::as_square_smatrix(M, 1);
        return Qud::NumVal::make(call.guarded(worker, call.view(matrix)));
    });
}

} // namespace

Qud::Handle norm1(const Qud::Handle& M)
{
    return norm(native::norm1, M);
}

Qud::Handle normi(const Qud::Handle& M)
{
    return norm(native::normi, M);
}

Qud::Handle norme(const Qud::Handle& M)
{
    return norm(native::norme, M);
}

Qud::Handle norm2(const Qud::Handle& M)
{
    return norm(native::norm2, M);
}

Qud::Handle cond1(const Qud::Handle& M)
{
    return condition(native::cond1, M);
}

Qud::Handle condi(const Qud::Handle& M)
{
    return condition(native::condi, M);
}

Qud::Handle conde(const Qud::Handle& M)
{
    return condition(native::conde, M);
}

Qud::Handle cond2(const Qud::Handle& M)
{
    return condition(native::cond2, M);
}

} // namespace Efi::Matrix
