#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

#include <cstddef>

namespace Efi {

/// M with its rows (d = 1) in the order of column k, or its columns (d = 0) in the order of row k; d = -1 sorts the
/// columns of a single row of several elements, and rows otherwise. Where there is only one to sort, a copy.
/// @param M   packed; the keys are texts when the first one is, numbers otherwise
BAILUXSKO_API Qud::Handle sortMat(const Qud::MatVal& M, std::size_t k, int d);

/// Whether text a may stand before text b: it is smaller or equal in the host's order.
BAILUXSKO_API bool compareStringElements(const Qud::Handle& a, const Qud::Handle& b);

} // namespace Efi
