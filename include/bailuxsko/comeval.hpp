#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

/// All eigenvalues of a square matrix by the library's own code: balancing, reduction to Hessenberg form, complex QR
/// algorithm. For callers that have a call context and records of their own.
/// @param A       n by n, real or complex. Overwritten: a caller that needs it afterwards passes a copy. A record
///                without imaginary array gets one of the context when an imaginary part that is not zero comes up.
/// @param result  null while the routine runs and after a failure; then n by 1 with an imaginary array, in the order of
///                the diagonal at the end: nothing is sorted
/// @param unused  never read
/// @throws  Efi::NativeError: "invalid dimension" (-1), "must be square" (-1), "unknown error" (-1) for an absent real
///          array, "too many iterations" (-1) when 31 steps do not bring out an eigenvalue, "out of memory" (-1)
/// @see Handbook for Automatic Computation II, contributions II/11, II/13 and II/16
extern "C" BAILUXSKO_API void comeval(EfiCallContext* ctx, aMatrix* A, aVector** result, double unused);

namespace Efi::Matrix {

/// All eigenvalues, in the order in which the algorithm finds them: eigenvalues that can be seen in the pattern of
/// zeros come first and last, nothing is sorted.
/// @param A   n by n, one unit
/// @return    n by 1 with an imaginary array, unit(A)
/// @throws    "must be scalar matrix" (1), "must be square" (1), "invalid dimension" (-1), "too many iterations" (-1),
///            "floating point exception" (0)
/// @see       Handbook for Automatic Computation II, contributions II/11, II/13 and II/16
BAILUXSKO_API Qud::Handle comeval(const Qud::Handle& A);

} // namespace Efi::Matrix
