#include "bailuxsko/kernels/sums.hpp"

#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <cstddef>

namespace native {
namespace {

double sum(const double* elements, std::size_t count, std::size_t step)
{
    double total = 0.0;
    if (elements != nullptr)
        for (std::size_t k = 0; k < count; ++k)
            total += elements[k * step];
    return total;
}

aComplex* sum_of_both_parts(EfiCallContext* ctx, const aMatrix* A, std::size_t count, std::size_t step)
{
    auto* const result = static_cast<aComplex*>(ctx->m_arena->carve(sizeof(aComplex)));
    *result = {.m_re = sum(A->m_rv, count, step), .m_im = sum(A->m_iv, count, step)};
    return result;
}

} // namespace

aComplex* tr(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_rows != A->m_cols)
        Efi::Throw(msg::must_be_square, 1);
    return sum_of_both_parts(ctx, A, A->m_rows, A->m_anr + std::size_t{1});
}

aComplex* sigmasum(EfiCallContext* ctx, aMatrix* v)
{
    if (v->m_cols == 1)
        return sum_of_both_parts(ctx, v, v->m_rows, 1);
    if (v->m_rows != 1)
        Efi::Throw(msg::must_be_vector, 1);
    return sum_of_both_parts(ctx, v, v->m_cols, v->m_anr);
}

} // namespace native
