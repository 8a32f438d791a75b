#pragma once

#include "efiutl/messages.hpp"
#include "efiutl/records.hpp"
#include "efiutl/throw.hpp"

/// What a worker asks of a record before it works on it.
namespace native {

/// @throws "invalid dimension" (-1) without rows or columns, "must be square" (-1)
inline void require_square(const aMatrix* A)
{
    if (A->m_rows < 1 || A->m_cols < 1)
        Efi::Throw(msg::invalid_dimension, -1);
    if (A->m_rows != A->m_cols)
        Efi::Throw(msg::must_be_square, -1);
}

/// @throws "unknown error" (-1)
inline void require_real_array(const aMatrix* A)
{
    if (A->m_rv == nullptr)
        Efi::Throw(msg::unknown_error, -1);
}

} // namespace native
