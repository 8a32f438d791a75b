#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxhost/options.hpp"
#include "bailuxsko/lookup/indices_list.hpp"
#include "bailuxsko/lookup/number_runs.hpp"
#include "bailuxsko/lookup/predicates.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

/// The search engine of match and the lookups. Every search goes down the columns of its ranges, one after the other,
/// and starts the list of hits anew.
namespace Efi {

/// Where target, matrix and modifier stand among the arguments of the running function.
struct ArgumentIndices {
    int target;
    int matrix;
    int modifier;
};

/// Lists the elements for which the predicate holds.
/// @throws "no matching values found" (-1), "index out of bounds" (-1) for a hit whose index does not fit 32 bits,
///         "out of memory" (-1), what a user's predicate raises
BAILUXSKO_API void Match(indicesList& hits, EfiCallContext* ctx, const Qud::MatVal& M, IndexRange cols, IndexRange rows,
                         const comparison_pred& predicate, Qud::Origin origin);

/// Lists the numbers of the unit whose real parts are nearest to the target: all within the tolerance of it where some
/// number hits it exactly, else those on both sides whose distance is the smallest, give or take the tolerance.
/// @throws as above
BAILUXSKO_API void Match(indicesList& hits, EfiCallContext* ctx, double target, const Qud::Dim& unit,
                         const Qud::MatVal& M, IndexRange cols, IndexRange rows, Qud::Tol tol, Qud::Origin origin);

/// Lists the elements that a modifier asks for: "eq", "not", "lt", "gt", "leq", "geq", "near", "range" or a function of
/// element and target.
/// @param M   null for an argument that is no matrix
/// @throws    "must be matrix" (matrix), "illegal TOL" (-1), "invalid modifier" (modifier), as above, and of the
/// target:
///            range: "must be vector", "invalid range", "must be of uniform units", "must be real vector" (target);
///            eq, not: "must be a string or a scalar" (target), "must be scalar" (1) unless finite;
///            the others: "must be scalar", "must be real" (target);
///            of the function: "must be a function of 2 variables", "This function must return an integer value"
///            (modifier)
BAILUXSKO_API void Match(indicesList& hits, EfiCallContext* ctx, const Qud::Handle& target, const Qud::MatVal* M,
                         IndexRange cols, IndexRange rows, const Qud::Handle& modifier, Qud::Tol tol,
                         Qud::Origin origin, const ArgumentIndices& indices);

/// The tolerance, if it is one. @throws "illegal TOL" (-1) unless it is finite and not negative
BAILUXSKO_API double as_tolerance(Qud::Tol tol);

/// The hits as a value: the column of their rows where M has one column, else a column of nested columns (row, column).
BAILUXSKO_API Qud::Handle returnIndices(const Qud::MatVal& M, const indicesList& hits);

} // namespace Efi
