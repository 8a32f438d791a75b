#pragma once

#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// The singular value decomposition as the literature writes it, one element at a time: slow, and obviously right.
namespace plain {

void svd_decompose(EfiCallContext* ctx, aMatrix* A, aMatrix* V, aMatrix* w);
void svd_values(EfiCallContext* ctx, aMatrix* A);
void pinv_from_svd(EfiCallContext* ctx, aMatrix* A, double tol, aMatrix** result);

} // namespace plain
