#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// A * B. Two columns of one length, more than 1, have their inner product instead, the second one conjugated: a
/// number; so is a 1-by-1 product. Sums start at +0.0 and take their terms in ascending k.
/// @param A   m by k; not changed
/// @param B   k by n; not changed
/// @return    a record (complex only when some imaginary part is not zero), or an aComplex: Efi::is_matrix tells
/// @throws    "invalid dimension" (-1) without rows or columns, "array size mismatch" (-1), "out of memory" (-1)
BAILUXSKO_API Anyval* dispatchmult(EfiCallContext* ctx, aMatrix* A, aMatrix* B);

} // namespace native
