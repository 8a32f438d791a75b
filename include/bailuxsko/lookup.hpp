#pragma once

#include "bailuxhost/options.hpp"
#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"

/// Search in matrices, and what stands where something was found. All searches go down the columns, one after the
/// other; indices count from the origin.
///
/// The modifier says what is searched for. TOL is how far a number may lie off, in the unit of the target and
/// separately for real and imaginary part; numbers of another unit are never found, not even by "not".
///
///     "eq"    (when none is given) numbers equal to the target, or texts that are exactly the target
///     "not"   the other numbers of the target's unit, or the other texts
///     "lt" "gt" "leq" "geq"  numbers whose real part is less, greater, at most, at least the target, a real number
///     "near"  the numbers whose real part is nearest to the target, a real number
///     "range" numbers whose real part lies in the closed range between the two elements of the target, a column
///     f       elements, whatever they are, for which f(element, target) is not 0
///
/// Every search raises "illegal TOL" (-1) unless TOL is finite and not negative, "no matching values found" (-1),
/// "index out of bounds" (-1) when a hit's index does not fit 32 bits, and "out of memory" (-1); with the modifier's
/// index "invalid modifier", "must be a function of 2 variables", "This function must return an integer value"; of the
/// target, with its index, "must be a string or a scalar" (eq, not; a number that is not finite is "must be scalar"
/// (1)), "must be scalar" and "must be real" (lt, gt, leq, geq, near), "must be vector", "invalid range", "must be of
/// uniform units" and "must be real vector" (range).
namespace Efi::EfiLookup {

/// Where z is in A: the column of row indices where A has one column, else a column of nested columns (row, column).
/// Without unit.
/// @throws "must be matrix" (2); target 1, modifier 3
BAILUXSKO_API Qud::Handle Match(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                const Qud::Handle& modifier);

/// The elements of B at the places where z is in A, as a column. Every element keeps its unit, here and below.
/// @throws "must be matrix" (2, 3), "array size mismatch" (3); target 1, modifier 4
BAILUXSKO_API Qud::Handle Lookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                 const Qud::Handle& B, const Qud::Handle& modifier);

/// The elements of row r of A in the columns whose first element is z, as a column.
/// @throws "must be matrix" (2), "must be integer" (3), "index out of bounds" (3); target 1, modifier 4
BAILUXSKO_API Qud::Handle Hlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                  const Qud::Handle& r, const Qud::Handle& modifier);

/// The elements of column c of A in the rows whose first element is z.
/// @throws "must be matrix" (2), "must be integer" (3), "index out of bounds" (3); target 1, modifier 4
BAILUXSKO_API Qud::Handle Vlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                  const Qud::Handle& c, const Qud::Handle& modifier);

/// The block of A where the rows whose first element is rz meet the columns whose first element is cz. A key that is a
/// text is searched for as it is, whatever the modifier; the corner element of A is searched for both keys.
/// @param modifier  one of the words
/// @throws "must be matrix" (3), "invalid modifier" (4) for a function too; targets 1 and 2, modifier 4
BAILUXSKO_API Qud::Handle VHlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& rz, const Qud::Handle& cz,
                                   const Qud::Handle& A, const Qud::Handle& modifier);

/// The same with "eq".
BAILUXSKO_API Qud::Handle vhlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& rz, const Qud::Handle& cz,
                                   const Qud::Handle& A);

} // namespace Efi::EfiLookup

/// The same for worksheets, which may leave the modifier out: it is "eq" then.
namespace Efi::Matrix {

BAILUXSKO_API Qud::Handle Match(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                const Qud::Handle& modifier);
BAILUXSKO_API Qud::Handle Lookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                 const Qud::Handle& B, const Qud::Handle& modifier);
BAILUXSKO_API Qud::Handle Hlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                  const Qud::Handle& r, const Qud::Handle& modifier);
BAILUXSKO_API Qud::Handle Vlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& z, const Qud::Handle& A,
                                  const Qud::Handle& c, const Qud::Handle& modifier);
BAILUXSKO_API Qud::Handle VHlookup(Qud::Origin origin, Qud::Tol tol, const Qud::Handle& rz, const Qud::Handle& cz,
                                   const Qud::Handle& A, const Qud::Handle& modifier);

} // namespace Efi::Matrix
