#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// The number of singular values above max(m, n) * eps times the largest one; 0 of a matrix of zeros or without
/// elements.
/// @param A   m by n, real; not changed
/// @throws    what svd_values raises
BAILUXSKO_API unsigned int rank(EfiCallContext* ctx, const aRealMatrix* A);

} // namespace native
