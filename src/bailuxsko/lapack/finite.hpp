#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

namespace lapack {

/// Whether no part of any element is an infinity or a NaN.
BAILUXSKO_API bool is_finite(const Qud::MatVal& M);

/// For drivers of iterative routines, which with an infinity may never return, and with a NaN print or end the
/// process. @throws "not converging" (-1) unless M is finite
BAILUXSKO_API void refuse_not_finite(const Qud::MatVal& M);

} // namespace lapack
