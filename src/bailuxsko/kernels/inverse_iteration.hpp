#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

#include <atomic>
#include <cstdint>

/// One eigenvector to a given eigenvalue, by inverse iteration in complex arithmetic.
/// @see Golub and Van Loan, Matrix Computations, section 7.6.1; Wilkinson, The Algebraic Eigenvalue Problem, chapter 9
namespace native {

/// The vector of length 1 that A - z I takes nearest to zero; no phase is imposed on it.
/// @param A   n by n; not changed
/// @return    n by 1 with an imaginary array
/// @throws    "must be square" (1), "invalid dimension" (-1), "unknown error" (-1) for an absent real array,
///            "singularity" (-1): a row of zeros in A - z I; "not converging" (-1): no start vector grows, z is no
///            eigenvalue; "out of memory" (-1)
BAILUXSKO_API aMatrix* eigenvec(EfiCallContext* ctx, aMatrix* A, aComplex* z);

/// The same on a matrix in rows, which becomes its factors.
/// @param re, im     n rows of n elements
/// @param exchanged  n numbers: the row exchanged with row k
/// @param x_re, x_im n elements each: the vector
/// @return  0, or what went wrong: 1 singular, 2 no start vector grew or a solution failed, 10 out of memory
BAILUXSKO_API int invit(EfiCallContext* ctx, double** re, double** im, double z_re, double z_im, std::uint32_t n,
                        int* exchanged, double* x_re, double* x_im);

inline constexpr double QUIL_RAND_MAX = 2147483647.0;
inline constexpr double QUIL_RAND_LIMIT = 2147483648.0;

/// The next number of [0, 1) in a sequence that its seed determines; two steps of a linear congruential generator.
BAILUXSKO_API double get_rand(int* seed);

/// How many start vectors, and how many refining solutions, the process has tried. Nobody reads them but tests.
BAILUXSKO_API extern std::atomic<std::uint32_t> local_counter;
BAILUXSKO_API extern std::atomic<std::uint32_t> led;

} // namespace native
