// All eigenvalues of a general matrix: the three procedures of the Handbook for Automatic Computation II one after the
// other, on the caller's arrays.
#include "bailuxsko/kernels/comeval.hpp"

#include "bailuxsko/kernels/balance.hpp"
#include "bailuxsko/kernels/complex_qr.hpp"
#include "bailuxsko/kernels/hessenberg.hpp"
#include "bailuxsko/kernels/record_checks.hpp"

namespace native {

void comeval(EfiCallContext* ctx, aMatrix* A, aVector** result)
{
    *result = nullptr;
    require_square(A);
    require_real_array(A);
    double* const w_re = Efi::uncleared_doubles(ctx, A->m_rows);
    double* const w_im = Efi::uncleared_doubles(ctx, A->m_rows);
    double* const record = Efi::uncleared_doubles(ctx, A->m_rows);
    const BalancedBlock B = balance(A, record);
    double* const u_re = Efi::uncleared_doubles(ctx, B.m_end + 1);
    double* const u_im = Efi::uncleared_doubles(ctx, B.m_end + 1);
    reduce_to_hessenberg(A, B, u_re, u_im);
    complex_qr(ctx, A, B, w_re, w_im, record); // nobody reads what balancing noted: there are no vectors to undo it in
    *result = aMatrix::mk(ctx->m_arena, A->m_rows, 1, w_re, w_im);
}

} // namespace native
