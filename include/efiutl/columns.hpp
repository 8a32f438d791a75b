#pragma once

#include "efiutl/context.hpp"
#include "efiutl/records.hpp"

#include <cstddef>

/// Elements and columns of a record, counted from 0: nothing else needs to know the leading dimension.
namespace Efi {

inline double& at(aMatrix* A, std::size_t i, std::size_t j) noexcept
{
    return A->m_rv[i + j * A->m_anr];
}

inline double at(const aMatrix* A, std::size_t i, std::size_t j) noexcept
{
    return A->m_rv[i + j * A->m_anr];
}

/// The imaginary part as a variable: the record must have an imaginary array.
inline double& at_i(aMatrix* A, std::size_t i, std::size_t j) noexcept
{
    return A->m_iv[i + j * A->m_anr];
}

/// The imaginary part as a value: 0.0 throughout when there is no imaginary array.
inline double at_i(const aMatrix* A, std::size_t i, std::size_t j) noexcept
{
    return A->m_iv != nullptr ? A->m_iv[i + j * A->m_anr] : aMatrix::m_zero;
}

/// Column j: m_rows doubles in a row.
inline double* column(aMatrix* A, std::size_t j) noexcept
{
    return A->m_rv + j * A->m_anr;
}

inline const double* column(const aMatrix* A, std::size_t j) noexcept
{
    return A->m_rv + j * A->m_anr;
}

/// The imaginary parts of column j: the record must have an imaginary array.
inline double* column_i(aMatrix* A, std::size_t j) noexcept
{
    return A->m_iv + j * A->m_anr;
}

inline const double* column_i(const aMatrix* A, std::size_t j) noexcept
{
    return A->m_iv + j * A->m_anr;
}

/// A copy of record and elements in the arena, to be overwritten. @throws "out of memory" (-1)
inline aMatrix* copy_of(EfiCallContext* ctx, const aMatrix* A)
{
    Anyval* copy = nullptr;
    ctx->m_arena->cp(reinterpret_cast<const Anyval*>(A), &copy, true, false);
    return &copy->m_matrix;
}

/// Gives a real record an imaginary array of zeros in the layout of its real one; a complex record keeps its own.
/// @throws "out of memory" (-1)
inline void make_complex(EfiCallContext* ctx, aMatrix* A)
{
    if (A->m_iv == nullptr)
        A->m_iv = doubles(ctx, static_cast<std::uint64_t>(A->m_anr) * A->m_cols);
}

/// Stores an imaginary part. A real record becomes complex at the first one that is not zero (a NaN is not zero);
/// until then there is nothing to store.
/// @throws "out of memory" (-1)
inline void store_i(EfiCallContext* ctx, aMatrix* A, std::size_t i, std::size_t j, double value)
{
    if (A->m_iv == nullptr) {
        if (value == 0.0)
            return;
        make_complex(ctx, A);
    }
    at_i(A, i, j) = value;
}

} // namespace Efi
