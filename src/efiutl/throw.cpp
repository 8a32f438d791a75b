#include "efiutl/throw.hpp"

namespace Efi {

void Throw(const char* message, int index)
{
    throw NativeError(message, index);
}

} // namespace Efi
