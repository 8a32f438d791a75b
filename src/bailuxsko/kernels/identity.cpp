#include "bailuxsko/kernels/identity.hpp"

#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

namespace native {

aRealMatrix* identity(EfiCallContext* ctx, unsigned int n)
{
    if (n > largest_identity)
        Efi::Throw(msg::matrix_too_big, 1);
    const std::size_t area = std::size_t{n} * n;
    double* const elements = Efi::doubles(ctx, area);
    for (std::size_t k = 0; k < area; k += n + std::size_t{1})
        elements[k] = 1.0;
    return aMatrix::mk(ctx->m_arena, n, n, elements, nullptr);
}

} // namespace native
