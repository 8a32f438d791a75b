#pragma once

#include "bailuxhost/matval.hpp"
#include "tests/support/wide.hpp"

namespace support {

/// A host's matrix of numbers in extended precision.
inline Wide wide(const Qud::Handle& value)
{
    const aMatrix record = Qud::matrix_of(value)->view();
    return Wide::of(&record);
}

} // namespace support
