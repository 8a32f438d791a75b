// Condition numbers by the strict inverse, in the spectral norm of a real matrix by its singular values.
#include "bailuxsko/kernels/conditions.hpp"

#include "bailuxsko/kernels/inverse.hpp"
#include "bailuxsko/kernels/norms.hpp"
#include "bailuxsko/kernels/record_checks.hpp"
#include "bailuxsko/kernels/svd.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cmath>
#include <cstddef>

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

double cond2(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_iv != nullptr)
        return condition(ctx, A, complex_norm2, complex_norm2);
    require_square(A);
    require_real_array(A);
    aMatrix* const copy = Efi::copy_of(ctx, A);
    svd_values(ctx, copy);
    const std::size_t last = A->m_rows - std::size_t{1};
    const double smallest = Efi::at(copy, last, last);
    if (smallest == 0.0)
        Efi::Throw(msg::singular_matrix, -1);
    return std::fabs(Efi::at(copy, 0, 0) / smallest);
}

} // namespace native
