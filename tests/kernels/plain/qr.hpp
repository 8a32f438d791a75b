#pragma once

#include "efiutl/records.hpp"

namespace plain {

/// Givens QR as a textbook writes it: R, at first A, and Q, whatever it holds, in place. Only the real arrays.
void qr_givens(aMatrix* Q, aMatrix* R);

} // namespace plain
