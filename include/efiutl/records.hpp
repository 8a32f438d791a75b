#pragma once

#include "efiutl/api.hpp"

#include <cstddef>
#include <cstdint>

class IquAllocator;

/// The dense matrix record of the function interface, 32 bytes to the letter. It never owns its arrays.
/// Element (i, j), counted from 0, is at index i + j * m_anr of m_rv and, when m_iv is not null, of m_iv.
struct BAILUXSKO_API aMatrix {
    /// High word of every matrix record: read as a double, the first 8 bytes are a NaN, which tells
    /// a matrix record from a plain number in an 8-byte slot.
    static constexpr std::uint32_t tag = 0x7FF40000U;
    /// The imaginary part of any element of a real matrix.
    static const double m_zero;

    /// A record over the given arrays, carved from the arena; imaginary may be null (a real matrix).
    /// @throws "out of memory" (-1)
    static aMatrix* mk(IquAllocator* arena, std::uint32_t rows, std::uint32_t cols, double* real, double* imaginary);

    std::uint32_t m_anr; ///< leading dimension: doubles from one column's start to the next one's
    std::uint32_t m_tag; ///< always `tag`
    std::uint32_t m_rows;
    std::uint32_t m_cols;
    double* m_rv; ///< real parts, column-major
    double* m_iv; ///< imaginary parts in the same layout, null for a real matrix
};

using aRealMatrix = aMatrix; ///< m_iv is null
using aVector = aMatrix;     ///< one column

/// A complex number.
struct aComplex {
    double m_re;
    double m_im;
};

/// A number or a matrix; the first 8 bytes tell which (see Efi::is_matrix).
union Anyval {
    aComplex m_number;
    aMatrix m_matrix;
};

static_assert(sizeof(aMatrix) == 32 && alignof(aMatrix) == 8);
static_assert(offsetof(aMatrix, m_anr) == 0 && offsetof(aMatrix, m_tag) == 4 && offsetof(aMatrix, m_rows) == 8 &&
              offsetof(aMatrix, m_cols) == 12 && offsetof(aMatrix, m_rv) == 16 && offsetof(aMatrix, m_iv) == 24);
static_assert(sizeof(aComplex) == 16 && offsetof(aComplex, m_re) == 0 && offsetof(aComplex, m_im) == 8);
static_assert(sizeof(Anyval) == 32);

namespace Efi {

using array_val = ::aMatrix;

/// True when the value's first 8 bytes are the head of a matrix record.
BAILUXSKO_API bool is_matrix(const Anyval* value) noexcept;

/// The all-ones pattern: the slot holds a text or a nested array, not a number.
inline constexpr std::uint64_t ptr_nan_bits = ~std::uint64_t{0};

/// The double whose 64 bits are all ones.
BAILUXSKO_API double ptr_nan() noexcept;

/// True exactly when both halves of x are 0xFFFFFFFF.
BAILUXSKO_API bool isPtrNan(double x) noexcept;

/// False for the pointer NaN, any other NaN and both infinities.
BAILUXSKO_API bool ISFINITE(double x) noexcept;

} // namespace Efi
