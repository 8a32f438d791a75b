#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

/// Exact tests that choose a driver: any difference in the last bit selects the general one.
namespace lapack {

/// Square, without imaginary array, and real(i, j) - real(j, i) is 0.0 for every i < j: a NaN or an infinity off the
/// diagonal says no, one on the diagonal does not matter.
BAILUXSKO_API bool isSymRealMatrix(const Qud::MatVal& M);

/// Square, with an imaginary array (that may be all zeros), every imaginary part on the diagonal 0.0, and for every
/// i < j real(i, j) - real(j, i) and imag(i, j) + imag(j, i) are 0.0.
BAILUXSKO_API bool isHermitianMatrix(const Qud::MatVal& M);

} // namespace lapack
