#include "bailuxsko/lapack/routines.hpp"

namespace lapack {

Routines& routines() noexcept
{
    static constinit Routines table;
    return table;
}

} // namespace lapack
