#include "bailuxsko/comeval.hpp"
#include "bailuxsko/frame/call.hpp"
#include "bailuxsko/kernels/comeval.hpp"
#include "efiutl/columns.hpp"

void comeval(EfiCallContext* ctx, aMatrix* A, aVector** result, double /*unused*/)
{
    native::comeval(ctx, A, result);
}

namespace Efi::Matrix {

namespace {

/// The routine overwrites its argument, so it gets a copy.
aVector* eigenvalues(EfiCallContext* ctx, aMatrix* A)
{
    aMatrix* const copy = Efi::copy_of(ctx, A);
    aVector* result = nullptr;
    native::comeval(ctx, copy, &result);
    return result;
}

} // namespace

Qud::Handle comeval(const Qud::Handle& A)
{
    return in_call([&](Call& call) {
        const Qud::MatVal& M = Error::as_square_smatrix(A, 1);
        return call.dv(call.guarded(eigenvalues, call.view(M)), M.m_dim);
    });
}

} // namespace Efi::Matrix
