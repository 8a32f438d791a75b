#include "bailuxsko/kernels/matrix_power.hpp"

#include "bailuxsko/kernels/identity.hpp"
#include "bailuxsko/kernels/inverse.hpp"
#include "bailuxsko/kernels/product.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cstdint>

namespace native {
namespace {

/// The same arrays under a record of their own, complex only where it has to be.
aMatrix* as_it_stands(EfiCallContext* ctx, const aMatrix* M)
{
    aMatrix* const same = aMatrix::mk(ctx->m_arena, M->m_rows, M->m_cols, M->m_rv, M->m_iv);
    same->m_anr = M->m_anr;
    drop_zero_imaginary(same);
    return same;
}

/// M^n for n > 1. The power begins as the square that its lowest bit asks for, not as an identity times it: 0 times an
/// infinite element would be a fault.
aMatrix* power_by_squaring(EfiCallContext* ctx, const aMatrix* M, std::uint32_t n)
{
    const aMatrix* square = M;
    const aMatrix* power = nullptr;
    for (std::uint32_t bit = 1;; bit *= 2) {
        if ((n & bit) != 0)
            power = power == nullptr ? square : product(ctx, power, square);
        if (n / bit < 2)
            break;
        square = product(ctx, square, square);
    }
    return as_it_stands(ctx, power);
}

} // namespace

aMatrix* mx_power(EfiCallContext* ctx, aMatrix* M, int n, bool strict)
{
    if (M->m_rows != M->m_cols)
        Efi::Throw(msg::must_be_square, -1);
    if (n == 0)
        return identity(ctx, M->m_rows);
    const aMatrix* const base = n < 0 ? inv2(ctx, M, strict) : M;
    const std::int64_t exponent = n < 0 ? -std::int64_t{n} : n;
    if (exponent == 1)
        return as_it_stands(ctx, base);
    if (exponent > largest_matrix_exponent)
        Efi::Throw(msg::domain_error, 1);
    if (base->m_rows == 0)
        Efi::Throw(msg::invalid_dimension, -1);
    return power_by_squaring(ctx, base, static_cast<std::uint32_t>(exponent));
}

} // namespace native
