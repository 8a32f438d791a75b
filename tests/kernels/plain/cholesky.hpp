#pragma once

#include "efiutl/records.hpp"

namespace plain {

/// Cholesky-Banachiewicz as a textbook writes it: A, read on and above its diagonal, becomes L. Only the real array.
/// @throws "non-positive definite matrix" (-1)
void choldc(aMatrix* A);

} // namespace plain
