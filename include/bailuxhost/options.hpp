#pragma once

#include "efiutl/api.hpp"

#include <cstdint>

namespace Qud {

/// The host's runtime options, as the running worksheet has set them. One set a thread: worksheets on different
/// threads do not disturb each other.
struct BAILUXSKO_API RuntimeOptions {
    /// On: the library's own inverse with its singularity test; off: the LAPACK inverse.
    static constinit thread_local bool strict_singularity_checking;
    /// On: element-wise 0/0 gives 0 instead of "divide by zero".
    static constinit thread_local bool zero_over_zero_is_zero;
};

/// The worksheet's first index of every array, handed to the entry operations that take it as their first argument.
struct Origin {
    std::int32_t value = 0;
};

/// The worksheet's tolerance TOL, handed to the entry operations that take it.
struct Tol {
    double value = 1e-3;
};

} // namespace Qud
