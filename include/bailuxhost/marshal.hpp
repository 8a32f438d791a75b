#pragma once

#include "bailuxhost/value.hpp"
#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

namespace Efi {

/// Native results become host values.
class BAILUXSKO_API EfiMarshal {
public:
    /// A host matrix or number with the given unit, with an imaginary array exactly when the record has one. Real and
    /// imaginary parts are copied out of the arena, but for large arrays with a block to themselves: those leave the
    /// arena and belong to the value, so a result is made once, and last.
    static Qud::Handle UnMarshal(IquAllocator* arena, const Anyval* result, const Qud::Dim& unit = Qud::Dim::identity);
    static Qud::Handle UnMarshal(IquAllocator* arena, const aMatrix* result, const Qud::Dim& unit = Qud::Dim::identity);
    static Qud::Handle UnMarshal(IquAllocator* arena, const aComplex* result,
                                 const Qud::Dim& unit = Qud::Dim::identity);
};

} // namespace Efi
