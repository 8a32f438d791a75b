#pragma once

#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

#include <cstddef>

/// The first half of the singular value decomposition: Householder reflections, from the left and from the right in
/// turns, make A upper bidiagonal (Golub and Reinsch, Numerische Mathematik 14, 1970, section 2).
/// Ours: what a reflection is made from is first divided by the sum of its magnitudes, so that no square overflows; a
/// sum of zero skips the reflection; every sum takes its terms in ascending order.
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

/// Reduces A, m by n with m >= n, leaving the reflections in it, and fills w and e.
/// @throws "may not be nested" (-1), if they are refused, "out of memory" (-1)
Bidiagonal bidiagonalise(EfiCallContext* ctx, aMatrix* A, double* w, double* e, NestedElements nested);

/// V, n by n, from the reflections that A holds right of the superdiagonal.
void accumulate_V(const aMatrix* A, const Bidiagonal& B, aMatrix* V);

/// U, in the place of A, from the reflections that it holds on and below the diagonal.
void accumulate_U(aMatrix* A, const Bidiagonal& B);

} // namespace native
