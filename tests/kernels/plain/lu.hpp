#pragma once

#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// The factorisations as a textbook writes them, one element at a time: slow, and obviously right.
namespace plain {

void lu_decomp(EfiCallContext* ctx, aMatrix* A, double* pivots, double* sign, bool strict);
void clu_decomp(EfiCallContext* ctx, aMatrix* A, double* pivots, double* sign, bool strict);

} // namespace plain
