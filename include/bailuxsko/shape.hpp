#pragma once

#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Shape queries and the plain copies of a matrix.
namespace Efi::Matrix {

/// The number of rows; 0 for anything but a matrix. Without unit.
BAILUXSKO_API Qud::Handle rows(const Qud::Handle& M);
/// The number of columns; 0 for anything but a matrix. Without unit.
BAILUXSKO_API Qud::Handle cols(const Qud::Handle& M);
/// The number of elements of a column. Without unit. @throws "must be vector" (1)
BAILUXSKO_API Qud::Handle length(const Qud::Handle& v);
/// The index of a column's last element, counted from origin. Without unit.
/// @throws "must be vector" (1), although v follows the origin
BAILUXSKO_API Qud::Handle last(Qud::Origin origin, const Qud::Handle& v);
/// Rows become columns; units and nested elements go with their places. @throws "must be matrix" (1)
BAILUXSKO_API Qud::Handle transpose(const Qud::Handle& M);
/// A matrix of its own with the same elements and units. @throws "must be matrix" (1)
BAILUXSKO_API Qud::Handle cpMatrix(const Qud::Handle& M);

} // namespace Efi::Matrix
