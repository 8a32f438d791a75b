#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"
#include "efiutl/throw.hpp"

#include <cstdint>

/// Factorisation and solution of a complex system that stands in rows, for inverse iteration.
/// @see Press et al., Numerical Recipes, section 2.3: Crout's method with implicitly scaled rows
namespace native {

/// Factorises in place: L below the diagonal, whose own diagonal of ones is not stored, and U. Of equally scaled rows
/// the last becomes the pivot row. A pivot of exactly zero becomes 1e-20. Rows are exchanged in the tables.
/// @param re, im     n rows of n elements
/// @param exchanged  n numbers: the row, counted from 0, that row k changed places with
/// @param parity     1.0, or -1.0 after an odd number of exchanges
/// @return  0, or 1 for a row of zeros, 10 when there is no memory for the scales
BAILUXSKO_API int Lludcmp(EfiCallContext* ctx, double** re, double** im, std::uint32_t n, int* exchanged,
                          double* parity);

/// Solves with the factors; b becomes the solution.
/// @return  0, or 2 for an element of exactly zero on the diagonal of U
BAILUXSKO_API int Llubksb(double* const* re, double* const* im, std::uint32_t n, const int* exchanged, double* b_re,
                          double* b_im);

/// Doubles from the call's arena, or null: these routines answer with a code.
inline double* doubles_or_null(EfiCallContext* ctx, std::uint64_t count)
{
    try {
        return Efi::uncleared_doubles(ctx, count);
    } catch (const Efi::NativeError&) {
        return nullptr;
    }
}

} // namespace native
