#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

namespace native {

/// The transpose as a new record: real parts, and imaginary parts where A has them; nothing is conjugated. An array
/// that A does not have is not made.
/// @param A   m by n; not changed
/// @return    n by m, its leading dimension n
/// @throws    "out of memory" (-1)
BAILUXSKO_API aMatrix* mat_transpose(EfiCallContext* ctx, const aMatrix* A);

} // namespace native
