#pragma once

#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

#include <span>

/// Matrices made from functions, from other matrices' blocks and by joining. Every element keeps its unit.
namespace Efi::Matrix {

/// The m by n matrix of f(i, j), called column by column with i and j counted from 0.
/// @param f   a function that can be called with two arguments; its values are numbers, texts or arrays (then nested)
/// @throws    "must be positive integer" (1, 2), "matrix too big" (1, 2) beyond 32 bits,
///            "must be a function of 2 variables" (3), "must be string scalar or array" (3), what f raises
BAILUXSKO_API Qud::Handle matrix(const Qud::Handle& m, const Qud::Handle& n, const Qud::Handle& f);

/// Rows ir to jr and columns ic to jc of M, counted from origin and read in the directions given: a pair whose first
/// number is the larger flips the block. A block that is not flipped is a view of M.
/// @throws    "must be matrix" (1), "must be integer" (2 to 5), "invalid dimension" (2 to 5) outside M
BAILUXSKO_API Qud::Handle submatrix(Qud::Origin origin, const Qud::Handle& M, const Qud::Handle& ir,
                                    const Qud::Handle& jr, const Qud::Handle& ic, const Qud::Handle& jc);

/// The values side by side; a number or text is one column of one row.
/// @throws    "array size mismatch" (k), "argument dimension mismatch" (k), "must be string scalar or array" (k)
BAILUXSKO_API Qud::Handle augment(std::span<const Qud::Handle> values);

/// The values from top to bottom; a number or text is one row of one column.
/// @throws    "array size mismatch" (k), "argument dimension mismatch" (k), "must be string scalar or array" (k)
BAILUXSKO_API Qud::Handle stack(std::span<const Qud::Handle> values);

/// The matrix with the column x on its diagonal (zeros of the column's unit; without unit where it has several), or the
/// column of the diagonal of another square matrix. The matrix of a column carries an imaginary array when the column
/// does, the column of a diagonal only when some imaginary part is not zero.
/// @throws    "must be square" (1), "must be a vector or a matrix" (1)
BAILUXSKO_API Qud::Handle diag(const Qud::Handle& x);

/// M with the order of its rows reversed; a matrix of one row as it is.
/// @throws    "must be matrix" (1)
BAILUXSKO_API Qud::Handle reverse(const Qud::Handle& M);

} // namespace Efi::Matrix
