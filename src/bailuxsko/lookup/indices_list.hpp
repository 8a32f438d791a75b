#pragma once

#include "efiutl/api.hpp"
#include "efiutl/context.hpp"

#include <cstdint>
#include <span>

namespace Efi {

/// The hits of a search, in the order of their finding: row and column of each, origin included. It grows in the
/// call's arena by doubling; the arrays it has grown out of go with the arena.
class BAILUXSKO_API indicesList {
public:
    static constexpr std::uint32_t first_capacity = 12;

    struct Arrays {
        std::int32_t* m_rows;
        std::int32_t* m_cols;
    };

    explicit indicesList(EfiCallContext* ctx) noexcept : m_ctx(ctx) {}

    /// No hits, in fresh arrays of the first capacity. @throws "out of memory" (-1)
    void clear();
    /// Room for `capacity` hits in one block of the arena: the rows first, the columns right behind them.
    /// @throws "out of memory" (-1)
    Arrays* createArray(std::uint32_t capacity);
    /// @throws "out of memory" (-1)
    void insert(std::int32_t row, std::int32_t col);
    /// Several hits of one column: rows `first_row` plus each offset. @throws "out of memory" (-1)
    void insert(std::int32_t first_row, std::span<const std::uint16_t> offsets, std::int32_t col);

    std::uint32_t count() const noexcept { return m_count; }
    std::uint32_t capacity() const noexcept { return m_capacity; }
    std::int32_t row(std::uint32_t k) const noexcept { return m_arrays->m_rows[k]; }
    std::int32_t col(std::uint32_t k) const noexcept { return m_arrays->m_cols[k]; }

private:
    void growArray();

    EfiCallContext* m_ctx;
    std::uint32_t m_count = 0;
    std::uint32_t m_capacity = first_capacity;
    Arrays* m_arrays = nullptr;
};

} // namespace Efi
