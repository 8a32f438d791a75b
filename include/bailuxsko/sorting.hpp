#pragma once

#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Whole rows or columns in ascending order of their keys. Numbers are ordered by their real part, texts in the host's
/// order. The order of equal keys is not that of the input but the one that an index heap sort leaves (Williams,
/// Algorithm 232, CACM 7, 1964), always the same one; a NaN among the keys ends its comparisons. Imaginary parts,
/// units, texts and nested arrays travel with their rows or columns, and the imaginary array of the input stays.
namespace Efi::Matrix {

/// @param v   n by 1: numbers of one unit, or texts
/// @return    n by 1, unit(v)
/// @throws    "must be vector" (1), "vector must have uniform dimension or all strings" (1)
BAILUXSKO_API Qud::Handle sort(const Qud::Handle& v);

/// The rows of M in the order of their elements in column j, counted from origin.
/// @param M   m by n; column j holds numbers of one unit, or texts
/// @return    m by n, each element with its unit
/// @throws    "must be matrix" (1), "must be integer" (2), "must be dimless" (2), "index out of bounds" (2),
///            "col must have uniform dimension or all strings" (1)
BAILUXSKO_API Qud::Handle csort(Qud::Origin origin, const Qud::Handle& M, const Qud::Handle& j);

/// The columns of M in the order of their elements in row i, counted from origin.
/// @param M   m by n; row i holds numbers of one unit, or texts
/// @return    m by n, each element with its unit
/// @throws    "must be matrix" (1), "must be integer" (2), "must be dimless" (2), "index out of bounds" (2),
///            "row must have uniform dimension or all strings" (1)
BAILUXSKO_API Qud::Handle rsort(Qud::Origin origin, const Qud::Handle& M, const Qud::Handle& i);

} // namespace Efi::Matrix
