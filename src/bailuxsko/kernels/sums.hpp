#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// Sums of a matrix's elements; real and imaginary parts apart, each from 0.0 in storage order. An absent array takes
/// no part.
namespace native {

/// The trace: the sum of the diagonal; 0 of a matrix without elements.
/// @throws "must be square" (1), "out of memory" (-1)
BAILUXSKO_API aComplex* tr(EfiCallContext* ctx, aMatrix* A);

/// The sum of one column's elements or one row's. @throws "must be vector" (1), "out of memory" (-1)
BAILUXSKO_API aComplex* sigmasum(EfiCallContext* ctx, aMatrix* v);

} // namespace native
