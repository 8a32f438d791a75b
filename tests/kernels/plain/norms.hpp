#pragma once

#include "efiutl/records.hpp"

/// The norms as a textbook writes them; a matrix without an imaginary array is real.
namespace plain {

double norm1(const aMatrix* A);
double normi(const aMatrix* A);
double norme(const aMatrix* A);

} // namespace plain
