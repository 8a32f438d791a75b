#include "bailuxsko/kernels/small_product.hpp"

#include "bailuxsko/kernels/product.hpp"
#include "efiutl/columns.hpp"
#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cstddef>

namespace native {
namespace {

Anyval* number(EfiCallContext* ctx, double re, double im)
{
    auto* const result = static_cast<Anyval*>(ctx->m_arena->carve(sizeof(Anyval)));
    result->m_number = {.m_re = re, .m_im = im};
    return result;
}

double sum_of_products(std::size_t count, const double* a, const double* b)
{
    double sum = 0.0;
    for (std::size_t k = 0; k < count; ++k)
        sum += a[k] * b[k];
    return sum;
}

/// The sum of a(k) * conj(b(k)). Imaginary parts that are not there take no part.
Anyval* inner_product(EfiCallContext* ctx, const aMatrix* A, const aMatrix* B)
{
    const std::size_t count = B->m_rows;
    double re = 0.0;
    double im = 0.0;
    if (A->m_rv != nullptr && B->m_rv != nullptr)
        re += sum_of_products(count, A->m_rv, B->m_rv);
    if (A->m_iv != nullptr && B->m_iv != nullptr)
        re += sum_of_products(count, A->m_iv, B->m_iv);
    if (A->m_rv != nullptr && B->m_iv != nullptr)
        im = 0.0 - sum_of_products(count, A->m_rv, B->m_iv);
    if (A->m_iv != nullptr && B->m_rv != nullptr)
        im += sum_of_products(count, A->m_iv, B->m_rv);
    return number(ctx, re, im);
}

} // namespace

Anyval* dispatchmult(EfiCallContext* ctx, aMatrix* A, aMatrix* B)
{
    if (A->m_rows < 1 || A->m_cols < 1 || B->m_rows < 1 || B->m_cols < 1)
        Efi::Throw(msg::invalid_dimension, -1);
    if (A->m_cols != B->m_rows) {
        if (A->m_cols == 1 && B->m_cols == 1 && A->m_rows == B->m_rows)
            return inner_product(ctx, A, B);
        Efi::Throw(msg::array_size_mismatch, -1);
    }
    aMatrix* const C = product(ctx, A, B);
    auto* const result = reinterpret_cast<Anyval*>(C);
    if (A->m_rows == 1 && B->m_cols == 1 && Efi::is_matrix(result))
        return number(ctx, C->m_rv[0], C->m_iv != nullptr ? C->m_iv[0] : aMatrix::m_zero);
    drop_zero_imaginary(C);
    return result;
}

} // namespace native
