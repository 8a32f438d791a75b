#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

namespace Efi::Matrix {

/// An eigenvector to a given eigenvalue, by inverse iteration: of length 1, no phase is imposed on it. Equal arguments
/// give equal bits.
/// @param A   n by n, one unit
/// @param z   the eigenvalue, a number of that unit; it need not be exact
/// @return    n by 1 with an imaginary array, without unit
/// @throws    "must be scalar matrix" (1), "must be scalar" (2), "unit mismatch" (2), "must be square" (1),
///            "invalid dimension" (-1), "singularity" (-1) for a row of zeros in A - z I, "not converging" (-1) where z
///            is far from every eigenvalue, "floating point exception" (0)
/// @see       Golub and Van Loan, Matrix Computations, section 7.6.1
BAILUXSKO_API Qud::Handle eigenvec(const Qud::Handle& A, const Qud::Handle& z);

} // namespace Efi::Matrix
