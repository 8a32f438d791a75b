#pragma once

#include "bailuxhost/matval.hpp"
#include "efiutl/api.hpp"

#include <cstdint>
#include <span>
#include <vector>

/// The order in which all eigenvalue drivers hand out their results: by real part, largest first.
namespace lapack {

/// The permutation p with values[p[0]] >= values[p[1]] >= ...: a heap sort of the indices over a min-heap. The order of
/// equal values is the one that this very procedure leaves. A comparison with a NaN counts as "less": it takes no step
/// to the right child and ends the sift.
/// @throws "index out of bounds" (-1) for fewer than two values: the procedure reads in front of them
/// @see    Knuth, The Art of Computer Programming, volume 3, section 5.2.3
BAILUXSKO_API std::vector<std::uint32_t> sortVector(std::span<const double> values);

/// The column whose element i is element p[i] of v, in both arrays where v has two. Reads v from the start of its
/// arrays.
BAILUXSKO_API Qud::Handle rearrangeVRows(const Qud::MatVal& v, std::span<const std::uint32_t> p);

/// The matrix whose column i is column p[i] of M, likewise.
BAILUXSKO_API Qud::Handle rearrangeMColumns(const Qud::MatVal& M, std::span<const std::uint32_t> p);

} // namespace lapack
