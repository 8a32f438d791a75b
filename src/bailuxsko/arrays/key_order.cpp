#include "bailuxsko/arrays/key_order.hpp"

#include "efiutl/index_heap_sort.hpp"

namespace Efi {

void ascending_order(std::span<const double> keys, std::span<std::uint32_t> p)
{
    index_heap_sort(p, [keys](std::uint32_t a, std::uint32_t b) { return keys[a] <= keys[b]; });
}

} // namespace Efi
