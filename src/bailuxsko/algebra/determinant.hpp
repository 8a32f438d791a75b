#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

#include <concepts>

namespace Efi {

/// The largest matrix whose determinant is found by fraction-free elimination.
inline constexpr std::uint32_t largest_fraction_free = 4;

/// The determinant with its unit. @throws "must be a linear algebra matrix" (1), what det_impl raises
BAILUXSKO_API Qud::Handle Det(const Qud::MatVal& M);

/// The determinant of a square matrix of plain numbers, without unit. @throws "matrix too big" (1)
BAILUXSKO_API Qud::Handle det_impl(const Qud::MatVal& M);

/// Of a real matrix of at most 4 rows, by fraction-free elimination: every intermediate value is a determinant of a
/// part of the matrix, so that integers stay whole. Rows are exchanged only for a pivot of exactly 0.
template <std::floating_point T>
BAILUXSKO_API T det_gb(const Qud::MatVal& M);
extern template double det_gb<double>(const Qud::MatVal& M);

/// Of a complex matrix, by LAPACK.
BAILUXSKO_API Qud::Handle cdet_gb(const Qud::MatVal& M);

/// |x| with the unit of x, without overflow on the way.
BAILUXSKO_API Qud::Handle abs_num(const Qud::NumVal& x);

/// The length of a column or the determinant of another square matrix. @throws "must be square" (1), what they raise
BAILUXSKO_API Qud::Handle abs_mat(const Qud::MatVal& M);

/// The length of a column, with its unit. @throws "must be scalar matrix" (1)
BAILUXSKO_API Qud::Handle Norm(const Qud::MatVal& v);

/// The root of the sum of the squares of a column's parts, row by row, without scaling.
BAILUXSKO_API double vector_norm(const Qud::MatVal& v);

} // namespace Efi
