#pragma once

#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// The inverse as a textbook writes it, one unit vector at a time: slow, and obviously right.
namespace plain {

void real_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict);
void complex_inverse(EfiCallContext* ctx, aMatrix* A, aMatrix** result, bool strict);

} // namespace plain
