#include "bailuxhost/marshal.hpp"

#include "bailuxhost/matval.hpp"
#include "efiutl/block_pool.hpp"

#include <utility>

namespace Efi {

namespace {

/// Gives the block of an adopted array back to the pool.
struct GiveBack {
    IquAllocator::Adopted m_adopted;

    void operator()(const double*) const noexcept { block_pool::give(m_adopted.m_block, m_adopted.m_bytes); }
};

/// The array of a result, when it is large and has an arena's block to itself: taken over, or null.
Qud::SharedNumbers adopted(IquAllocator* arena, const double* source, const aMatrix& record)
{
    if (arena == nullptr || record.m_anr != record.m_rows)
        return nullptr;
    const std::size_t bytes = Qud::element_count(record.m_rows, record.m_cols) * sizeof(double);
    const IquAllocator::Adopted block = arena->adopt(source, bytes);
    return block.m_block == nullptr ? nullptr : Qud::SharedNumbers(source, GiveBack{block});
}

/// The numbers of a result for the value that it becomes.
Qud::SharedNumbers taken_out(IquAllocator* arena, const double* source, const aMatrix& record)
{
    if (Qud::SharedNumbers taken_over = adopted(arena, source, record))
        return taken_over;
    return Qud::copied_numbers(source, record.m_rows, record.m_cols, record.m_anr);
}

} // namespace

Qud::Handle EfiMarshal::UnMarshal(IquAllocator* arena, const aMatrix* result, const Qud::Dim& unit)
{
    if (Qud::element_count(result->m_rows, result->m_cols) <= Qud::MatVal::most_held_numbers)
        return Qud::MatVal::copy_of(result->m_rows, result->m_cols, result->m_rv, result->m_iv, result->m_anr, unit);
    Qud::SharedNumbers real = taken_out(arena, result->m_rv, *result);
    Qud::SharedNumbers imaginary = result->m_iv ? taken_out(arena, result->m_iv, *result) : nullptr;
    return Qud::MatVal::make(result->m_rows, result->m_cols, std::move(real), std::move(imaginary), unit);
}

Qud::Handle EfiMarshal::UnMarshal(IquAllocator*, const aComplex* result, const Qud::Dim& unit)
{
    return Qud::NumVal::make(result->m_re, result->m_im, unit);
}

Qud::Handle EfiMarshal::UnMarshal(IquAllocator* arena, const Anyval* result, const Qud::Dim& unit)
{
    return is_matrix(result) ? UnMarshal(arena, &result->m_matrix, unit) : UnMarshal(arena, &result->m_number, unit);
}

} // namespace Efi
