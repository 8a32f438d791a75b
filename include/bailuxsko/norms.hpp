#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Norms and condition numbers of square matrices of one unit, real or complex. Norms have the unit of the matrix,
/// conditions have none; a sum that overflows is a fault.
/// @throws "must be scalar matrix" (1), "must be square" (1), "floating point exception" (0)
/// @see    Golub and Van Loan, Matrix Computations, sections 2.3 and 2.6.2
namespace Efi::Matrix {

/// The largest sum of a column's magnitudes; 0 of [].
BAILUXSKO_API Qud::Handle norm1(const Qud::Handle& M);

/// The largest sum of a row's magnitudes; 0 of [].
BAILUXSKO_API Qud::Handle normi(const Qud::Handle& M);

/// The Euclidean norm (Frobenius): the square root of the sum of all squared magnitudes; 0 of [].
BAILUXSKO_API Qud::Handle norme(const Qud::Handle& M);

/// The largest singular value. Of a matrix that carries an imaginary array it is the square root of an eigenvalue of
/// M^H * M, so that its elements should lie between 1e-70 and 1e70.
/// @throws "invalid dimension" (-1) for [], "overflow" (-1), "too many iterations" (-1)
BAILUXSKO_API Qud::Handle norm2(const Qud::Handle& M);

/// The condition of M: norm1(inv(M)) * norm1(M), with the strict inverse whatever the setting.
/// @throws "invalid dimension" (-1), "singular matrix" (-1) also for what the strict inverse refuses
BAILUXSKO_API Qud::Handle cond1(const Qud::Handle& M);

/// The same by normi.
BAILUXSKO_API Qud::Handle condi(const Qud::Handle& M);

/// The same by norme.
BAILUXSKO_API Qud::Handle conde(const Qud::Handle& M);

/// The same by norm2. Of a real matrix it is the largest singular value over the smallest, and only a smallest one of
/// exactly zero is a "singular matrix" (-1).
/// @throws "overflow" (-1), "too many iterations" (-1) besides
BAILUXSKO_API Qud::Handle cond2(const Qud::Handle& M);

} // namespace Efi::Matrix
