#pragma once

#include "bailuxhost/matval.hpp"
#include "bailuxsko/lapack/buffers.hpp"
#include "efiutl/api.hpp"

#include <cstdint>

namespace lapack {

/// What every driver does first and last: releases the provider's buffers, sets the thread count that all the host's
/// function libraries share (whoever changed it last), and releases the buffers again on every exit.
class BAILUXSKO_API DriverScope {
public:
    DriverScope();

private:
    mkl_auto_rel m_release;
};

/// A dimension as LAPACK takes it. @throws "matrix too big" (1) beyond 32-bit integers
BAILUXSKO_API int dimension(std::uint64_t n);

/// @throws "invalid dimension" (-1) for a matrix without elements
BAILUXSKO_API void refuse_empty(const Qud::MatVal& M);

/// @throws "array size mismatch" (-1)
BAILUXSKO_API void require_equal_rows(const Qud::MatVal& A, const Qud::MatVal& B);

/// The verdict of a routine. @throws "not converging" (-1) unless it is 0, whatever the routine meant by it
BAILUXSKO_API void require_converged(int info);

} // namespace lapack
