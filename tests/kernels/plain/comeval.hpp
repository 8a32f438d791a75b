#pragma once

#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// The eigenvalues as the published procedures write them, one element at a time: slow, and obviously right.
namespace plain {

/// Balancing, reduction and iteration on A in place; the eigenvalues go to w_re and w_im, A->m_rows each.
void comeval(EfiCallContext* ctx, aMatrix* A, double* w_re, double* w_im);

} // namespace plain
