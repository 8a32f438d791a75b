#pragma once

#include "efiutl/api.hpp"

#include <cstdint>
#include <functional>
#include <span>

namespace Efi {

/// Fills p with the permutation that puts the keys in ascending order: the one of the index heap sort, whose order of
/// equal keys (both zeros are equal) and of keys among NaN is the required one.
BAILUXSKO_API void ascending_order(std::span<const double> keys, std::span<std::uint32_t> p);

/// Whether the key of index a may stand before that of index b: it is smaller or equal.
using MayPrecede = std::function<bool(std::uint32_t a, std::uint32_t b)>;

/// The same for keys of any kind, all of which can be compared.
BAILUXSKO_API void ascending_order(const MayPrecede& may_precede, std::span<std::uint32_t> p);

/// Puts the keys themselves in ascending order where nobody can see which of two equal ones comes first.
/// @param sorted   as many numbers; content undefined when the answer is no
/// @return         false for keys with a NaN or with zeros of both signs, which need the permutation
BAILUXSKO_API bool ascending_keys(std::span<const double> keys, std::span<double> sorted);

} // namespace Efi
