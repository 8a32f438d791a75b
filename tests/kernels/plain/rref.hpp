#pragma once

#include "efiutl/records.hpp"

namespace plain {

/// Gauss-Jordan elimination in place as a textbook writes it, the search for a pivot from the pivot row's own column
/// on.
void gauss_jordan(aMatrix* A, double tol);

/// The smaller of the largest absolute column and row sums.
double min_norm_1i(const aMatrix* A);

} // namespace plain
