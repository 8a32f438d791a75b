#pragma once

#include "bailuxhost/matval.hpp"

#include <cstdint>

/// Real permutation matrices of zeros and ones from LAPACK's lists, which count from 1. A number out of its range, such
/// as a routine leaves where it meets a NaN, is passed over.
namespace lapack {

/// P of n by n with P(order[j] - 1, j) = 1: column j of M * P is column order[j] of M.
Qud::Handle columns_in_order(const int* order, std::uint32_t n);

/// P of n by n with the rows exchanged as the factorisation did, row i with row exchanges[i], i from 0 to k - 1.
Qud::Handle rows_exchanged(const int* exchanges, std::uint32_t k, std::uint32_t n);

} // namespace lapack
