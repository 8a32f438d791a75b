#include "bailuxsko/lookup/indices_list.hpp"

#include "efiutl/messages.hpp"
#include "efiutl/throw.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>

namespace Efi {

void indicesList::clear()
{
    m_count = 0;
    m_capacity = first_capacity;
    m_arrays = createArray(m_capacity);
}

indicesList::Arrays* indicesList::createArray(std::uint32_t capacity)
{
    constexpr std::size_t bytes_of_a_hit = 2 * sizeof(std::int32_t);
    IquAllocator& arena = *m_ctx->m_arena;
    void* const record = arena.carve(sizeof(Arrays));
    auto* const rows =
        static_cast<std::int32_t*>(arena.allocate_uncleared((std::size_t{capacity} + 1) * bytes_of_a_hit));
    return new (record) Arrays{.m_rows = rows, .m_cols = rows + capacity};
}

void indicesList::growArray()
{
    if (m_capacity > std::numeric_limits<std::uint32_t>::max() / 2)
        Throw(msg::out_of_memory, -1);
    const Arrays* const old = m_arrays;
    m_arrays = createArray(2 * m_capacity);
    m_capacity *= 2;
    std::copy_n(old->m_rows, m_count, m_arrays->m_rows);
    std::copy_n(old->m_cols, m_count, m_arrays->m_cols);
}

void indicesList::insert(std::int32_t row, std::int32_t col)
{
    if (m_count == m_capacity)
        growArray();
    m_arrays->m_rows[m_count] = row;
    m_arrays->m_cols[m_count] = col;
    ++m_count;
}

void indicesList::insert(std::int32_t first_row, std::span<const std::uint16_t> offsets, std::int32_t col)
{
    while (m_capacity - m_count < offsets.size())
        growArray();
    std::transform(offsets.begin(), offsets.end(), m_arrays->m_rows + m_count,
                   [first_row](std::uint16_t offset) { return first_row + offset; });
    std::fill_n(m_arrays->m_cols + m_count, offsets.size(), col);
    m_count += static_cast<std::uint32_t>(offsets.size());
}

} // namespace Efi
