// Condition numbers by the strict inverse.
#include "bailuxsko/kernels/conditions.hpp"

#include "bailuxsko/kernels/inverse.hpp"
#include "bailuxsko/kernels/norms.hpp"

namespace native {
namespace {

using Norm = double (*)(EfiCallContext*, aMatrix*);

/// The inverse of a complex matrix may be without an imaginary array: its norm is that of the complex routine, which
/// takes it as it is.
double condition(EfiCallContext* ctx, aMatrix* A, Norm real, Norm complex)
{
    const bool is_complex = A->m_iv != nullptr;
    const Norm norm = is_complex ? complex : real;
    aMatrix* inverse = nullptr;
    (is_complex ? complex_inverse : real_inverse)(ctx, A, &inverse, true);
    const double norm_of_inverse = norm(ctx, inverse);
    return norm_of_inverse * norm(ctx, A);
}

} // namespace

double cond1(EfiCallContext* ctx, aMatrix* A)
{
    return condition(ctx, A, real_norm1, complex_norm1);
}

double condi(EfiCallContext* ctx, aMatrix* A)
{
    return condition(ctx, A, real_normi, complex_normi);
}

double conde(EfiCallContext* ctx, aMatrix* A)
{
    return condition(ctx, A, real_norme, complex_norme);
}

} // namespace native
