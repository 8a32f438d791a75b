#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// The largest identity matrix: n * n still fits a signed 32-bit count.
inline constexpr unsigned int largest_identity = 4096;

/// The n by n identity matrix; n = 0 gives a record without elements.
/// @throws "matrix too big" (1) for n > 4096, "out of memory" (-1)
BAILUXSKO_API aRealMatrix* identity(EfiCallContext* ctx, unsigned int n);

} // namespace native
