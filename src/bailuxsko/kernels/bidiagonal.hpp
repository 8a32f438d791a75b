#pragma once

#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

#include <cstddef>

/// The first half of the singular value decomposition: Householder reflections, from the left and from the right in
/// turns, make A upper bidiagonal (Golub and Reinsch, Numerische Mathematik 14, 1970, section 2).
/// Ours: what a reflection is made from is first divided by the sum of its magnitudes, so that no square overflows; a
/// sum of zero skips the reflection; every sum starts at 0.0 and takes its terms in ascending order.
namespace native {

/// Diagonal w(0) to w(n - 1); e(k) stands above w(k), and e(0) is 0.
struct Bidiagonal {
    std::size_t m_n;
    double* m_w;
    double* m_e;
    double m_negligible; ///< elements up to this magnitude count as zero
};

/// What a slot that holds a text or an array means to the reduction.
enum class NestedElements { not_looked_at, refused };

/// Reduces A, m by n with m >= n. Column i of A keeps the reflection from the left on and below the diagonal, what is
/// above is scratch.
/// @param e     room for n doubles, as w has
/// @param rows  null, or n by n: its column i receives the i-th reflection from the right, below the diagonal
/// @throws "may not be nested" (-1), if they are refused, "out of memory" (-1)
Bidiagonal bidiagonalise(EfiCallContext* ctx, aMatrix* A, double* w, double* e, NestedElements nested, aMatrix* rows);

/// V, n by n, in the place of the reflections from the right.
void accumulate_V(EfiCallContext* ctx, const Bidiagonal& B, aMatrix* V);

/// U, m by n, in the place of the reflections from the left.
void accumulate_U(EfiCallContext* ctx, const Bidiagonal& B, aMatrix* U);

} // namespace native
